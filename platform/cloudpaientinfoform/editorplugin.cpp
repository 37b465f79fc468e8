#include "patienteditor.h"

#include <QGenericPlugin>

/// What `QGenericPluginFactory::create("cloudpaientinfoform", "")` finds.
class EditorPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "cloudpaientinfoform.json")

public:
    QObject *create(const QString &key, const QString & /*parameters*/) override
    {
        return key.compare(QLatin1String("cloudpaientinfoform"), Qt::CaseInsensitive) == 0 ? new PatientEditor
                                                                                           : nullptr;
    }
};

#include "editorplugin.moc"
