#include "cloudstudyview.h"

#include "cloudstudymodel.h"
#include "emptytext.h"

#include <QHeaderView>
#include <QKeyEvent>

namespace {

/// Of each column, in characters.
constexpr int widths[CloudStudyModel::ColumnCount] = {27, 13, 12, 10, 21, 8, 14};

} // namespace

CloudStudyView::CloudStudyView(CloudStudyModel *model, QWidget *parent)
    : QTreeView(parent)
{
    setObjectName(QStringLiteral("studies"));
    setAccessibleName(tr("Studies found in the cloud"));
    setToolTip(tr("Space checks a study or a series, Enter downloads what is checked"));
    setModel(model);
    setAlternatingRowColors(true);
    setUniformRowHeights(true);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    for (int column = 0; column < CloudStudyModel::ColumnCount; ++column) {
        setColumnWidth(column, widths[column] * fontMetrics().averageCharWidth());
    }
    header()->setStretchLastSection(true);
}

void CloudStudyView::setEmptyText(const QString &text)
{
    m_emptyText = text;
    viewport()->update();
}

void CloudStudyView::paintEvent(QPaintEvent *event)
{
    QTreeView::paintEvent(event);
    paintEmptyText(this, m_emptyText);
}

void CloudStudyView::keyPressEvent(QKeyEvent *event)
{
    const QModelIndex row = currentIndex().siblingAtColumn(CloudStudyModel::NameColumn);
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (!event->isAutoRepeat()) {
            emit fetchRequested();
        }
    } else if (event->key() == Qt::Key_Space && row.isValid()) {
        const bool isChecked = row.data(Qt::CheckStateRole).toInt() == Qt::Checked;
        model()->setData(row, isChecked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
    } else {
        QTreeView::keyPressEvent(event);
    }
}
