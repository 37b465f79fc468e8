#include "ntableview.h"

#include "createconnection.h"
#include "datasavetypeform.h"
#include "importreport.h"
#include "importreporttext.h"
#include "importrunner.h"
#include "importsettings.h"
#include "kivmessageboxform.h"
#include "ntableheader.h"

#include <QApplication>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QSqlQueryModel>
#include <QSqlRecord>
#include <QStyledItemDelegate>

namespace {

constexpr int widestCharacters = 40; ///< of a column that nobody has dragged
constexpr int measuredRows = 60; ///< about what a tall screen shows

QStringList localPaths(const QMimeData *data)
{
    QStringList paths;
    const QList<QUrl> urls = data->urls();
    for (const QUrl &url : urls) {
        if (url.isLocalFile()) {
            paths.append(url.toLocalFile());
        }
    }
    return paths;
}

/// Accepts a drag that brings files, as a copy: a move would make the other program delete them.
void acceptFiles(QDropEvent *event)
{
    if (localPaths(event->mimeData()).isEmpty()) {
        event->ignore();
    } else {
        event->setDropAction(Qt::CopyAction);
        event->accept();
    }
}

/// A value that stays in its cell; delegates turn line breaks into separators of Unicode.
QString asCell(QString text)
{
    const QChar breaks[]{QLatin1Char('\t'), QLatin1Char('\n'), QLatin1Char('\r'), QChar(QChar::LineSeparator),
        QChar(QChar::ParagraphSeparator)};
    for (const QChar separator : breaks) {
        text.replace(separator, QLatin1Char(' '));
    }
    return text;
}

bool broughtSomething(const ImportReport &report)
{
    return report.end == ImportEnd::Complete || report.of(FileVerdict::New) > 0
        || report.of(FileVerdict::Replaced) > 0;
}

} // namespace

NTableView::NTableView(QWidget *parent)
    : QTableView(parent)
{
    setAcceptDrops(true);
    createHeader();
}

NTableView::~NTableView() = default;

void NTableView::createHeader()
{
    auto *header = new NTableHeader([this](int column) { return m_widths.width(columnName(column)); }, this);
    connect(header, &NTableHeader::widthChosen, this,
        [this](int column, int width) { m_widths.choose(columnName(column), width); });
    setHorizontalHeader(header);
}

void NTableView::setTableName(const QString &name)
{
    m_tableName = name;
    m_widths.load(name);
}

QModelIndexList NTableView::selectedIndexes() const
{
    return QTableView::selectedIndexes();
}

/// By name, since a later version of the index may have more columns.
QString NTableView::columnName(int column) const
{
    const auto *records = qobject_cast<const QSqlQueryModel *>(model());
    const QString name = records ? records->record().fieldName(column) : QString();
    return name.isEmpty() ? QString::number(column) : name;
}

int NTableView::sizeHintForColumn(int column) const
{
    const int chosen = m_widths.width(columnName(column));
    return chosen > 0 ? chosen
                      : qMin(contentWidth(column), widestCharacters * fontMetrics().averageCharWidth());
}

/// Of the rows on screen alone, also while the view is hidden, where the base class measures every row.
int NTableView::contentWidth(int column) const
{
    const int first = qMax(0, rowAt(0));
    const int end = qMin(first + measuredRows, model() ? model()->rowCount() : 0);
    const QStyleOptionViewItem option = viewOptions();
    int width = 0;
    for (int row = first; row < end; ++row) {
        const QModelIndex index = model()->index(row, column);
        width = qMax(width, itemDelegate(index)->sizeHint(option, index).width());
    }
    return showGrid() ? width + 1 : width;
}

QList<int> NTableView::visibleColumns() const
{
    QList<int> columns;
    for (int visual = 0; visual < horizontalHeader()->count(); ++visual) {
        const int column = horizontalHeader()->logicalIndex(visual);
        if (!isColumnHidden(column)) {
            columns.append(column);
        }
    }
    return columns;
}

QString NTableView::cellText(const QModelIndex &index) const
{
    const auto *delegate = qobject_cast<const QStyledItemDelegate *>(itemDelegate(index));
    const QVariant value = index.data(Qt::DisplayRole);
    return asCell(delegate ? delegate->displayText(value, locale()) : value.toString());
}

QString NTableView::selectionAsText() const
{
    QList<int> rows;
    const QItemSelection selection = selectionModel() ? selectionModel()->selection() : QItemSelection();
    for (const QItemSelectionRange &range : selection) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            rows.append(row);
        }
    }
    if (rows.isEmpty()) {
        return {};
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());

    const QList<int> columns = visibleColumns();
    QStringList cells;
    for (const int column : columns) {
        cells.append(asCell(model()->headerData(column, Qt::Horizontal).toString()));
    }
    QString text = cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
    for (const int row : qAsConst(rows)) {
        cells.clear();
        for (const int column : columns) {
            cells.append(cellText(model()->index(row, column)));
        }
        text += cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
    }
    return text;
}

void NTableView::copySelection()
{
    const QString text = selectionAsText();
    if (!text.isEmpty()) {
        QApplication::clipboard()->setText(text);
    }
}

void NTableView::keyPressEvent(QKeyEvent *event)
{
    if (event == QKeySequence::Copy) {
        copySelection();
        event->accept();
    } else {
        QTableView::keyPressEvent(event);
    }
}

void NTableView::dragEnterEvent(QDragEnterEvent *event)
{
    acceptFiles(event);
}

void NTableView::dragMoveEvent(QDragMoveEvent *event)
{
    acceptFiles(event);
}

void NTableView::dropEvent(QDropEvent *event)
{
    acceptFiles(event);
    if (!event->isAccepted()) {
        return;
    }
    if (connectionFailure().reason == ConnectionFailure::Reason::None) {
        importPaths(localPaths(event->mimeData()));
    } else {
        // Later, since the other program waits for the end of its drag.
        QMetaObject::invokeMethod(this, &NTableView::refuseImport, Qt::QueuedConnection);
    }
}

/// An index that was refused, a newer or another program's, must not be written by a drop either.
void NTableView::refuseImport()
{
    kivMessageBoxForm::warning(this, tr("Import"), connectionFailureText(connectionFailure()),
        kivMessageBoxForm::OkOnly, kivMessageBoxForm::AnswerOk);
    emit fileFinished(false);
}

void NTableView::importPaths(const QStringList &paths)
{
    const int mode = ImportSettings::mode();
    if (mode == ImportSettings::askMode) {
        DataSaveTypeForm::instance()->ask(this, [this, paths](int type) { startImport(paths, type); });
    } else if (ImportSettings::isMode(mode)) {
        startImport(paths, mode);
    }
}

void NTableView::startImport(const QStringList &paths, int mode)
{
    if (!m_runner) {
        m_runner = new ImportRunner(this);
        connect(m_runner, &ImportRunner::finished, this,
            [this](const ImportReport &report) { emit fileFinished(broughtSomething(report)); });
    }
    m_runner->start(paths, mode);
}
