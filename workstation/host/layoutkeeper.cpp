#include "layoutkeeper.h"

#include "ntableview.h"
#include "patientmanagermainwindow.h"
#include "recordform.h"
#include "tablestage.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QScreen>
#include <QSettings>
#include <QSqlRecord>
#include <QSqlTableModel>

#include <algorithm>

namespace {

constexpr char geometryKey[] = "window/geometry";
constexpr char frameKey[] = "window/frame";
constexpr char libraryKey[] = "window/library";
constexpr char heightsKey[] = "window/tableHeights";
constexpr char tableGroup[] = "tables/";
constexpr char orderKey[] = "/columns";
constexpr char sortKey[] = "/sortedBy";
constexpr char descendingKey[] = "/descending";
/// What must be on a screen, so that the window can be taken and moved.
constexpr QSize graspable{120, 40};
constexpr int titleHeight = 40;

QString tableKey(const RecordForm *form, const char *key)
{
    return QLatin1String(tableGroup) + form->view()->tableName() + QLatin1String(key);
}

QList<int> numbers(const QStringList &texts)
{
    QList<int> numbers;
    for (const QString &text : texts) {
        numbers.append(std::max(0, text.toInt()));
    }
    return numbers;
}

QStringList texts(const QList<int> &numbers)
{
    QStringList texts;
    for (const int number : numbers) {
        texts.append(QString::number(number));
    }
    return texts;
}

/// Names of the columns from left to right, hidden ones too.
QStringList columnOrder(const RecordForm *form)
{
    const QHeaderView *header = form->view()->horizontalHeader();
    const QSqlRecord columns = form->tableModel()->record();
    QStringList names;
    for (int visual = 0; visual < header->count(); ++visual) {
        names.append(columns.fieldName(header->logicalIndex(visual)));
    }
    return names;
}

/// Columns that are not named follow in their own order.
void orderColumns(const RecordForm *form, const QStringList &names)
{
    QHeaderView *header = form->view()->horizontalHeader();
    const QSqlRecord columns = form->tableModel()->record();
    int place = 0;
    for (const QString &name : names) {
        const int column = columns.indexOf(name);
        const int visual = column < 0 ? -1 : header->visualIndex(column);
        if (visual >= place) { // named twice otherwise
            header->moveSection(visual, place++);
        }
    }
}

void sortRows(const RecordForm *form, const QString &column, bool descending)
{
    const int index = form->tableModel()->record().indexOf(column);
    if (index >= 0) {
        form->view()->sortByColumn(index, descending ? Qt::DescendingOrder : Qt::AscendingOrder);
    }
}

} // namespace

LayoutKeeper::LayoutKeeper(QMainWindow *frame, PatientManagerMainWindow *library, TableStage *stage,
    QVector<RecordForm *> forms, QObject *parent)
    : QObject(parent)
    , m_frame(frame)
    , m_library(library)
    , m_stage(stage)
    , m_forms(std::move(forms))
{
    for (const RecordForm *form : m_forms) {
        form->view()->horizontalHeader()->setSectionsMovable(true);
    }
}

void LayoutKeeper::restore()
{
    const QSettings settings;
    m_frame->restoreGeometry(settings.value(QLatin1String(geometryKey)).toByteArray());
    bringOnScreen();
    m_frame->restoreState(settings.value(QLatin1String(frameKey)).toByteArray());
    m_library->restoreState(settings.value(QLatin1String(libraryKey)).toByteArray());
    m_stage->setHeights(numbers(settings.value(QLatin1String(heightsKey)).toStringList()));
    for (const RecordForm *form : m_forms) {
        orderColumns(form, settings.value(tableKey(form, orderKey)).toStringList());
        sortRows(form, settings.value(tableKey(form, sortKey)).toString(),
            settings.value(tableKey(form, descendingKey)).toBool());
    }
}

void LayoutKeeper::save() const
{
    QSettings settings;
    settings.setValue(QLatin1String(geometryKey), m_frame->saveGeometry());
    settings.setValue(QLatin1String(frameKey), m_frame->saveState());
    if (m_forms.first()->tableModel()->record().isEmpty()) {
        return; // no index: tables without columns, and no tree
    }
    settings.setValue(QLatin1String(libraryKey), m_library->saveState());
    settings.setValue(QLatin1String(heightsKey), texts(m_stage->heights()));
    for (const RecordForm *form : m_forms) {
        const QHeaderView *header = form->view()->horizontalHeader();
        settings.setValue(tableKey(form, orderKey), columnOrder(form));
        settings.setValue(
            tableKey(form, sortKey), form->tableModel()->record().fieldName(header->sortIndicatorSection()));
        settings.setValue(tableKey(form, descendingKey), header->sortIndicatorOrder() == Qt::DescendingOrder);
    }
}

/// Screens come and go between two starts, and settings are copied from one machine to another.
void LayoutKeeper::bringOnScreen()
{
    const QRect title(m_frame->frameGeometry().topLeft(), QSize(m_frame->width(), titleHeight));
    const QList<QScreen *> screens = QGuiApplication::screens();
    const bool isReachable = std::any_of(screens.begin(), screens.end(), [&title](const QScreen *screen) {
        const QSize seen = title.intersected(screen->availableGeometry()).size();
        return seen.width() >= graspable.width() && seen.height() >= graspable.height();
    });
    if (!isReachable) {
        const QRect room = QGuiApplication::primaryScreen()->availableGeometry();
        m_frame->resize(m_frame->size().boundedTo(room.size()));
        m_frame->move(room.topLeft());
    }
}
