#include "archiveresults.h"

#include "archivemodel.h"
#include "emptytext.h"

#include <QShortcut>

namespace {

/// Of each column, in characters.
constexpr int widths[ArchiveModel::ColumnCount] = {34, 19, 11, 12, 9, 7, 7, 12};

} // namespace

ArchiveResults::ArchiveResults(ArchiveModel *model, QWidget *parent)
    : QTreeView(parent)
    , m_archive(model)
{
    setObjectName(QStringLiteral("results"));
    setAccessibleName(tr("Found in the archive"));
    setToolTip(tr("Enter retrieves what is chosen"));
    setModel(model);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setAlternatingRowColors(true);
    setUniformRowHeights(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setExpandsOnDoubleClick(true);
    for (int column = 0; column < ArchiveModel::ColumnCount; ++column) {
        setColumnWidth(column, widths[column] * fontMetrics().averageCharWidth());
    }
    for (const int key : {Qt::Key_Return, Qt::Key_Enter}) {
        auto *enter = new QShortcut(key, this, nullptr, nullptr, Qt::WidgetShortcut);
        enter->setAutoRepeat(false); // a key that is held down asks once
        connect(enter, &QShortcut::activated, this, &ArchiveResults::retrieveRequested);
    }
}

bool ArchiveResults::isAboveChosen(const QModelIndex &row) const
{
    for (QModelIndex above = row.parent(); above.isValid(); above = above.parent()) {
        if (selectionModel()->isRowSelected(above.row(), above.parent())) {
            return true;
        }
    }
    return false;
}

QModelIndexList ArchiveResults::chosen() const
{
    QModelIndexList rows;
    for (const QModelIndex &row : selectionModel()->selectedRows()) {
        const auto level = m_archive->levelOf(row);
        if (!level || isAboveChosen(row)) {
            continue;
        }
        if (*level != RecordLevel::Patient) {
            rows.append(row);
            continue;
        }
        for (int study = 0; study < m_archive->rowCount(row); ++study) {
            rows.append(m_archive->index(study, 0, row));
        }
    }
    return rows;
}

void ArchiveResults::setEmptyText(const QString &text)
{
    m_emptyText = text;
    viewport()->update();
}

void ArchiveResults::paintEvent(QPaintEvent *event)
{
    QTreeView::paintEvent(event);
    paintEmptyText(this, m_emptyText);
}
