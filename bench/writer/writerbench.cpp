#include "writerbench.h"

#include "measurement.h"
#include "ntableview.h"
#include "recordform.h"
#include "shownpatients.h"
#include "steadywriter.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QSqlQuery>
#include <QtTest>

#include <algorithm>

namespace {

constexpr int turnsBetweenClicks = 5;
constexpr int rowsClicked = 20;
/// As the forms read: rows of one record's children.
const QString readImages =
    QStringLiteral("SELECT * FROM imageformat WHERE series_fk = ? ORDER BY pk LIMIT 200");

double millisecondsOf(const QElapsedTimer &time)
{
    return double(time.nsecsElapsed()) / 1e6;
}

} // namespace

WriterBench::WriterBench()
{
    m_window.show();
    if (!QTest::qWaitForWindowExposed(&m_window)) {
        qFatal("no window");
    }
    m_window.shownPatients()->show({}, DatePick::AllDates);
    QApplication::processEvents();
}

QJsonObject WriterBench::run(const QString &databasePath, int perSecond, int seconds)
{
    SteadyWriter writer(databasePath, perSecond);
    QElapsedTimer time;
    time.start();
    for (int step = 0; time.elapsed() < qint64(seconds) * 1000; ++step) {
        work(step);
    }
    writer.stop();
    return {{QStringLiteral("written"), writer.written()}, {QStringLiteral("refused"), writer.refused()},
        {QStringLiteral("writtenPerSecond"), writer.written() / writer.seconds()},
        {QStringLiteral("longestWriteMs"), writer.longestMs()},
        {QStringLiteral("clicks"), int(m_clicks.size())},
        {QStringLiteral("clickMedianMs"), Measurement::median(m_clicks)},
        {QStringLiteral("clickLongestMs"), *std::max_element(m_clicks.begin(), m_clicks.end())},
        {QStringLiteral("reads"), int(m_reads.size())},
        {QStringLiteral("readLongestMs"), *std::max_element(m_reads.begin(), m_reads.end())},
        {QStringLiteral("longestTurnMs"), m_longestTurn}};
}

void WriterBench::work(int step)
{
    NTableView *view = m_window.forms().first()->view();
    QElapsedTimer time;
    time.start();
    turn([view, step] {
        view->selectRow(step % rowsClicked);
        QApplication::processEvents();
    });
    for (RecordForm *form : m_window.forms()) {
        turn([form] { form->view()->viewport()->repaint(); });
    }
    m_clicks.push_back(millisecondsOf(time));
    for (int i = 0; i < turnsBetweenClicks; ++i) {
        read(step + i);
        QTest::qSleep(2);
        turn([] { QApplication::processEvents(); });
    }
}

/// By the window's own connection, of the series that grow.
void WriterBench::read(int step)
{
    QElapsedTimer time;
    time.start();
    QSqlQuery query;
    query.prepare(readImages);
    query.addBindValue(1 + step % 8);
    if (!query.exec()) {
        qFatal("a read failed");
    }
    while (query.next()) { }
    m_reads.push_back(millisecondsOf(time));
}

void WriterBench::turn(const std::function<void()> &action)
{
    QElapsedTimer time;
    time.start();
    action();
    m_longestTurn = std::max(m_longestTurn, millisecondsOf(time));
}
