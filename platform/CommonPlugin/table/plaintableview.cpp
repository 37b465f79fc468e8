#include "plaintableview.h"

#include "emptytext.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QStyledItemDelegate>

#include <algorithm>
#include <numeric>

namespace {

class PathDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        option->textElideMode = Qt::ElideMiddle;
    }
};

} // namespace

PlainTableView::PlainTableView(QWidget *parent)
    : QTableView(parent)
    , m_copy(new QAction(tr("&Copy Rows"), this))
{
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
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

void PlainTableView::setPathColumn(int column)
{
    setItemDelegateForColumn(column, new PathDelegate(this));
}

void PlainTableView::setEmptyText(const QString &text)
{
    m_emptyText = text;
    viewport()->update();
}

void PlainTableView::paintEvent(QPaintEvent *event)
{
    QTableView::paintEvent(event);
    paintEmptyText(this, m_emptyText);
}

void PlainTableView::copyRows() const
{
    if (m_copying) {
        m_copying();
        return;
    }
    QGuiApplication::clipboard()->setText(selectedText());
}
