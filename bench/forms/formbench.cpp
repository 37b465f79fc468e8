#include "formbench.h"

#include "measurement.h"
#include "ntableview.h"
#include "processmemory.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QJsonArray>
#include <QScrollBar>
#include <QSqlTableModel>
#include <QVBoxLayout>
#include <QtTest>

namespace {

template <typename Action>
double millisecondsOf(const Action &action)
{
    QElapsedTimer time;
    time.start();
    action();
    return double(time.nsecsElapsed()) / 1e6;
}

void paint(RecordForm &form)
{
    form.view()->viewport()->repaint();
}

QJsonObject summary(const std::vector<double> &milliseconds)
{
    QJsonArray all;
    for (const double value : milliseconds) {
        all.append(value);
    }
    return {{QStringLiteral("median"), Measurement::median(milliseconds)}, {QStringLiteral("all"), all}};
}

void mustHold(bool good, const char *what)
{
    if (!good) {
        qFatal("the forms do not show what they should: %s", what);
    }
}

} // namespace

FormBench::FormBench(int rounds)
    : m_rounds(rounds)
    , m_patients(new PatientForm(&m_window))
    , m_studies(new StudyForm(&m_window))
    , m_series(new SeriesForm(&m_window))
    , m_images(new ImageformatForm(&m_window))
{
    auto *layout = new QVBoxLayout(&m_window);
    for (RecordForm *form : std::initializer_list<RecordForm *>{m_patients, m_studies, m_series, m_images}) {
        layout->addWidget(form);
    }
    m_images->onFixHeight(true);
    QObject::connect(m_patients, &PatientForm::selectPatient, m_studies, &StudyForm::onSelectPatient);
    QObject::connect(m_studies, &StudyForm::selectStudy, m_series, &SeriesForm::onSelectStudy);
    QObject::connect(m_series, &SeriesForm::selectSeries, m_images, &ImageformatForm::onSelectSeries);
    m_window.resize(1600, 1200);
    m_window.show();
    mustHold(QTest::qWaitForWindowExposed(&m_window), "a window");
}

double FormBench::showAll()
{
    m_patients->onInquiryShow();
    QApplication::processEvents();
    return millisecondsOf([this] {
        m_patients->onShowPatient();
        paint(*m_patients);
    });
}

double FormBench::sortBy(int column)
{
    QHeaderView *const header = m_patients->view()->horizontalHeader();
    m_patients->view()->horizontalScrollBar()->setValue(0);
    const QPoint middle(
        header->sectionViewportPosition(column) + header->sectionSize(column) / 2, header->height() / 2);
    return millisecondsOf([this, header, middle] {
        QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, middle);
        paint(*m_patients);
    });
}

QJsonObject FormBench::manyPatients()
{
    QSqlTableModel *const model = m_patients->tableModel();
    const qint64 before = ProcessMemory::residentKib();
    std::vector<double> shown;
    for (int round = 0; round < m_rounds; ++round) {
        shown.push_back(showAll());
        mustHold(!model->index(0, 1).data().toString().isEmpty(), "a name in the first row");
    }
    const int rows = model->rowCount();
    QJsonObject result{{QStringLiteral("rows"), rows}, {QStringLiteral("firstRowsMs"), summary(shown)}};
    for (const char *name : {"PatientName", "PatientID", "PatientBirthDate", "updated_time"}) {
        const int column = model->fieldIndex(QLatin1String(name));
        std::vector<double> sorted;
        for (int round = 0; round < m_rounds; ++round) {
            const QVariant first = model->index(0, column).data();
            sorted.push_back(sortBy(column));
            mustHold(round == 0 || model->index(0, column).data() != first, "another order after a click");
        }
        result.insert(QStringLiteral("sortMs_") + QLatin1String(name), summary(sorted));
    }
    QScrollBar *const bar = m_patients->view()->verticalScrollBar();
    std::vector<double> scrolled;
    constexpr int stops = 200;
    for (int stop = 1; stop <= stops; ++stop) {
        scrolled.push_back(millisecondsOf([&] {
            bar->setValue(int(qint64(bar->maximum()) * stop / stops));
            paint(*m_patients);
        }));
    }
    mustHold(!model->index(rows - 1, 1).data().toString().isEmpty(), "a name in the last row");
    result.insert(QStringLiteral("scrollMs"), Measurement::median(scrolled));
    result.insert(QStringLiteral("growthMib"), double(ProcessMemory::residentKib() - before) / 1024);
    result.insert(QStringLiteral("peakMib"), double(ProcessMemory::peakResidentKib()) / 1024);
    return result;
}

double FormBench::clickRow(RecordForm &form, int row, const std::vector<RecordForm *> &filled)
{
    NTableView *const view = form.view();
    const QModelIndex cell = form.tableModel()->index(row, view->columnAt(10));
    view->scrollTo(cell);
    const QPoint middle = view->visualRect(cell).center();
    return millisecondsOf([&] {
        QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, middle);
        for (RecordForm *other : filled) {
            paint(*other);
        }
    });
}

QJsonObject FormBench::clicks()
{
    m_patients->onShowPatient();
    QApplication::processEvents();
    std::vector<double> patients;
    std::vector<double> series;
    for (int round = 0; round < m_rounds; ++round) {
        // Another patient each time, then the one of key 1 with the long series.
        patients.push_back(clickRow(*m_patients, round + 1, {m_studies, m_series}));
        mustHold(m_studies->tableModel()->rowCount() > 0, "studies after a click on a patient");
        mustHold(m_series->tableModel()->rowCount() > 0, "series after a click on a patient");
        clickRow(*m_patients, 0, {m_studies, m_series});
        series.push_back(clickRow(*m_series, 0, {m_images}));
        mustHold(m_images->tableModel()->rowCount() > 256, "images after a click on the long series");
        QApplication::processEvents();
    }
    return {{QStringLiteral("patients"), m_patients->tableModel()->rowCount()},
        {QStringLiteral("studies"), m_studies->tableModel()->rowCount()},
        {QStringLiteral("images"), m_images->tableModel()->rowCount()},
        {QStringLiteral("patientClickMs"), summary(patients)},
        {QStringLiteral("seriesClickMs"), summary(series)}};
}
