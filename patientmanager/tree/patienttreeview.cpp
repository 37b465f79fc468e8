#include "patienttreeview.h"

#include "captionheader.h"
#include "emptytext.h"
#include "qpatienttreeitem.h"
#include "qpatienttreemodel.h"
#include "recorddelegate.h"
#include "recordsummary.h"
#include "statusdelegate.h"
#include "uploadstatus.h"

#include <QHelpEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

namespace {

constexpr int widestCharacters = 40; ///< of a column that nobody has dragged
constexpr int summaryMargin = 4;
constexpr char patientNameColumn[] = "0.PatientName";

/// A patient whose files name nobody is a row to be seen and clicked, too.
class PatientNameDelegate : public RecordDelegate
{
public:
    explicit PatientNameDelegate(const PatientTreeView *view, QObject *parent)
        : RecordDelegate(ColumnKind::PersonName, parent)
        , m_view(view)
    { }

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override
    {
        RecordDelegate::initStyleOption(option, index);
        const QPatientTreeItem *record = m_view->item(index);
        if (record && record->getPatient()) {
            option->text = m_view->shownText(index);
        }
    }

private:
    const PatientTreeView *const m_view;
};

} // namespace

PatientTreeView::PatientTreeView(QWidget *parent)
    : QTreeView(parent)
    , m_captions(
          new CaptionHeader([this](int column) { return m_widths.width(m_columnNames.value(column)); }, this))
    , m_patientNames(new PatientNameDelegate(this, this))
    , m_states(new StatusDelegate(this))
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
        setItemDelegateForColumn(column, delegateOf(column));
    }
}

RecordDelegate *PatientTreeView::delegateOf(int column)
{
    if (m_columnNames.at(column) == QLatin1String(patientNameColumn)) {
        return m_patientNames;
    }
    const QString name = m_tree->headerData(column, Qt::Horizontal).toString();
    if (name == QLatin1String(UploadStatus::column)) {
        return m_states;
    }
    const ColumnKind kind = columnKind(name, false);
    RecordDelegate *&delegate = m_delegates[std::size_t(kind)];
    if (!delegate) {
        delegate = new RecordDelegate(kind, this);
    }
    return delegate;
}

QPatientTreeItem *PatientTreeView::item(const QModelIndex &index) const
{
    return m_tree ? m_tree->treeItem(index) : nullptr;
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
    if (index.column() < m_patientColumns && !record->getPatient()) {
        return recordSummary(*record);
    }
    const QString text = delegate->displayText(index.data(), locale());
    const bool isName = m_columnNames.value(index.column()) == QLatin1String(patientNameColumn);
    return text.isEmpty() && isName ? tr("(no name)") : text;
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
    paintEmptyText(this, m_tree ? m_emptyText : QString());
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
