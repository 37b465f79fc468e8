#include "deletioncontroller.h"

#include "deletionleftovers.h"
#include "deletionnotifier.h"
#include "editcontroller.h"
#include "importreporttext.h"
#include "kivmessageboxform.h"
#include "patientmanagermainwindow.h"
#include "recordform.h"
#include "selectionsubject.h"
#include "statuspanel.h"
#include "storecare.h"
#include "waitingsends.h"
#include "waitinguploads.h"
#include "windowparts.h"

#include <QAction>
#include <QDebug>
#include <QDir>

#include <optional>

namespace {

constexpr char deleteAction[] = "actionDelete";

/// What the library's send works on: the selection reported last.
QString reportedText(const PatientManagerMainWindow *library)
{
    const std::optional<RecordLevel> level = recordLevelOf(library->selectedTable());
    return level && level != RecordLevel::Image ? RecordSelection{*level, library->selectedKeys()}.text()
                                                : QString();
}

/// Why a store is left alone.
QString keptText(StoreKept kept)
{
    switch (kept) {
    case StoreKept::No:
        break;
    case StoreKept::NotMarked:
        return DeletionController::tr("Nothing says that this store belongs to this index.");
    case StoreKept::OtherIndex:
        return DeletionController::tr("The store belongs to another index.");
    case StoreKept::Shared:
        return DeletionController::tr("Another index lies beside this one and may use the store.");
    case StoreKept::OlderIndex:
        return DeletionController::tr("The index is older than the store: import the store's files again to "
                                      "have records for all of them.");
    case StoreKept::Elsewhere:
        return DeletionController::tr(
            "The index names copies in other places: its folder was renamed, or is reached by another name.");
    case StoreKept::NoRecords:
        return DeletionController::tr("The index has no images of the store.");
    }
    return {};
}

} // namespace

DeletionController::DeletionController(const WindowParts &parts, QWidget *window)
    : QObject(window)
    , m_window(window)
    , m_library(parts.mainWindow)
    , m_edits(parts.edits)
    , m_selection(parts.selection)
    , m_forms(parts.forms)
    , m_status(parts.status)
    , m_care(new StoreCare(this))
{
    // The forms read their tables again without a question, so the host asks before a deletion begins.
    m_library->deletions()->setGate([this] { return mayBegin(); });
    // Answered before the signal's emission returns: one confirmed upload would refuse all later deletions.
    connect(m_library, &PatientManagerMainWindow::uploadFlag, this, [this] {
        m_asked = m_selection->forActions(); // the first that a deletion does, before it asks
        m_library->onUpLoadFlag(m_isUploading && m_isUploading());
    });
    connect(m_library->deletions(), &DeletionNotifier::ended, this, &DeletionController::showEnd);
    connect(m_care, &StoreCare::finished, this, &DeletionController::showCare);
    connect(m_care, &StoreCare::failed, this, &DeletionController::showFailedCare);
    connect(m_selection, &SelectionStatus::changed, this, &DeletionController::nameSelection);
    nameSelection();
}

void DeletionController::begin(const QString &databasePath)
{
    m_care->begin(databasePath);
}

bool DeletionController::isRunning() const
{
    return m_care->isRunning();
}

void DeletionController::stop()
{
    m_care->stop();
}

/// The library reads the selection anew after its questions, and what others write may have moved it
/// meanwhile.
bool DeletionController::mayBegin()
{
    m_chosen = subjectOf(m_asked); // while it can be read
    if (!isConfirmed()) {
        return false;
    }
    if (m_selection->forActions().isOfSameRecords(m_asked)) {
        return true;
    }
    kivMessageBoxForm::warning(m_window, tr("Delete"),
        tr("The selection has changed meanwhile, so nothing was deleted. Select again what is to go."),
        kivMessageBoxForm::OkOnly, kivMessageBoxForm::AnswerOk);
    return false;
}

bool DeletionController::isConfirmed()
{
    return (isInSight(m_asked)
               || confirm(tr("What is to be deleted is in a table that is not shown now: %1. Delete it?")
                              .arg(m_chosen)))
        && isConfirmedDespiteSends() && isConfirmedDespiteUploads() && m_edits->mayDropEdits();
}

/// A send reads its files when their turn comes.
bool DeletionController::isConfirmedDespiteSends()
{
    const WaitingSends waiting = m_sends ? WaitingSends::of(m_asked, *m_sends) : WaitingSends();
    return waiting.images == 0
        || confirm(tr("Of %1, %Ln image(s) still wait to be sent to %2. Once they are deleted they cannot be "
                      "sent any more. Delete them?",
            nullptr, int(waiting.images))
                       .arg(m_chosen, waiting.destinations.join(QStringLiteral(", "))));
}

/// An upload that waits, for its session or its turn, reads its files later, too.
bool DeletionController::isConfirmedDespiteUploads()
{
    const qint64 images = WaitingUploads::of(m_asked);
    return images == 0
        || confirm(tr("Of %1, %Ln image(s) still wait to be uploaded. Once they are deleted they cannot be "
                      "uploaded any more. Delete them?",
            nullptr, int(images))
                       .arg(m_chosen));
}

bool DeletionController::confirm(const QString &question)
{
    return kivMessageBoxForm::question(m_window, tr("Delete"), question, kivMessageBoxForm::OkAndCancel,
               kivMessageBoxForm::AnswerCancel)
        == kivMessageBoxForm::AnswerOk;
}

/// A click in the tree shows one table alone, while the selection of the others stands.
bool DeletionController::isInSight(const RecordSelection &records) const
{
    return records.isEmpty() || m_forms[int(records.level)]->isVisibleTo(m_window);
}

void DeletionController::nameSelection()
{
    const QString chosen = m_selection->forActions().text();
    const QString reported = reportedText(m_library);
    const QString nothing = tr("Select patients, studies or series first");
    tell(deleteAction, chosen.isEmpty() ? nothing : tr("Delete %1").arg(chosen));
    tell("actionSaveDicom", chosen.isEmpty() ? nothing : tr("Export %1").arg(chosen));
    tell("actionSendDicom", reported.isEmpty() ? nothing : tr("Send %1").arg(reported));
}

void DeletionController::tell(const char *actionName, const QString &text) const
{
    if (auto *action = m_library->findChild<QAction *>(QLatin1String(actionName))) {
        action->setToolTip(text);
        action->setStatusTip(text);
    }
}

void DeletionController::showEnd(const DeletionReport &report)
{
    if (!report.error.isValid() && !report.left.isEmpty()) {
        m_status->setIdleText(
            tr("Deleted: %1; %Ln file(s) could not be removed", nullptr, report.left.size()).arg(m_chosen));
    } else if (!report.error.isValid()) {
        m_status->setIdleText(report.removedFiles == 0
                ? tr("Deleted: %1; the files stay where they are").arg(m_chosen)
                : tr("Deleted: %1, with %Ln file(s)", nullptr, int(report.removedFiles)).arg(m_chosen));
    }
    showLeft(report.left);
}

void DeletionController::showLeft(const QVector<FileLeft> &files)
{
    if (files.isEmpty()) {
        return;
    }
    if (m_leftovers) {
        m_leftovers->add(files);
    } else {
        m_leftovers = new DeletionLeftovers(files, m_window);
    }
    m_leftovers->show();
    m_leftovers->raise();
}

void DeletionController::showCare(const DeletionReport &deletions, const StoreSweep &sweep)
{
    for (const QString &path : sweep.removed) {
        qInfo().noquote() << tr("Taken out of the store, as no record names it: %1").arg(path);
    }
    for (const QString &path : sweep.left) {
        qInfo().noquote() << tr("Stays in the store, though no record names it: %1").arg(path);
    }
    QStringList texts{finishedText(deletions)};
    if (!sweep.left.isEmpty()) {
        texts += tr("%Ln file(s) of the store belong to no record and stay; the log names them", nullptr,
            sweep.left.size());
        if (sweep.kept != StoreKept::No) {
            qInfo().noquote() << keptText(sweep.kept);
        }
    }
    if (!sweep.removed.isEmpty()) {
        texts += tr("%Ln file(s) of the store belonged to no record; they lie in %1 for 30 days", nullptr,
            sweep.removed.size())
                     .arg(QDir::toNativeSeparators(sweep.removedTo));
        qInfo().noquote() << texts.constLast();
    }
    texts.removeAll(QString());
    if (!texts.isEmpty()) {
        m_status->setIdleText(texts.join(QStringLiteral(" · ")));
    }
    showLeft(deletions.left);
}

void DeletionController::showFailedCare(const ConnectionFailure &failure)
{
    const QString text =
        tr("Interrupted deletions were not finished and the store was not looked through: %1. The next "
           "start tries again.")
            .arg(connectionFailureText(failure));
    qWarning().noquote() << text;
    m_status->setIdleText(text);
}

/// Of what an earlier run had begun.
QString DeletionController::finishedText(const DeletionReport &deletions) const
{
    if (deletions.error.isValid()) {
        QString text = tr("An interrupted deletion could not be finished: %1 The next start tries again.")
                           .arg(deletions.error.text());
        qWarning().noquote() << text;
        return text;
    }
    return deletions.removedFiles == 0 ? QString()
                                       : tr("An interrupted deletion was finished; %Ln file(s) removed",
                                           nullptr, int(deletions.removedFiles));
}
