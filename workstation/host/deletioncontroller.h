#pragma once

#include "filedisposal.h"
#include "selectionstatus.h"

#include <QObject>
#include <QPointer>
#include <QVector>

#include <functional>

class DeletionLeftovers;
class EditController;
class PatientManagerMainWindow;
class QWidget;
class RecordForm;
class SendService;
class StatusPanel;
class StoreCare;
struct ConnectionFailure;
struct DeletionReport;
struct StoreSweep;
struct WindowParts;

/**
 * What the host adds to the library's deletion: a question before unsaved edits are lost, the answer whether
 * an upload runs, a window of the files that could not be removed, and after a start the end of what was
 * interrupted. Also names beside the actions of deletion, export and send what each will touch. Owned by the
 * window; GUI thread.
 */
class DeletionController : public QObject
{
    Q_OBJECT

public:
    DeletionController(const WindowParts &parts, QWidget *window);

    /// Puts the store of an index in order, in the background.
    void begin(const QString &databasePath);
    /// Whether that still goes on, and its end at the next good moment.
    bool isRunning() const;
    void stop();
    /// Sends whose images a deletion would take away; asked about once more. Outlives this; without, none is.
    void setSends(const SendService *sends) { m_sends = sends; }
    /// Who knows whether an upload still runs, so that deletions wait for its end; without, none does.
    void setUploadCheck(std::function<bool()> isUploading) { m_isUploading = std::move(isUploading); }

private:
    bool mayBegin();
    bool isConfirmed();
    bool isConfirmedDespiteSends();
    bool isConfirmedDespiteUploads();
    bool confirm(const QString &question);
    bool isInSight(const RecordSelection &records) const;
    void nameSelection();
    void tell(const char *actionName, const QString &text) const;
    void showEnd(const DeletionReport &report);
    void showLeft(const QVector<FileLeft> &files);
    void showCare(const DeletionReport &deletions, const StoreSweep &sweep);
    void showFailedCare(const ConnectionFailure &failure);
    QString finishedText(const DeletionReport &deletions) const;

    QWidget *const m_window;
    PatientManagerMainWindow *const m_library;
    EditController *const m_edits;
    SelectionStatus *const m_selection;
    const QVector<RecordForm *> m_forms; ///< by level
    StatusPanel *const m_status;
    StoreCare *const m_care;
    QPointer<DeletionLeftovers> m_leftovers;
    RecordSelection m_asked; ///< what was selected as the deletion was asked for
    QString m_chosen; ///< what a deletion was asked for, and whose it is
    const SendService *m_sends = nullptr;
    std::function<bool()> m_isUploading;
};
