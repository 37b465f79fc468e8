#include "patienttreeview.h"

#include "captionheader.h"
#include "qpatienttreeitem.h"
#include "qpatienttreemodel.h"
#include "recorddelegate.h"
#include "recordsummary.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

namespace {

constexpr int widestCharacters = 40; ///< of a column that nobody has dragged
constexpr int summaryMargin = 4;
constexpr int emptyMargin = 24;
/// A selection compares each branch with every other: hundreds are quick, all branches of an index take
/// minutes.
constexpr int mostSelectedBranches = 500;

} // namespace

PatientTreeView::PatientTreeView(QWidget *parent)
    : QTreeView(parent)
    , m_captions(
          new CaptionHeader([this](int column) { return m_widths.width(m_columnNames.value(column)); }, this))
{
    m_widths.load(QStringLiteral("patienttree"));
    connect(m_captions, &CaptionHeader::widthChosen, this,
        [this](int column, int width) { m_widths.choose(m_columnNames.value(column), width); });
    setHeader(m_captions);
    setUniformRowHeights(true);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    // A summary ends where the view ends: what is scrolled cannot be used again.
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, viewport(), qOverload<>(&QWidget::update));
}

void PatientTreeView::setTree(QPatientTreeModel *tree, int patientColumns, const QStringList &captions)
{
    m_tree = tree;
    m_patientColumns = patientColumns;
    m_captions->setCaptions(captions);
    nameColumns();
    setModel(tree);
    installDelegates();
}

/// A name alone may be that of a column of each level.
void PatientTreeView::nameColumns()
{
    const QString key = m_tree->headerData(0, Qt::Horizontal).toString(); // each level begins with it
    int level = -1;
    m_columnNames.clear();
    for (int column = 0; column < m_tree->columnCount(); ++column) {
        const QString name = m_tree->headerData(column, Qt::Horizontal).toString();
        level += name == key ? 1 : 0;
        m_columnNames.append(QStringLiteral("%1.%2").arg(level).arg(name));
    }
}

void PatientTreeView::installDelegates()
{
    for (int column = 0; column < m_tree->columnCount(); ++column) {
        const QString name = m_tree->headerData(column, Qt::Horizontal).toString();
        const ColumnKind kind = columnKind(name, false);
        RecordDelegate *&delegate = m_delegates[std::size_t(kind)];
        if (!delegate) {
            delegate = new RecordDelegate(kind, this);
        }
        setItemDelegateForColumn(column, delegate);
    }
}

void PatientTreeView::openLevels(int levels)
{
    openWhere([levels](const QPatientTreeItem &item) {
        return item.getPatient() ? levels > 0 : item.getStudy() && levels > 1;
    });
}

void PatientTreeView::openWhere(const std::function<bool(const QPatientTreeItem &)> &isOpen)
{
    collapseAll();
    // While a layout waits, opening a row is a mark; one layout at the end then takes them all in one pass.
    scheduleDelayedItemsLayout();
    open(QModelIndex(), isOpen);
    executeDelayedItemsLayout();
}

void PatientTreeView::open(
    const QModelIndex &parent, const std::function<bool(const QPatientTreeItem &)> &isOpen)
{
    const int rows = m_tree ? m_tree->rowCount(parent) : 0;
    for (int row = 0; row < rows; ++row) {
        const QModelIndex index = m_tree->index(row, 0, parent);
        if (isOpen(*item(index))) {
            expand(index);
            open(index, isOpen);
        }
    }
}

QPatientTreeItem *PatientTreeView::item(const QModelIndex &index) const
{
    return m_tree ? m_tree->treeItem(index) : nullptr;
}

QList<const IndexRecord *> PatientTreeView::selectedRecords() const
{
    QList<const IndexRecord *> records;
    // Row by row: the cells of a row stand for one record.
    const QItemSelection selection = selectionModel()->selection();
    for (const QItemSelectionRange &range : selection) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            const QPatientTreeItem *behind = item(model()->index(row, range.left(), range.parent()));
            if (const IndexRecord *record = behind ? behind->record() : nullptr) {
                records.append(record);
            }
        }
    }
    return records;
}

void PatientTreeView::fitColumns()
{
    for (int column = 0; column < header()->count(); ++column) {
        resizeColumnToContents(column);
    }
    updateGeometries(); // at once: whoever scrolls next needs the widths
}

void PatientTreeView::showEvent(QShowEvent *event)
{
    QTreeView::showEvent(event);
    if (!m_wasShown) {
        m_wasShown = true;
        fitColumns();
    }
}

QString PatientTreeView::shownText(const QModelIndex &index) const
{
    const QPatientTreeItem *record = item(index);
    if (!record) {
        return {};
    }
    const auto *delegate = qobject_cast<const QStyledItemDelegate *>(itemDelegate(index));
    return index.column() < m_patientColumns && !record->getPatient()
        ? recordSummary(*record)
        : delegate->displayText(index.data(), locale());
}

void PatientTreeView::selectAll()
{
    const int last = model() ? model()->rowCount() - 1 : -1;
    if (!hasManyBranches(0, last)) {
        QTreeView::selectAll();
    } else if (selectionMode() == ContiguousSelection) {
        selectPatients(0, last, QItemSelectionModel::ClearAndSelect);
    }
}

void PatientTreeView::setSelection(const QRect &rect, QItemSelectionModel::SelectionFlags command)
{
    const QRect range = rect.normalized();
    const int left = header()->sectionViewportPosition(0); // a place within each row
    const QModelIndex above = indexAt({left, range.top()});
    const QModelIndex below = indexAt({left, range.bottom()});
    const int first = patientRow(above);
    const int last = below.isValid() ? patientRow(below) : model()->rowCount() - 1;
    if ((above.isValid() || below.isValid()) && hasManyBranches(first, last)) {
        selectPatients(first, last, command);
    } else {
        QTreeView::setSelection(rect, command);
    }
}

int PatientTreeView::patientRow(QModelIndex row)
{
    while (row.parent().isValid()) {
        row = row.parent();
    }
    return qMax(row.row(), 0);
}

/// @param first and last rows of patients
bool PatientTreeView::hasManyBranches(int first, int last) const
{
    int open = 0;
    for (int row = first; row <= last && open <= mostSelectedBranches; ++row) {
        const QModelIndex patient = model()->index(row, 0);
        if (!isExpanded(patient)) {
            continue;
        }
        ++open;
        for (int child = 0; child < model()->rowCount(patient); ++child) {
            open += isExpanded(model()->index(child, 0, patient)) ? 1 : 0;
        }
    }
    return open > mostSelectedBranches;
}

/// One range, however many they are.
void PatientTreeView::selectPatients(int first, int last, QItemSelectionModel::SelectionFlags command)
{
    selectionModel()->select(
        {model()->index(first, 0), model()->index(last, model()->columnCount() - 1)}, command);
}

int PatientTreeView::sizeHintForColumn(int column) const
{
    const int chosen = m_widths.width(m_columnNames.value(column));
    return chosen > 0
        ? chosen
        : qMin(QTreeView::sizeHintForColumn(column), widestCharacters * fontMetrics().averageCharWidth());
}

void PatientTreeView::setEmptyText(const QString &text)
{
    m_emptyText = text;
    viewport()->update();
}

void PatientTreeView::paintEvent(QPaintEvent *event)
{
    QTreeView::paintEvent(event);
    if (m_tree && m_tree->rowCount() == 0) {
        QPainter painter(viewport());
        style()->drawItemText(&painter,
            viewport()->rect().adjusted(emptyMargin, emptyMargin, -emptyMargin, 0),
            Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, palette(), isEnabled(), m_emptyText,
            QPalette::Text);
    }
}

/// Only the first column has children for the base class: any other opens the branch here.
void PatientTreeView::mouseDoubleClickEvent(QMouseEvent *event)
{
    const QPersistentModelIndex row = indexAt(event->pos()).siblingAtColumn(0);
    const bool elsewhere = indexAt(event->pos()).column() > 0;
    QTreeView::mouseDoubleClickEvent(event);
    if (elsewhere && row.isValid()) {
        setExpanded(row, !isExpanded(row));
    }
}

void PatientTreeView::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && currentIndex().isValid()) {
        emit clicked(currentIndex());
        return;
    }
    if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right) {
        // Only from its first column does a row lead to its children and its parent.
        selectionModel()->setCurrentIndex(currentIndex().siblingAtColumn(0), QItemSelectionModel::NoUpdate);
    }
    QTreeView::keyPressEvent(event);
}

/// The columns of the patients from the first one on, as far as nothing else was moved between them, within
/// the view.
QRect PatientTreeView::summaryRect(const QPatientTreeItem &item, const QRect &row) const
{
    const int depth = item.getSeries() ? 3 : 2; // with the place of the branch itself
    const int left = header()->sectionViewportPosition(0);
    int right = left;
    for (int place = header()->visualIndex(0); place < header()->count(); ++place) {
        const int column = header()->logicalIndex(place);
        if (column >= m_patientColumns) {
            break;
        }
        right += header()->sectionSize(column);
    }
    return {QPoint(left + depth * indentation() + summaryMargin, row.top()),
        QPoint(qMin(right, viewport()->width()) - summaryMargin, row.bottom())};
}

void PatientTreeView::drawRow(
    QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QTreeView::drawRow(painter, option, index);
    const QPatientTreeItem *record = item(index);
    if (!record || record->getPatient()) {
        return;
    }
    const QRect rect = summaryRect(*record, option.rect);
    const bool isSelected = selectionModel()->isSelected(index);
    QPalette palette = option.palette;
    palette.setCurrentColorGroup(isActiveWindow() ? QPalette::Active : QPalette::Inactive);
    painter->setFont(option.font);
    style()->drawItemText(painter, rect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, palette,
        isEnabled(), option.fontMetrics.elidedText(recordSummary(*record), Qt::ElideRight, rect.width()),
        isSelected ? QPalette::HighlightedText : QPalette::Text);
}

/// All that is in sight: the base class looks for every selected row, of which there may be all.
QRegion PatientTreeView::visualRegionForSelection(const QItemSelection &) const
{
    return viewport()->rect();
}

bool PatientTreeView::viewportEvent(QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        if (showWholeText(help->pos(), help->globalPos())) {
            return true;
        }
    }
    return QTreeView::viewportEvent(event);
}

/// @return whether there was a text that its cell cuts
bool PatientTreeView::showWholeText(const QPoint &position, const QPoint &globalPosition)
{
    const QModelIndex index = indexAt(position);
    const QPatientTreeItem *record = item(index);
    if (!record) {
        return false;
    }
    const bool isSummary = index.column() < m_patientColumns && !record->getPatient();
    const QRect cell = visualRect(index);
    const int margin = style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1; // of a delegate
    const QRect room =
        isSummary ? summaryRect(*record, cell) : cell.adjusted(margin, 0, -margin, 0) & viewport()->rect();
    const QString text = shownText(index);
    if (fontMetrics().horizontalAdvance(text) <= room.width()) {
        return false;
    }
    // As rich text, which wraps; values may hold what looks like markup.
    QToolTip::showText(
        globalPosition, QStringLiteral("<span>%1</span>").arg(text.toHtmlEscaped()), viewport(), cell);
    return true;
}
