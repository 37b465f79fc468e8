#include "browserwindow.h"
#include "configlocation.h"
#include "dicomfilebuilder.h"
#include "httpuploadfile.h"
#include "keptpicture.h"
#include "loginform.h"
#include "oddservice.h"
#include "picturequeue.h"
#include "previewwindow.h"
#include "seriesmodel.h"
#include "seriespicture.h"
#include "serviceview.h"
#include "testmain.h"
#include "websession.h"

#include <QBuffer>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTableView>
#include <QtTest>

namespace {

constexpr int mostMs = 30000;

template <typename Window>
Window *shownWindow()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        auto *window = qobject_cast<Window *>(widget);
        if (window && window->isVisible()) {
            return window;
        }
    }
    return nullptr;
}

} // namespace

class CloudBrowserTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<DicomServer> m_archive;
    QTemporaryDir m_folder;

private slots:
    void initTestCase()
    {
        allowWarning(QStringLiteral("must only be called once")); // Qt's own
        ConfigLocation::setBase(m_folder.filePath(QStringLiteral("base")));
        m_archive = WebArchive::start();
        const QString images = m_folder.filePath(QStringLiteral("images"));
        for (int patient = 1; patient <= 3; ++patient) {
            for (int number = 1; number <= 4; ++number) {
                const QString uid = QStringLiteral("1.2.3.%1").arg(patient);
                DicomFileBuilder()
                    .patient(
                        QStringLiteral("P%1").arg(patient), QStringLiteral("Müller^Jörg %1").arg(patient))
                    .uids(uid, QStringLiteral("%1.4.%2").arg(uid).arg(number / 3),
                        QStringLiteral("%1.5.%2").arg(uid).arg(number))
                    .instanceNumber(number)
                    .write(images + QStringLiteral("/%1-%2.dcm").arg(patient).arg(number));
            }
        }
        m_archive->fill({images});
    }

    /// From the search to the preview, which takes its files with it.
    void findsAndOpens()
    {
        BrowserWindow window;
        window.show();
        auto *studies = window.findChild<QTableView *>(QStringLiteral("studies"));
        auto *series = window.findChild<QListView *>(QStringLiteral("series"));
        window.setSession(webSessionAt(WebArchive::address(*m_archive)));
        QTRY_COMPARE_WITH_TIMEOUT(studies->model()->rowCount(), 3, mostMs);
        window.findChild<QLineEdit *>(QStringLiteral("name"))->setText(QStringLiteral("Jörg 2"));
        window.findChild<QPushButton *>(QStringLiteral("search"))->click();
        QTRY_COMPARE_WITH_TIMEOUT(studies->model()->rowCount(), 1, mostMs);
        QTRY_COMPARE(studies->horizontalHeader()->length(), studies->viewport()->width());
        QSignalSpy pictures(series->model(), &QAbstractItemModel::dataChanged);
        studies->selectRow(0);
        QTRY_COMPARE_WITH_TIMEOUT(series->model()->rowCount(), 2, mostMs);
        QTRY_COMPARE_WITH_TIMEOUT(pictures.count(), 2, mostMs);
        keepPicture(window, QStringLiteral("browser"));

        series->setCurrentIndex(series->model()->index(0, 0));
        window.findChild<QPushButton *>(QStringLiteral("open"))->click();
        QTRY_VERIFY_WITH_TIMEOUT(shownWindow<PreviewWindow>(), mostMs);
        QPointer<PreviewWindow> preview = shownWindow<PreviewWindow>();
        QTRY_COMPARE_WITH_TIMEOUT(preview->count(), 2, mostMs);
        window.setSession({});
        QVERIFY(preview && preview->isVisible());
        preview->close();
        QTRY_VERIFY_WITH_TIMEOUT(!preview, mostMs);
    }

    /// Whoever signs in during a fetch ends it, and the window is ready for the next.
    void anotherSessionEndsAFetch()
    {
        BrowserWindow window;
        window.show();
        auto *studies = window.findChild<QTableView *>(QStringLiteral("studies"));
        auto *series = window.findChild<QListView *>(QStringLiteral("series"));
        const auto *stop = window.findChild<QPushButton *>(QStringLiteral("stop"));
        window.setSession(webSessionAt(WebArchive::address(*m_archive)));
        QTRY_COMPARE_WITH_TIMEOUT(studies->model()->rowCount(), 3, mostMs);
        studies->selectRow(0);
        QTRY_COMPARE_WITH_TIMEOUT(series->model()->rowCount(), 2, mostMs);
        series->setCurrentIndex(series->model()->index(0, 0));
        window.findChild<QPushButton *>(QStringLiteral("open"))->click();
        QVERIFY(stop->isVisible());
        window.setSession({});
        QVERIFY(!stop->isVisible());
        QVERIFY(!window.findChild<QPushButton *>(QStringLiteral("open"))->isEnabled());
    }

    /// However many series there are, few pictures are asked for at once.
    void aStudyOfManySeries()
    {
        QByteArray series;
        for (int number = 1; number <= 40; ++number) {
            series +=
                ",{\"0020000E\":{\"vr\":\"UI\",\"Value\":[\"1.2." + QByteArray::number(number) + "\"]}}";
        }
        int asked = 0;
        const OddService service([&](const QByteArray &request) {
            const bool isOfOne = request.contains("/instances");
            asked += isOfOne ? 1 : 0;
            const QByteArray answer = request.contains("offset=0") ? '[' + series.mid(1) + ']' : "[]";
            return isOfOne ? QByteArray() : httpAnswer("200 OK", "application/dicom+json", answer);
        });
        ServiceView view;
        QSignalSpy ended(&view, &ServiceView::seriesEnded);
        view.setSession(webSessionAt(service.address()));
        view.askSeries(QStringLiteral("1.2"), SeriesModel::side);
        QTRY_COMPARE_WITH_TIMEOUT(ended.count(), 1, mostMs);
        QTRY_COMPARE(asked, PictureQueue::mostAtOnce);
    }

    /// Where nobody is remembered, the sign-in is shown; a refused session leads there, too.
    void asksWhoSignsIn()
    {
        BrowserWindow window;
        window.show();
        window.begin();
        QTRY_VERIFY_WITH_TIMEOUT(shownWindow<LoginForm>(), mostMs);
        shownWindow<LoginForm>()->close();
        CloudSession wrong = webSessionAt(WebArchive::address(*m_archive));
        wrong.service.authorization =
            WebService::basic(QLatin1String(WebArchive::user), QStringLiteral("no"));
        window.setSession(wrong);
        QTRY_VERIFY_WITH_TIMEOUT(shownWindow<LoginForm>(), mostMs);
    }

    /// A service that does not render costs one object, and a file that is no picture nothing.
    void picturesAreMadeHere()
    {
        const QString file = m_folder.filePath(QStringLiteral("images/1-1.dcm"));
        QCOMPARE(SeriesPicture::pictureOf(file, SeriesModel::side).size(),
            QSize(SeriesModel::side, SeriesModel::side));
        QVERIFY(SeriesPicture::pictureOf(m_folder.path(), SeriesModel::side).isNull());
        QVERIFY(SeriesPicture::readPicture("<html>", SeriesModel::side).isNull());
        const auto encoded = [](const QSize &size, const char *format) {
            QByteArray bytes;
            QBuffer buffer(&bytes);
            QImage picture(size, QImage::Format_Grayscale8);
            picture.fill(0);
            picture.save(&buffer, format);
            return SeriesPicture::readPicture(bytes, SeriesModel::side);
        };
        QVERIFY(!encoded({300, 200}, "jpeg").isNull());
        QVERIFY(encoded({300, 200}, "png").isNull()); // none that was asked for
        QVERIFY(encoded({20000, 1000}, "jpeg").isNull()); // would take too much memory
    }
};

PM_TEST_MAIN(CloudBrowserTest)
#include "tst_cloudbrowser.moc"
