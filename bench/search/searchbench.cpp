#include "searchbench.h"

#include "importcentre.h"
#include "measurement.h"
#include "ntableview.h"
#include "patientfinder.h"
#include "recordform.h"
#include "shownpatients.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QLineEdit>
#include <QtTest>

#include <algorithm>

namespace {

/// Names, IDs, dates, accession numbers and descriptions of the index, and what few of them match.
const QStringList texts{QStringLiteral("k0007919"), QStringLiteral("anna k12"), QStringLiteral("id0010472"),
    QStringLiteral("ct thorax contrast"), QStringLiteral("1980-02"), QStringLiteral("a00000123"),
    QStringLiteral("first^patient"), QStringLiteral("nobody")};

double percentile95(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() * 95 / 100];
}

double millisecondsOf(const QElapsedTimer &time)
{
    return double(time.nsecsElapsed()) / 1e6;
}

} // namespace

SearchBench::SearchBench()
    : m_shown(m_window.shownPatients())
    , m_text(m_window.findChild<QLineEdit *>(QStringLiteral("searchText")))
{
    m_window.show();
    if (!QTest::qWaitForWindowExposed(&m_window) || !m_text) {
        qFatal("no window with a search bar");
    }
    const auto *events = QAbstractEventDispatcher::instance();
    QObject::connect(events, &QAbstractEventDispatcher::aboutToBlock, &m_window, [this] { endTurn(); });
    QObject::connect(events, &QAbstractEventDispatcher::awake, &m_window, [this] { beginTurn(); });
    m_shown->show({}, DatePick::AllDates);
    m_shown->finder()->prepare();
    while (!m_shown->finder()->known()) {
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QApplication::processEvents();
}

/// What lies between two waits for events is one block of the interface.
void SearchBench::turn(const std::function<void()> &action)
{
    beginTurn();
    action();
    endTurn();
}

void SearchBench::beginTurn()
{
    m_sinceWait.start();
    m_processorBefore = Measurement::processorMs();
}

void SearchBench::endTurn()
{
    m_longestWork = std::max(m_longestWork, Measurement::processorMs() - m_processorBefore);
    m_longestTurn = std::max(m_longestTurn, millisecondsOf(m_sinceWait));
}

void SearchBench::key(const std::function<void()> &press)
{
    QElapsedTimer time;
    time.start();
    bool isShown = false;
    turn(press);
    m_shown->onceShown([&isShown] { isShown = true; });
    while (!isShown) {
        turn([] { QApplication::processEvents(QEventLoop::WaitForMoreEvents); });
    }
    turn([this] { m_window.forms().first()->view()->viewport()->repaint(); });
    m_keys.push_back(millisecondsOf(time));
    turn([] { QApplication::processEvents(); });
}

void SearchBench::typeAll()
{
    for (const QString &text : texts) {
        for (const QChar letter : text) {
            key([this, letter] { QTest::keyClick(m_text, letter.toLatin1()); });
        }
        if (m_text->text() != text) {
            qFatal("the bar does not take what is typed");
        }
        for (int i = 0; i < text.size() / 2; ++i) {
            key([this] { QTest::keyClick(m_text, Qt::Key_Backspace); });
        }
        key([this] { QTest::keyClick(m_text, Qt::Key_Escape); });
    }
}

QJsonObject SearchBench::type(const QString &importFolder)
{
    m_keys.clear();
    m_longestTurn = 0;
    m_longestWork = 0;
    ImportCentre *imports = m_window.imports();
    if (importFolder.isEmpty()) {
        typeAll();
    } else {
        imports->importUnattended({importFolder});
        while (imports->isRunning()) {
            typeAll();
        }
    }
    return {{QStringLiteral("keys"), int(m_keys.size())},
        {QStringLiteral("medianMs"), Measurement::median(m_keys)},
        {QStringLiteral("p95Ms"), percentile95(m_keys)}, {QStringLiteral("longestTurnMs"), m_longestTurn},
        {QStringLiteral("longestWorkMs"), m_longestWork}, {QStringLiteral("patients"), m_shown->count()}};
}
