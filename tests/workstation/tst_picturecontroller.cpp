#include "frame.h"
#include "liverefresh.h"
#include "ntableview.h"
#include "patientmanagermainwindow.h"
#include "patienttreeform.h"
#include "picturecontroller.h"
#include "previewwindow.h"
#include "recordform.h"
#include "selectionstatus.h"
#include "seriesform.h"
#include "testmain.h"
#include "thumbnailmodel.h"
#include "thumbnailview.h"

#include <QListView>
#include <QtTest>

class PictureControllerTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_frame = std::make_unique<Frame>(3);
        m_frame->index.addSeries(2, QStringLiteral("1.2.2.2"), QStringLiteral("MR"), 2);
        m_frame->index.addSeries(
            m_frame->index.addStudy(2, QStringLiteral("1.2.2.9")), QStringLiteral("1.2.2.9.1"));
        m_pictures = m_frame->window->pictures();
        m_frame->window->liveRefresh()->refreshNow();
    }

    void cleanup() { m_frame.reset(); }

    void followsTheSelection()
    {
        QSignalSpy changed(m_frame->window->library(), &PatientManagerMainWindow::patientChanged);
        clickPatient(1);
        QTRY_COMPARE(rows(), 3);
        QCOMPARE(changed.size(), 1);
        clickPatient(0);
        clickPatient(2); // told once for both
        QTRY_COMPARE(rows(), 1);
        QCOMPARE(changed.size(), 2);
        clickPatient(1);
        QTRY_COMPARE(rows(), 3);
        Frame::click(m_frame->studyView(), 0, QStringLiteral("StudyID"));
        QTRY_COMPARE(rows(), 2);
    }

    void clickSelectsTheSeries()
    {
        clickPatient(1);
        QTRY_COMPARE(rows(), 3);
        SeriesForm *form = m_frame->window->library()->getSeriesForm();
        QListView *list = m_pictures->view()->list();
        for (int row = 2; row >= 0; --row) { // the last is in the other study
            const qlonglong series = m_pictures->view()->model()->at(row).series;
            emit list->clicked(m_pictures->view()->model()->index(row));
            QCOMPARE(form->getSelectList(), QList<qlonglong>{series});
            QCOMPARE(m_frame->window->library()->selectedKeys(), QList<qlonglong>{series});
        }
        QSignalSpy changed(m_frame->window->library(), &PatientManagerMainWindow::patientChanged);
        QVERIFY(changed.wait());
        QCOMPARE(rows(), 3); // still those of the patient
    }

    /// What others write reaches the pictures of the chosen patient, and no patient is told anew.
    void liveRowsKeepEverything()
    {
        clickPatient(1);
        QTRY_COMPARE(rows(), 3);
        QSignalSpy changed(m_frame->window->library(), &PatientManagerMainWindow::patientChanged);
        QSignalSpy cleared(m_pictures->view()->model(), &QAbstractItemModel::rowsRemoved);
        m_frame->addFromOutside(QStringLiteral("Aaaa^First"));
        m_frame->index.addSeries(2, QStringLiteral("1.2.2.3"), QStringLiteral("CT"), 3);
        QTRY_COMPARE(rows(), 4);
        QVERIFY(changed.isEmpty());
        QVERIFY(cleared.isEmpty());
    }

    void treeAndDeletionClear()
    {
        PatientManagerMainWindow *library = m_frame->window->library();
        clickPatient(0);
        QTRY_COMPARE(rows(), 1);
        // A click on another patient in the tree: its pictures, and its studies for the applications.
        emit library->getPatientTreeForm()->selectStudyPks({2, 4}, QStringLiteral("generalstudy"));
        QTRY_COMPARE(rows(), 3);
        QCOMPARE(m_frame->window->selection()->current().keys, (QList<qlonglong>{2, 4}));
        clickPatient(1);
        QCOMPARE(m_frame->window->selection()->current().level, RecordLevel::Patient);
        QTRY_COMPARE(rows(), 3);
        m_frame->index.query(QStringLiteral("DELETE FROM generalseries WHERE SeriesInstanceUID = '1.2.2.2'"));
        emit library->thumbViewReflash();
        QTRY_COMPARE(rows(), 2);
        emit library->getPatientTreeForm()->deleteThumbView();
        QCOMPARE(rows(), 0);
        QList<qlonglong> many;
        for (qlonglong key = 1; key <= 1000; ++key) {
            many.append(key);
        }
        QSignalSpy changed(library, &PatientManagerMainWindow::patientChanged);
        emit library->getPatientTreeForm()->selectMutiPK(many, QStringLiteral("generalseries"));
        QTRY_COMPARE(rows(), 4);
        QVERIFY(changed.isEmpty()); // too many for objects
    }

    void filesOpenInThePreview()
    {
        emit m_frame->window->library()->picturesWanted({m_frame->index.path(), m_frame->index.path()});
        QVERIFY(m_pictures->preview() && m_pictures->preview()->isVisible());
        QTRY_COMPARE(m_pictures->preview()->count(), 2);
    }

private:
    void clickPatient(int row) const
    {
        Frame::click(m_frame->patientView(), row, QStringLiteral("PatientName"));
    }

    int rows() const { return m_pictures->view()->model()->rowCount(); }

    std::unique_ptr<Frame> m_frame;
    PictureController *m_pictures = nullptr; ///< the window's own
};

PM_TEST_MAIN(PictureControllerTest)
#include "tst_picturecontroller.moc"
