// bench_refresh fill INDEX [PERCENT]: makes an index of 100,000 series, 5,000 of them not uploaded
// bench_refresh run INDEX ROUNDS: clicks on patients while upload states are refreshed
#include "guibench.h"
#include "measurement.h"
#include "ntableview.h"
#include "patientform.h"
#include "seriesform.h"
#include "studyform.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QLoggingCategory>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlTableModel>
#include <QVBoxLayout>
#include <QtTest>

namespace {

constexpr BigIndexSize size{10'000, 2, 5, 0, 1, 1};
constexpr int quickClicks = 10;
constexpr int patience = 60'000; ///< milliseconds

/// One series in twenty is not uploaded, and stays so: its upload is under way.
QString makeStates()
{
    for (const char *statement :
        {"INSERT INTO series (seriesUID, recvnum, upCloudnum) SELECT SeriesInstanceUID, 12, "
         "CASE pk % 20 WHEN 0 THEN 5 ELSE 12 END FROM generalseries",
            "UPDATE generalseries SET Status = CASE pk % 20 WHEN 0 THEN '上传中' ELSE '已上传' END",
            "UPDATE generalstudy SET Status = '上传中'", "UPDATE patient SET Status = '上传中'"}) {
        QSqlQuery query;
        if (!query.exec(QString::fromUtf8(statement))) {
            return query.lastError().text();
        }
    }
    return {};
}

/// The three tables that a click fills.
class Tables
{
public:
    Tables()
    {
        auto *layout = new QVBoxLayout(&m_window);
        for (RecordForm *form : std::initializer_list<RecordForm *>{m_patients, m_studies, m_series}) {
            layout->addWidget(form);
        }
        QObject::connect(m_patients, &PatientForm::selectPatient, m_studies, &StudyForm::onSelectPatient);
        QObject::connect(m_studies, &StudyForm::selectStudy, m_series, &SeriesForm::onSelectStudy);
        for (RecordForm *form : std::initializer_list<RecordForm *>{m_studies, m_series}) {
            QObject::connect(
                m_patients, &PatientForm::uploadStatesRefreshed, form, &RecordForm::readUploadStates);
        }
        m_window.resize(1600, 1200);
        m_window.show();
        m_patients->onShowPatient();
        QApplication::processEvents();
    }

    /// Milliseconds from the click until studies and series are painted.
    double click(int row)
    {
        NTableView *const view = m_patients->view();
        const QModelIndex cell = m_patients->tableModel()->index(row, view->columnAt(10));
        view->scrollTo(cell);
        QElapsedTimer time;
        time.start();
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, view->visualRect(cell).center());
        m_studies->view()->viewport()->repaint();
        m_series->view()->viewport()->repaint();
        return double(time.nsecsElapsed()) / 1e6;
    }
    int refreshes() const { return m_patients->refreshCount(); }
    /// @return the longest that the event loop was held up meanwhile, in milliseconds
    double waitUntilIdle() const
    {
        double longest = 0;
        QElapsedTimer all;
        all.start();
        while (refreshes() > 0 && all.elapsed() < patience) {
            QElapsedTimer one;
            one.start();
            QApplication::processEvents();
            longest = std::max(longest, double(one.nsecsElapsed()) / 1e6);
        }
        return longest;
    }
    void waitUntilBusy() const
    {
        QElapsedTimer all;
        all.start();
        while (refreshes() == 0 && all.elapsed() < patience) {
            QApplication::processEvents();
        }
    }

private:
    QWidget m_window;
    PatientForm *m_patients = new PatientForm(&m_window);
    StudyForm *m_studies = new StudyForm(&m_window);
    SeriesForm *m_series = new SeriesForm(&m_window);
};

QString measure(const QStringList &arguments)
{
    QString error = GuiBench::openIndex(arguments.at(1));
    if (!error.isEmpty()) {
        return error;
    }
    QLoggingCategory::setFilterRules(QStringLiteral("*.warning=false\n*.debug=false"));
    Tables tables;
    QJsonArray idleClicks;
    QJsonArray clicks;
    QJsonArray whole;
    int leftBehind = 0;
    double longest = 0;
    for (int round = 0; round < arguments.at(2).toInt(); ++round) {
        QElapsedTimer time;
        idleClicks.append(tables.click(20 * round));
        time.start();
        tables.waitUntilBusy();
        longest = std::max(longest, tables.waitUntilIdle());
        whole.append(double(time.nsecsElapsed()) / 1e6);
        tables.click(20 * round);
        for (int i = 1; i <= quickClicks; ++i) {
            tables.waitUntilBusy();
            clicks.append(tables.click(20 * round + i));
        }
        longest = std::max(longest, tables.waitUntilIdle());
        leftBehind = std::max(leftBehind, tables.refreshes());
    }
    Measurement::print({{QStringLiteral("idleClickMs"), idleClicks}, {QStringLiteral("clickMs"), clicks},
        {QStringLiteral("refreshMs"), whole}, {QStringLiteral("longestBlockMs"), longest},
        {QStringLiteral("leftBehind"), leftBehind}});
    return {};
}

QString fill(const QStringList &arguments)
{
    QString error = GuiBench::fillIndex(arguments, size);
    return error.isEmpty() ? makeStates() : error;
}

} // namespace

int main(int argc, char **argv)
{
    return GuiBench::run(argc, argv, 2, "bench_refresh fill INDEX [PERCENT] | run INDEX ROUNDS",
        [](const QStringList &arguments) {
            return arguments.at(0) == QLatin1String("fill") ? fill(arguments) : measure(arguments);
        });
}
