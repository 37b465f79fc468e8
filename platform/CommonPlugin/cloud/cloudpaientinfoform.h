#pragma once

#include "commonplugin_export.h"

#include <QWidget>

/**
 * The editor of a study's patient data, in the index and in the cloud service. It comes as a Qt generic
 * plugin named "cloudpaientinfoform" (`QGenericPluginFactory::create()`), so a host works without it.
 *
 * The caller tells the study by the setters in the order of their declaration; the last one makes the editor
 * read, and show itself. It belongs to nobody and deletes itself when it is closed, so callers keep no
 * pointer. GUI thread. The spelling of the name is that of the hosts.
 */
class COMMONPLUGIN_EXPORT CloudPaientInfoForm : public QWidget
{
    Q_OBJECT

public:
    explicit CloudPaientInfoForm(QWidget *parent = nullptr);
    ~CloudPaientInfoForm() override;

    /// @param studyPk the key of the study's record in the index
    virtual void setSelectPk(qlonglong studyPk) = 0;
    virtual void setStudyUID(const QString &studyUid) = 0;
    /// The name as the caller knows it, for the title while the editor reads.
    virtual void setPatientName(const QString &name) = 0;
    /// The session of whoever is signed in; empty for none: then only the index can be edited.
    virtual void setJsessionid(const QByteArray &sessionId) = 0;
    /// Begins: reads what index and service have of the study, and shows the editor.
    /// @param serviceAddress where the session is; empty for that of the session which is open
    virtual void setJsessionid(const QByteArray &sessionId, const QString &serviceAddress) = 0;

signals:
    /// What has been saved, and both places hold what the editor says.
    void saved(const QString &studyUid);
};
