#include "editcontroller.h"

#include "kivmessageboxform.h"
#include "ntableview.h"
#include "patientmanagermainwindow.h"
#include "readonlydelegate.h"
#include "recordform.h"

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QSqlRecord>
#include <QSqlTableModel>

#include <algorithm>

namespace {

constexpr char refreshSlot[] = "on_actionRefresh_triggered";

} // namespace

EditController::EditController(
    QVector<RecordForm *> forms, PatientManagerMainWindow *library, QObject *parent)
    : QObject(parent)
    , m_forms(std::move(forms))
    , m_library(library)
    , m_editAction(new QAction(tr("&Edit Cell"), this))
{
    m_editAction->setObjectName(QStringLiteral("actionEditCell"));
    m_editAction->setShortcut(Qt::Key_F2);
    connect(m_editAction, &QAction::triggered, this, &EditController::editCurrentCell);
    for (RecordForm *form : m_forms) {
        protect(form);
        connect(form, &RecordForm::editsChanged, this, &EditController::updateActions);
    }
    takeOverRefresh();
    updateActions();
}

bool EditController::hasUnsavedEdits() const
{
    return !editedFrom(0).isEmpty();
}

bool EditController::mayDropEdits()
{
    return confirmLoss(editedFrom(0));
}

bool EditController::isEditable(const QString &column)
{
    static const QStringList kept{QStringLiteral("pk"), QStringLiteral("updated_time"),
        QStringLiteral("ModalitiesInStudy"), QStringLiteral("Status"), QStringLiteral("FilePath"),
        QStringLiteral("SourcePath"), QStringLiteral("FileSize"), QStringLiteral("FileTime"),
        QStringLiteral("FileInode")};
    return !kept.contains(column) && !column.endsWith(QLatin1String("_fk"))
        && !column.endsWith(QLatin1String("UID")) && !column.startsWith(QLatin1String("NumberOf"));
}

/// Tab in an open editor leads from cell to cell, so what is read-only is so for every editor.
void EditController::protect(RecordForm *form)
{
    NTableView *view = form->view();
    const QSqlRecord columns = form->tableModel()->record();
    for (int column = 0; column < columns.count(); ++column) {
        if (!isEditable(columns.fieldName(column))) {
            const auto *shown = qobject_cast<QStyledItemDelegate *>(view->itemDelegateForColumn(column));
            view->setItemDelegateForColumn(column, new ReadOnlyDelegate(shown, view));
        }
    }
    view->viewport()->installEventFilter(this);
    view->horizontalHeader()->viewport()->installEventFilter(this);
}

void EditController::editCurrentCell()
{
    QWidget *focus = QApplication::focusWidget();
    for (RecordForm *form : m_forms) {
        NTableView *view = form->view();
        const QModelIndex cell = view->currentIndex();
        if (view == focus && cell.flags() & Qt::ItemIsEditable && !view->isColumnHidden(cell.column())) {
            view->edit(cell);
        }
    }
}

void EditController::updateActions()
{
    const bool unsaved = hasUnsavedEdits();
    for (const char *name : {"actionSubmit", "actionRevertall"}) {
        if (auto *action = m_library->findChild<QAction *>(QLatin1String(name))) {
            action->setEnabled(unsaved);
        }
    }
}

/// The library's refresh reads its tables again without a question; the host asks before it lets it.
void EditController::takeOverRefresh()
{
    auto *refresh = m_library->findChild<QAction *>(QStringLiteral("actionRefresh"));
    disconnect(refresh, &QAction::triggered, m_library, nullptr);
    connect(refresh, &QAction::triggered, this, [this] {
        if (mayDropEdits()) {
            QMetaObject::invokeMethod(m_library, refreshSlot);
            emit refreshed();
        }
    });
}

QVector<RecordForm *> EditController::editedFrom(int level) const
{
    QVector<RecordForm *> edited;
    std::copy_if(m_forms.begin() + level, m_forms.end(), std::back_inserter(edited),
        [](const RecordForm *form) { return form->hasUnsavedEdits(); });
    return edited;
}

bool EditController::confirmLoss(const QVector<RecordForm *> &forms)
{
    if (forms.isEmpty()) {
        return true;
    }
    const int answer = kivMessageBoxForm::question(m_library->window(), tr("Unsaved changes"),
        tr("There are changes that have not been submitted. Drop them?"), kivMessageBoxForm::OkAndCancel,
        kivMessageBoxForm::AnswerCancel);
    if (answer == kivMessageBoxForm::AnswerCancel) {
        return false;
    }
    for (RecordForm *form : forms) {
        form->on_revertall_clicked();
    }
    return true;
}

/// Whether a press of the mouse may go on. Another row filters the tables below; a header sorts its own table
/// anew.
bool EditController::confirmPress(int level, bool onHeader, const QModelIndex &index)
{
    const QVector<RecordForm *> endangered = editedFrom(onHeader ? level : level + 1);
    if (endangered.isEmpty() || (!onHeader && !index.isValid())) {
        return true;
    }
    m_swallowRelease = true;
    // The question took the release of the button, so the click is finished here.
    if (confirmLoss(endangered) && !onHeader) {
        NTableView *view = m_forms[level]->view();
        view->setCurrentIndex(index);
        emit view->clicked(index);
    }
    return false;
}

bool EditController::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonRelease && m_swallowRelease) {
        m_swallowRelease = false;
        return true;
    }
    if (event->type() != QEvent::MouseButtonPress) {
        return QObject::eventFilter(watched, event);
    }
    m_swallowRelease = false;
    const auto *press = static_cast<QMouseEvent *>(event);
    for (int level = 0; level < m_forms.size(); ++level) {
        NTableView *view = m_forms[level]->view();
        const bool onHeader = watched == view->horizontalHeader()->viewport();
        if (onHeader || watched == view->viewport()) {
            const QModelIndex index = onHeader ? QModelIndex() : view->indexAt(press->pos());
            return press->button() == Qt::LeftButton && !confirmPress(level, onHeader, index);
        }
    }
    return false;
}
