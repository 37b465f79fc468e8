#pragma once

#include "cloudpaientinfoform.h"
#include "correctionwork.h"

class CorrectionChoices;
class EditorFoot;
class PatientFields;
class QLabel;

/**
 * The editor's window: what both places have, what it is to be, for whom and where; then what became of it.
 * It follows the session: nothing is asked or stored in the name of somebody who is not signed in any more.
 */
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
    void read();
    void onSessionChanged();
    void onKnown(const StudyFacts &facts);
    void onFinished(const CorrectionReport &report);
    void save();
    void refresh();
    bool isKnown() const;
    bool hasTyped() const;
    bool mayDrop();
    PatientChanges changes() const;
    WebService service() const;
    QString serviceText() const;
    enum class State : quint8 { Idle, Reading, Correcting };
    void setState(State state);

    qlonglong m_studyPk = 0;
    QString m_studyUid;
    QByteArray m_sessionId;
    QString m_serviceAddress;
    QString m_databasePath; ///< empty until there is something to edit
    StudyFacts m_facts;
    QString m_news; ///< what became of corrections
    bool m_isNewsBad = false;
    QString m_fault; ///< of what is typed, as it is shown
    CorrectionWork *const m_work;
    State m_state = State::Idle;
    bool m_isWantedSet = false; ///< what it is to be has begun: reading again leaves it alone
    bool m_isClosing = false; ///< as soon as the correction has come to its end
    PatientFields *m_fields = nullptr;
    CorrectionChoices *m_choices = nullptr;
    QLabel *m_head = nullptr;
    QLabel *m_serviceState = nullptr;
    QLabel *m_files = nullptr;
    EditorFoot *m_foot = nullptr;
};
