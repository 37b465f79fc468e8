#pragma once

#include "cloudpaientinfoform.h"
#include "correctionwork.h"

class PatientFields;
class QBoxLayout;
class QLabel;
class QProgressBar;
class QPushButton;
class QRadioButton;

/// The editor's window: what both places have, what it is to be, for whom and where; then what became of it.
class PatientEditor : public CloudPaientInfoForm
{
    Q_OBJECT

public:
    explicit PatientEditor(QWidget *parent = nullptr);

    void setSelectPk(qlonglong studyPk) override { m_studyPk = studyPk; }
    void setStudyUID(const QString &studyUid) override { m_studyUid = studyUid; }
    void setPatientName(const QString &name) override;
    void setJsessionid(const QByteArray &sessionId) override { m_sessionId = sessionId; }
    void setJsessionid(const QByteArray &sessionId, const QString &serviceAddress) override;

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void build();
    void addChoices(QBoxLayout *layout);
    void addButtons(QBoxLayout *layout);
    void onKnown(const StudyFacts &facts);
    void onProgress(const CorrectionProgress &progress);
    void onFinished(const CorrectionReport &report);
    void save();
    void refresh();
    bool isKnown() const;
    PatientChanges changes() const;
    QString serviceText() const;
    void setBusy(bool isBusy);
    void say(const QString &text, bool isProblem = false);

    qlonglong m_studyPk = 0;
    QString m_studyUid;
    QByteArray m_sessionId;
    QString m_databasePath;
    WebService m_service;
    StudyFacts m_facts;
    QString m_news; ///< of an earlier run
    QString m_fault; ///< of what is typed, as it is shown
    CorrectionWork *const m_work;
    bool m_isReading = false;
    bool m_isBusy = false;
    bool m_mayStop = false;
    bool m_isClosing = false; ///< as soon as the work has come to its end
    PatientFields *m_fields = nullptr;
    QLabel *m_head = nullptr;
    QLabel *m_serviceState = nullptr;
    QRadioButton *m_allStudies = nullptr;
    QRadioButton *m_thisStudy = nullptr;
    QRadioButton *m_both = nullptr;
    QRadioButton *m_indexOnly = nullptr;
    QLabel *m_files = nullptr;
    QLabel *m_said = nullptr;
    QProgressBar *m_progress = nullptr;
    QPushButton *m_save = nullptr;
    QPushButton *m_close = nullptr;
};
