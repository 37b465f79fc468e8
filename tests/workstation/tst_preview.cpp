#include "dicomfilebuilder.h"
#include "imageview.h"
#include "previewwindow.h"
#include "testfiles.h"
#include "testmain.h"

#include <QLabel>
#include <QSlider>
#include <QTemporaryDir>
#include <QWheelEvent>
#include <QtTest>

class PreviewTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_files.clear();
        for (int number = 1; number <= 12; ++number) {
            m_files.append(m_folder->filePath(QStringLiteral("%1.dcm").arg(number, 2, 10, QLatin1Char('0'))));
            DicomFileBuilder()
                .patient(QStringLiteral("ID<b>7"), QStringLiteral("Yamada^Tarou"))
                .instanceNumber(number)
                .set(0x00281050, QStringLiteral("40\\50"))
                .set(0x00281051, QStringLiteral("400\\500"))
                .write(m_files.last());
        }
        m_preview = std::make_unique<PreviewWindow>();
        m_preview->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_preview.get()));
    }

    void cleanup() { m_preview.reset(); }

    void scrollsByKeysWheelAndSlider()
    {
        open({m_folder->path()});
        QCOMPARE(m_preview->count(), 12);
        press(Qt::Key_PageDown);
        QTRY_COMPARE(m_preview->shown(), 1);
        press(Qt::Key_PageUp);
        press(Qt::Key_PageUp); // no further than the first
        QTRY_COMPARE(m_preview->shown(), 0);
        press(Qt::Key_End);
        QTRY_COMPARE(m_preview->shown(), 11);
        wheel(120);
        QTRY_COMPARE(m_preview->shown(), 10);
        press(Qt::Key_Home);
        wheel(-240);
        QTRY_COMPARE(m_preview->shown(), 2);
        m_preview->findChild<QSlider *>()->setValue(7);
        QTRY_COMPARE(m_preview->shown(), 7);
        QVERIFY(m_preview->statusText().startsWith(QLatin1String("Image 8 of 12")));
        const auto labels = m_preview->findChildren<QLabel *>();
        for (const QLabel *label : labels) {
            QVERIFY2(
                label->width() >= label->sizeHint().width() || label->wordWrap(), qPrintable(label->text()));
        }
        const auto shows = [&](const char *text) {
            return std::any_of(labels.begin(), labels.end(),
                [&](const QLabel *label) { return label->text().contains(QLatin1String(text)); });
        };
        QVERIFY(shows("Yamada, Tarou"));
        QVERIFY(shows("ID<b>7"));
        QVERIFY(shows("2024-01-31"));
        QVERIFY(shows("Not for diagnosis"));
    }

    void windowAndLevel()
    {
        open(m_files);
        QCOMPARE(m_preview->windowLevel(), (WindowLevel{40, 400}));
        press(Qt::Key_4);
        QCOMPARE(m_preview->windowLevel(), (WindowLevel{-600, 1500}));
        press(Qt::Key_PageDown);
        QTRY_COMPARE(m_preview->shown(), 1);
        QCOMPARE(m_preview->windowLevel(), (WindowLevel{-600, 1500})); // stays
        press(Qt::Key_7); // the second of the file
        QCOMPARE(m_preview->windowLevel(), (WindowLevel{50, 500}));
        press(Qt::Key_1);
        QCOMPARE(m_preview->windowLevel(), (WindowLevel{40, 400}));
        const QRgb before = m_preview->view()->picture().pixel(0, 0);
        press(Qt::Key_I);
        QCOMPARE(qRed(m_preview->view()->picture().pixel(0, 0)), 255 - qRed(before));
        ImageView *view = m_preview->view();
        const QPoint middle = view->rect().center();
        QTest::mousePress(view, Qt::RightButton, {}, middle);
        QMouseEvent move(QEvent::MouseMove, middle + QPoint(0, 100), Qt::NoButton, Qt::RightButton, {});
        QApplication::sendEvent(view, &move);
        QTest::mouseRelease(view, Qt::RightButton, {}, middle);
        QVERIFY(m_preview->windowLevel().centre > 40);
    }

    void zoomsAndPans()
    {
        open(m_files);
        ImageView *view = m_preview->view();
        const double fitted = view->scale();
        QVERIFY(view->isFitted());
        press(Qt::Key_O);
        QCOMPARE(view->scale(), 1.0);
        press(Qt::Key_Plus);
        wheel(120, Qt::ControlModifier);
        QCOMPARE(view->scale(), 1.25 * 1.25);
        QCOMPARE(m_preview->current(), 0);
        press(Qt::Key_F);
        QCOMPARE(view->scale(), fitted);
    }

    void playsInALoop()
    {
        open(m_files.mid(0, 3));
        QSignalSpy shown(m_preview.get(), &PreviewWindow::imageShown);
        press(Qt::Key_Space);
        QVERIFY(m_preview->isPlaying());
        QTRY_VERIFY(shown.size() >= 5);
        press(Qt::Key_Space);
        QVERIFY(!m_preview->isPlaying());
        for (int i = 0; i < 5; ++i) { // none skipped
            QCOMPARE(shown.at(i).at(0).toInt(), (i + 1) % 3);
        }
    }

    void otherImagesGoOn()
    {
        writeFile(m_files.at(1), "rubbish");
        open({m_files.at(0), m_files.at(1), m_folder->filePath(QStringLiteral("nothing")), m_files.at(2)});
        for (const auto &[index, words] : {std::pair(1, "not a DICOM"), std::pair(2, "cannot be opened")}) {
            m_preview->goTo(index);
            QTRY_COMPARE(m_preview->shown(), index);
            QVERIFY(m_preview->view()->picture().isNull());
            QVERIFY(m_preview->view()->accessibleDescription().contains(QLatin1String(words)));
        }
        m_preview->goTo(3);
        QTRY_COMPARE(m_preview->shown(), 3);
        QVERIFY(!m_preview->view()->picture().isNull());
    }

    void framesByTheBytesThereAre()
    {
        DicomFileBuilder().set(0x00280008, QStringLiteral("99999")).write(m_files.at(0));
        DicomFileBuilder().set(0x00280008, QStringLiteral("3")).write(m_files.at(1));
        open({m_files.at(0), m_files.at(1), m_files.at(2)});
        QCOMPARE(m_preview->count(), 1 + 3 + 1);
        m_preview->goTo(4);
        QTRY_COMPARE(m_preview->shown(), 4);
        QVERIFY(!m_preview->view()->picture().isNull());
    }

    /// The first of two frames cannot be decoded; the second has its windows all the same.
    void windowsOfLaterFrames()
    {
        DicomFileBuilder().set(0x00280008, QStringLiteral("2")).write(m_files.at(0));
        QByteArray bytes = bytesOf(m_files.at(0)).chopped(2 + 4 + 32); // behind the name of the pixels
        const QByteArray item("\xfe\xff\x00\xe0", 4);
        const QByteArray plane = '\x0f' + QByteArray(16, '\1') + '\x80';
        const QByteArray good =
            QByteArray("\2\0\0\0\x40\0\0\0\x52\0\0\0", 12) + QByteArray(52, '\0') + plane + plane;
        bytes.replace("1.2.840.10008.1.2.1", "1.2.840.10008.1.2.5");
        bytes += QByteArray(2, '\0') + QByteArray(4, '\xff') + item + QByteArray(4, '\0') + item
            + QByteArray("\4\0\0\0oops", 8) + item + char(good.size()) + QByteArray(3, '\0') + good;
        writeFile(m_files.at(0), bytes);
        open({m_files.at(0)});
        QVERIFY(m_preview->view()->picture().isNull());
        press(Qt::Key_PageDown);
        QTRY_COMPARE(m_preview->shown(), 1);
        QVERIFY2(
            !m_preview->view()->picture().isNull(), qPrintable(m_preview->view()->accessibleDescription()));
        press(Qt::Key_4);
        QCOMPARE(m_preview->windowLevel(), (WindowLevel{-600, 1500}));
    }

    void closesByKey()
    {
        QSignalSpy closed(m_preview.get(), &PreviewWindow::closed);
        press(Qt::Key_Escape);
        QCOMPARE(closed.size(), 1);
        QVERIFY(m_preview->isHidden());
    }

private:
    void open(const QStringList &paths)
    {
        m_preview->showFiles(paths);
        QTRY_COMPARE(m_preview->shown(), 0);
    }

    void press(int key) { QTest::keyClick(m_preview.get(), Qt::Key(key)); }

    void wheel(int angle, Qt::KeyboardModifiers modifiers = {})
    {
        const QPointF place = QRectF(m_preview->view()->rect()).center();
        QWheelEvent event(place, m_preview->view()->mapToGlobal(place.toPoint()), {}, {0, angle},
            Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(m_preview->view(), &event);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<PreviewWindow> m_preview;
    QStringList m_files;
};

PM_TEST_MAIN(PreviewTest)
#include "tst_preview.moc"
