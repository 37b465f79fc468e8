#include "deletioncontroller.h"

#include "deletionleftovers.h"
#include "deletionnotifier.h"
#include "editcontroller.h"
#include "patientmanagermainwindow.h"
#include "selectionstatus.h"
#include "statuspanel.h"
#include "storecare.h"
#include "windowparts.h"

#include <QAction>
#include <QDebug>
#include <QLocale>

#include <optional>

namespace {

constexpr char deleteAction[] = "actionDelete";
constexpr char deleteSlot[] = "on_actionDelete_triggered";

/// What the library's send works on: the selection reported last.
QString reportedText(const PatientManagerMainWindow *library)
{
    const std::optional<RecordLevel> level = recordLevelOf(library->selectedTable());
    return level && level != RecordLevel::Image ? RecordSelection{*level, library->selectedKeys()}.text()
                                                : QString();
}

} // namespace

DeletionController::DeletionController(const WindowParts &parts, QWidget *window)
    : QObject(window)
    , m_window(window)
    , m_library(parts.library)
    , m_edits(parts.edits)
    , m_selection(parts.selection)
    , m_status(parts.status)
    , m_care(new StoreCare(this))
{
    takeOverDelete();
    // Answered before the signal's emission returns: one confirmed upload would refuse all later deletions.
    connect(m_library, &PatientManagerMainWindow::uploadFlag, m_library,
        [this] { m_library->onUpLoadFlag(m_isUploading && m_isUploading()); });
    connect(m_library->deletions(), &DeletionNotifier::ended, this, &DeletionController::showEnd);
    connect(m_care, &StoreCare::finished, this, &DeletionController::showCare);
    connect(m_selection, &SelectionStatus::changed, this, &DeletionController::nameSelection);
    nameSelection();
}

void DeletionController::begin(const QString &databasePath)
{
    m_care->begin(databasePath);
}

/// The forms read their tables again without a question; the host asks before a deletion begins.
void DeletionController::takeOverDelete()
{
    auto *action = m_library->findChild<QAction *>(QLatin1String(deleteAction));
    disconnect(action, &QAction::triggered, m_library, nullptr);
    connect(action, &QAction::triggered, this, [this] {
        if (m_edits->mayDropEdits()) {
            QMetaObject::invokeMethod(m_library, deleteSlot);
        }
    });
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
    if (!report.error.isValid()) {
        m_status->setIdleText(
            tr("Deleted; %1 files were removed").arg(QLocale().toString(report.removedFiles)));
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
        qInfo().noquote() << tr("Removed from the store, as no record names it: %1").arg(path);
    }
    for (const QString &path : sweep.left) {
        qInfo().noquote() << tr("Stays in the store, though no record names it: %1").arg(path);
    }
    if (!sweep.left.isEmpty()) {
        m_status->setIdleText(tr("%1 files of the store belong to no record and stay; the log names them")
                                  .arg(QLocale().toString(sweep.left.size())));
    } else if (!sweep.removed.isEmpty()) {
        m_status->setIdleText(
            tr("%1 files of the store belonged to no record and were removed; the log names them")
                .arg(QLocale().toString(sweep.removed.size())));
    }
    showLeft(deletions.left);
}
