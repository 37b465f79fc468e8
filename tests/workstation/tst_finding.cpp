#include "configlocation.h"
#include "datatruth.h"
#include "frame.h"
#include "launchersettings.h"
#include "ntableview.h"
#include "picturecontroller.h"
#include "previewwindow.h"
#include "recordform.h"
#include "seriesform.h"
#include "testfiles.h"
#include "testmain.h"
#include "thumbnailmodel.h"
#include "thumbnailview.h"

#include <QAction>
#include <QApplication>
#include <QListView>
#include <QPushButton>
#include <QSqlTableModel>
#include <QTemporaryDir>
#include <QtTest>

/// The way from a name to the images and on to an application, by keyboard and mouse alone, on real files.
class FindingTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { ConfigLocation::setBase(m_folder.path()); }
    void cleanup() { ConfigLocation::setBase(QString()); }

    void findsSeesAndHandsOver()
    {
        if (sharedData().isEmpty()) {
            QSKIP("The shared corpus is not there.");
        }
        configureProgram();
        const Frame frame(40);
        importRealFiles(frame);

        frame.action("actionFindPatients")->trigger();
        QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("AUSTRIAL"));
        QTRY_COMPARE(frame.patientView()->model()->rowCount(), 1);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);

        PictureController *pictures = frame.window->pictures();
        ThumbnailModel *model = pictures->view()->model();
        QTRY_COMPARE(model->rowCount(), 1);
        const QModelIndex thumbnail = model->index(0);
        QTRY_VERIFY(!thumbnail.data(ThumbnailModel::PictureRole).value<QImage>().isNull());
        QListView *list = pictures->view()->list();
        QTest::mouseClick(
            list->viewport(), Qt::LeftButton, Qt::NoModifier, list->visualRect(thumbnail).center());
        const RecordForm *series = frame.window->forms()[2];
        QCOMPARE(series->view()->selectionModel()->selectedRows().size(), 1);
        const QSet<QString> files = filesOfSeries(
            series->tableModel()
                ->index(0, series->tableModel()->fieldIndex(QStringLiteral("SeriesInstanceUID")))
                .data()
                .toString());
        QVERIFY(files.size() > 90);
        QCOMPARE(frame.window->forms()[3]->tableModel()->rowCount(), files.size());
        opensInThePreview(pictures, files.size());

        auto *vessel = frame.window->findChild<QPushButton *>(QStringLiteral("pushButton_vessel"));
        QTest::mouseClick(vessel, Qt::LeftButton);
        QSet<QString> handedOver;
        QTRY_VERIFY([&] {
            const QStringList lines = QString::fromUtf8(bytesOf(received())).split('\n', Qt::SkipEmptyParts);
            handedOver = QSet<QString>(lines.begin(), lines.end());
            return handedOver.size() >= files.size();
        }());
        QCOMPARE(handedOver, files);
    }

private:
    QString received() const { return m_folder.filePath(QStringLiteral("received.txt")); }

    /// An application that keeps the list of files that it was given.
    void configureProgram() const
    {
        const Launcher copier{QStringLiteral("/bin/cp"), {QStringLiteral("{fileList}"), received()}};
        QVERIFY(LauncherSettings::write(LauncherId::Vessel, copier));
    }

    static void importRealFiles(const Frame &frame)
    {
        QVERIFY(frame.index.import({sharedData() + QStringLiteral("/01-series")}).of(FileVerdict::New) > 300);
    }

    /// What independent readers found.
    static QSet<QString> filesOfSeries(const QString &uid)
    {
        QSet<QString> files;
        for (const DataTruth &truth : readDataTruth()) {
            if (truth.verdict == QLatin1String("index") && truth.path.startsWith(QLatin1String("01-series/"))
                && truth.values.value(Attribute::SeriesInstanceUID) == uid) {
                files.insert(sharedData() + QLatin1Char('/') + truth.path);
            }
        }
        return files;
    }

    void opensInThePreview(PictureController *pictures, int images) const
    {
        QTest::keyClick(pictures->view()->list(), Qt::Key_Return);
        PreviewWindow *preview = pictures->preview();
        QVERIFY(preview && QTest::qWaitForWindowExposed(preview));
        QTRY_COMPARE(preview->count(), images);
        QTest::keyClick(preview, Qt::Key_End);
        QTRY_COMPARE(preview->shown(), images - 1);
        QTest::keyClick(preview, Qt::Key_Escape);
        QTRY_VERIFY(!pictures->preview());
    }

    QTemporaryDir m_folder;
};

PM_TEST_MAIN(FindingTest)
#include "tst_finding.moc"
