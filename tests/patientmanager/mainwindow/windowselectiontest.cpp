#include "ntableview.h"
#include "patientform.h"
#include "qpatient.h"
#include "qseries.h"
#include "qstudy.h"
#include "seriesform.h"
#include "studyform.h"
#include "testmain.h"
#include "windowfixture.h"

#include <QtTest>

namespace {

const QString patientTable = QStringLiteral("patient");
const QString studyTable = QStringLiteral("generalstudy");
const QString seriesTable = QStringLiteral("generalseries");

template <typename Record>
QList<qlonglong> keysOf(const QList<Record *> &records)
{
    QList<qlonglong> keys;
    for (const Record *record : records) {
        keys.append(record->getPk());
    }
    return keys;
}

} // namespace

/// The window's selection and the patient that it stands for.
class WindowSelectionTest : public WindowTest
{
    Q_OBJECT

private slots:
    void theMostSpecificLevelWins()
    {
        const auto select = [](auto *form, int row) {
            form->view()->selectRow(row);
            emit form->view()->clicked(form->view()->currentIndex());
        };
        PatientForm *patients = window->getPatientForm();
        patients->onShowPatient();
        select(patients, 0);
        refresh();
        QCOMPARE(window->selectedTable(), patientTable);
        select(window->getStudyForm().data(), 0);
        refresh();
        QCOMPARE(window->selectedTable(), studyTable);
        select(window->getSeriesForm().data(), 1);
        window->onSelectTable({99}, QStringLiteral("imageformat"));
        refresh();
        QCOMPARE(window->selectedTable(), seriesTable);
        QCOMPARE(window->selectedKeys(), QList<qlonglong>{series[1]});
        for (QWidget *form : recordForms(*window)) {
            static_cast<RecordForm *>(form)->view()->clearSelection();
        }
        refresh();
        QVERIFY(window->selectedKeys().isEmpty());
        QCOMPARE(window->selectedTable(), seriesTable);
    }

    void studiesComeInTheOrderOfTheSelection()
    {
        window->onMutiSelect({studies[2], studies[0]}, studyTable);
        const QSharedPointer<QPatient> built = window->getPatient(7); // the index counts for patients only
        QCOMPARE(built->getPk(), patient);
        QCOMPARE(built->patientName(), QStringLiteral("A^One"));
        QCOMPARE(keysOf(built->getStudys()), (QList<qlonglong>{studies[2], studies[0]}));
        QCOMPARE(keysOf(built->getStudys()[1]->getSeries()).size(), 2);
    }

    void seriesHangBelowOneStudy()
    {
        window->onMutiSelect({series[1], series[0]}, seriesTable);
        const QSharedPointer<QPatient> built = window->getPatient(0);
        QCOMPARE(built->getPk(), patient);
        QCOMPARE(keysOf(built->getStudys()), QList<qlonglong>{studies[0]});
        const QStudy *study = built->getStudys()[0];
        QCOMPARE(study->getStudyUID(), QStringLiteral("1.1"));
        QCOMPARE(keysOf(study->getSeries()), (QList<qlonglong>{series[1], series[0]}));
        QCOMPARE(study->getSeries()[0]->getInstances().size(), 1);
        window->onMutiSelect({}, seriesTable);
        QVERIFY(window->getPatient(0)->getStudys().isEmpty());
    }

    void theHostIsToldOfTheFirstPatient()
    {
        QSignalSpy changed(window, &PatientManagerMainWindow::patientChanged);
        const auto told = [&changed] { return changed.takeLast().value(0).value<QPatient *>(); };
        window->onMutiSelect({patient + 1, patient}, patientTable);
        window->updateSelectPatient();
        QCOMPARE(told()->getPk(), patient + 1);
        QCOMPARE(window->getPatient(1)->getPk(), patient);
        QCOMPARE(window->getPatient(1)->getStudys().size(), 3);
        for (const char *table : {"imageformat", "images", "patient"}) {
            window->onSelectTable(
                qstrcmp(table, "patient") == 0 ? QList<qlonglong>() : QList<qlonglong>{patient},
                QLatin1String(table));
            window->updateSelectPatient();
            const QPatient *empty = told();
            QVERIFY(empty && empty->getPk() == 0 && empty->getStudys().isEmpty());
        }
    }

    void oneObjectServesAllRequests()
    {
        QVERIFY(!window->getPatient() && !window->getPatientSharePointer());
        QSharedPointer<QPatient> kept = window->getPatient(0);
        QCOMPARE(window->getPatient(), kept.data());
        window->onSelectTable({patient}, patientTable);
        QCOMPARE(window->getPatient(0), kept);
        QCOMPARE(window->getPatientSharePointer(), kept);
        fixture->closeWindow();
        const QPointer<QPatient> alive = kept.data();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(alive);
        kept.reset();
        QTRY_VERIFY(!alive);
    }

private:
    /// Two patients; the first has three studies, the first of these two series with an image each.
    void prepare() override
    {
        const TemporaryIndex &index = fixture->index;
        patient = index.addPatient(QStringLiteral("A^One"), QStringLiteral("1"));
        index.addPatient(QStringLiteral("B^Two"), QStringLiteral("2"));
        studies.clear();
        series.clear();
        for (const char *uid : {"1.1", "1.2", "1.3"}) {
            studies.append(index.addStudy(patient, QLatin1String(uid)));
        }
        for (const char *uid : {"1.1.1", "1.1.2"}) {
            series.append(index.addSeries(studies[0], QLatin1String(uid)));
            index.addImage(series.constLast(), QLatin1String(uid) + QStringLiteral(".1"));
        }
        window = &fixture->open();
    }

    void refresh() const { QVERIFY(QMetaObject::invokeMethod(window, "getSelectPatientPk")); }

    PatientManagerMainWindow *window = nullptr;
    qlonglong patient = 0;
    QList<qlonglong> studies;
    QList<qlonglong> series;
};

PM_TEST_MAIN(WindowSelectionTest)
#include "windowselectiontest.moc"
