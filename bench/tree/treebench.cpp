#include "treebench.h"

#include "imageformatform.h"
#include "measurement.h"
#include "ntableview.h"
#include "patientform.h"
#include "patienttreeform.h"
#include "processmemory.h"
#include "seriesform.h"
#include "studyform.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QScrollBar>
#include <QSqlTableModel>
#include <QTreeView>
#include <QtTest>

#include <algorithm>

namespace {

constexpr int scrollStops = 200;
constexpr int eventTurns = 3;

void mustHold(bool good, const char *what)
{
    if (!good) {
        qFatal("the tree does not show what it should: %s", what);
    }
}

QJsonObject summary(const std::vector<double> &values)
{
    QJsonArray all;
    std::copy(values.begin(), values.end(), std::back_inserter(all));
    return {{QStringLiteral("median"), Measurement::median(values)}, {QStringLiteral("all"), all}};
}

} // namespace

TreeBench::TreeBench(int rounds)
    : m_rounds(rounds)
{
    m_window.resize(1600, 1000);
    m_window.showPatientTreeForm();
    m_panel = m_window.getPatientTreeForm();
    m_view = m_panel->findChild<QTreeView *>();
    m_window.show();
    mustHold(QTest::qWaitForWindowExposed(&m_window), "a window");
}

void TreeBench::paint()
{
    m_view->viewport()->repaint();
    for (RecordForm *form : std::initializer_list<RecordForm *>{m_window.getPatientForm(),
             m_window.getStudyForm(), m_window.getSeriesForm(), m_window.getImagesForm()}) {
        if (form->isVisible()) {
            form->view()->viewport()->repaint();
        }
    }
}

/// What a result that is dropped costs later is somebody's wait, too: the longest single turn of the events
/// counts.
double TreeBench::timed(const std::function<void()> &action)
{
    QElapsedTimer time;
    time.start();
    action();
    paint();
    const double milliseconds = double(time.nsecsElapsed()) / 1e6;
    double longest = 0;
    for (int turn = 0; turn < eventTurns; ++turn) {
        time.restart();
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
        longest = std::max(longest, double(time.nsecsElapsed()) / 1e6);
    }
    return milliseconds + longest;
}

double TreeBench::press(const char *button)
{
    auto *found = m_panel->findChild<QAbstractButton *>(QLatin1String(button));
    mustHold(found, button);
    return timed([found] { QTest::mouseClick(found, Qt::LeftButton); });
}

double TreeBench::query(const char *name)
{
    auto *names = m_panel->findChild<QComboBox *>();
    names->setCurrentText(QLatin1String(name));
    mustHold(names->currentText() == QLatin1String(name), name);
    return press("AdvancedInquiry");
}

double TreeBench::longestWhileScrolling()
{
    QScrollBar *bar = m_view->verticalScrollBar();
    double longest = 0;
    for (int stop = 0; stop <= scrollStops; ++stop) {
        longest = std::max(
            longest, timed([=] { bar->setValue(int(qint64(bar->maximum()) * stop / scrollStops)); }));
    }
    bar->setValue(0);
    return longest;
}

double TreeBench::longestWhileOpening()
{
    m_view->collapseAll();
    QApplication::processEvents();
    double longest = 0;
    const int patients = m_view->model()->rowCount();
    for (int branch = 0; branch < 50; ++branch) {
        const QModelIndex patient = m_view->model()->index(branch * (patients / 50), 0);
        m_view->scrollTo(patient);
        longest = std::max(longest, timed([=] { m_view->expand(patient); }));
        longest = std::max(longest, timed([=] { m_view->expand(m_view->model()->index(0, 0, patient)); }));
    }
    return longest;
}

double TreeBench::seriesClick(int round)
{
    // The patient with the long series sorts first by its name; its other series are the other rounds.
    const QAbstractItemModel *model = m_view->model();
    const QModelIndex patient = model->index(0, 0);
    for (int study = 0; study < model->rowCount(patient); ++study) {
        const QModelIndex parent = model->index(study, 0, patient);
        for (int row = 0; row < model->rowCount(parent); ++row) {
            m_view->expand(patient);
            m_view->expand(parent);
            const QModelIndex series = model->index(row, 0, parent);
            m_view->scrollTo(series);
            const QPoint place(20, m_view->visualRect(series).center().y());
            const double milliseconds =
                timed([=] { QTest::mouseClick(m_view->viewport(), Qt::LeftButton, Qt::NoModifier, place); });
            if (m_window.getImagesForm()->tableModel()->rowCount() >= 500) {
                return milliseconds;
            }
        }
    }
    qFatal("no series with 500 images in round %d", round);
}

QJsonObject TreeBench::run()
{
    QJsonObject result;
    const qint64 before = ProcessMemory::residentKib();
    std::map<QString, std::vector<double>> times;
    for (int round = 0; round < m_rounds; ++round) {
        times[QStringLiteral("queryAllMs")].push_back(query(all));
        mustHold(m_view->model()->rowCount() > 200, "all patients");
        for (const char *button :
            {"AdvancedInquirySeries", "AdvancedInquiryStudy", "AdvancedInquiryPatient"}) {
            times[QLatin1String(button)].push_back(press(button));
        }
        press("AdvancedInquirySeries");
        times[QStringLiteral("scrollMs")].push_back(longestWhileScrolling());
        times[QStringLiteral("openMs")].push_back(longestWhileOpening());
        times[QStringLiteral("queryFewMs")].push_back(query(few));
        mustHold(m_view->model()->rowCount() == 200, "200 patients");
        times[QStringLiteral("queryFewFuzzyMs")].push_back(query(fewFuzzy));
        mustHold(m_view->model()->rowCount() == 200, "200 patients by a part of their names");
        query(images);
        times[QStringLiteral("seriesClickMs")].push_back(seriesClick(round));
    }
    for (const auto &[what, values] : times) {
        result.insert(what, summary(values));
    }
    result.insert(QStringLiteral("growthMib"), double(ProcessMemory::peakResidentKib() - before) / 1024);
    return result;
}
