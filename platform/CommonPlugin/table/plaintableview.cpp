#include "plaintableview.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>

#include <algorithm>
#include <numeric>

PlainTableView::PlainTableView(QWidget *parent)
    : QTableView(parent)
    , m_copy(new QAction(tr("&Copy Rows"), this))
{
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTextElideMode(Qt::ElideMiddle);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setAlternatingRowColors(true);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_copy->setShortcut(QKeySequence::Copy);
    m_copy->setShortcutContext(Qt::WidgetShortcut);
    connect(m_copy, &QAction::triggered, this, &PlainTableView::copyRows);
    addAction(m_copy);
    setContextMenuPolicy(Qt::ActionsContextMenu);
}

QString PlainTableView::selectedText() const
{
    if (!model()) {
        return {};
    }
    QVector<int> rows;
    for (const QModelIndex &index : selectionModel()->selectedRows()) {
        rows.append(index.row());
    }
    if (rows.isEmpty()) {
        rows.resize(model()->rowCount());
        std::iota(rows.begin(), rows.end(), 0);
    }
    std::sort(rows.begin(), rows.end());
    QString text;
    for (const int row : qAsConst(rows)) {
        for (int column = 0; column < model()->columnCount(); ++column) {
            text += column > 0 ? QStringLiteral("\t") : QString();
            text += model()->index(row, column).data().toString();
        }
        text += QLatin1Char('\n');
    }
    return text;
}

void PlainTableView::setColumnCharacters(int column, int characters)
{
    setColumnWidth(column, characters * fontMetrics().averageCharWidth());
}

void PlainTableView::copyRows() const
{
    QGuiApplication::clipboard()->setText(selectedText());
}
