#pragma once

#include <QGenericPlugin>

/**
 * What the workstation's plugin loader recognises the library by. It makes nothing: a host links the library
 * and constructs the exported classes itself.
 */
class PatientManagerPlugin : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "patientmanager.json")

public:
    using QGenericPlugin::QGenericPlugin;

    /// Null for every key.
    QObject *create(const QString &key, const QString &parameters) override;
};
