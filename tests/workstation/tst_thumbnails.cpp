#include "dicomfilebuilder.h"
#include "temporaryindex.h"
#include "testfiles.h"
#include "testmain.h"
#include "thumbnailloader.h"
#include "thumbnailmodel.h"
#include "thumbnailstore.h"
#include "thumbnailview.h"

#include <QLabel>
#include <QListView>
#include <QtTest>

Q_DECLARE_METATYPE(Thumbnail)

namespace {

QImage plain(int side)
{
    QImage image(side, side, QImage::Format_Grayscale8);
    image.fill(100);
    return image;
}

} // namespace

class ThumbnailsTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_index = std::make_unique<TemporaryIndex>(); }

    void cleanup() { m_index.reset(); }

    void storeBelongsToTheFile()
    {
        ThumbnailStore store(m_index->path());
        const QString path = imageFile(QStringLiteral("file"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("one") == 3);
        file.close();
        store.put(QStringLiteral("1.2"), QFileInfo(path), plain(8));
        QCOMPARE(store.find(QStringLiteral("1.2"), QFileInfo(path)).size(), QSize(8, 8));
        QVERIFY(store.find(QStringLiteral("1.3"), QFileInfo(path)).isNull());
        QVERIFY(file.open(QIODevice::Append) && file.write("two") == 3);
        file.close();
        QVERIFY(store.find(QStringLiteral("1.2"), QFileInfo(path)).isNull());
        store.put(QStringLiteral("1.3/.."), QFileInfo(path), plain(8));
        store.sweep([](const QString &uid) { return uid == QLatin1String("1.3/.."); }, false);
        QCOMPARE(filesBelow(store.folder()).size(), 1);
        QVERIFY(!store.find(QStringLiteral("1.3/.."), QFileInfo(path)).isNull());
        // No cache is no failure.
        ThumbnailStore nowhere(QStringLiteral("/proc/nowhere/index.db"));
        nowhere.put(QStringLiteral("1.2"), QFileInfo(path), plain(8));
        QVERIFY(nowhere.find(QStringLiteral("1.2"), QFileInfo(path)).isNull());
    }

    void storeIsBounded()
    {
        QByteArray one;
        QBuffer buffer(&one);
        QVERIFY(plain(64).save(&buffer, "PNG"));
        ThumbnailStore store(m_index->path(), one.size() * 10);
        for (int i = 0; i < 25; ++i) {
            store.put(QString::number(i), QFileInfo(m_index->path()), plain(64));
        }
        QVERIFY(store.wantsPruning());
        store.prune();
        QVERIFY(!store.wantsPruning());
        QVERIFY(filesBelow(store.folder()).size() <= 10);
        QVERIFY(filesBelow(store.folder()).size() >= 8);
    }

    void middleImageOfEachSeries()
    {
        const qlonglong patient = addPatient(2);
        const SeriesEntries series = readSeriesEntries(
            m_index->path(), {RecordLevel::Patient, {patient}}, ThumbnailLoader::mostSeries, false);
        QCOMPARE(series.entries.size(), 2);
        QCOMPARE(series.entries[0].instanceUid, QStringLiteral("1.2.1.2"));
        QCOMPARE(series.entries[1].images, 3);

        ThumbnailLoader loader(m_index->path());
        QSignalSpy finished(&loader, &ThumbnailLoader::finished);
        for (int round = 0; round < 2; ++round) { // the second from the store
            loader.forget();
            loader.load({RecordLevel::Patient, {patient}});
            QVERIFY(finished.wait());
            QCOMPARE(loader.decodedCount(), 2);
            QTRY_COMPARE(filesBelow(loader.store().folder()).size(), 2);
        }
        m_index->query(QStringLiteral("DELETE FROM generalseries WHERE SeriesNumber = 1"));
        loader.sweep();
        QTRY_COMPARE(filesBelow(loader.store().folder()).size(), 1);
    }

    void leftSelectionIsNotDecoded()
    {
        const qlonglong patient = addPatient(60);
        ThumbnailLoader loader(m_index->path());
        QSignalSpy loaded(&loader, &ThumbnailLoader::loaded);
        int decodedWhenLeft = 0;
        connect(&loader, &ThumbnailLoader::loaded, this, [&] {
            if (decodedWhenLeft == 0) {
                loader.cancel();
                decodedWhenLeft = loader.decodedCount();
            }
        });
        loader.load({RecordLevel::Patient, {patient}});
        QTRY_VERIFY(decodedWhenLeft > 0);
        QSignalSpy finished(&loader, &ThumbnailLoader::finished);
        loader.load({RecordLevel::Series, {1}}); // what was left is behind us once this one is done
        QVERIFY(finished.wait());
        // Those that were in work may have ended; each thread had one, and the new selection decodes one.
        QVERIFY(loader.decodedCount() <= decodedWhenLeft + QThread::idealThreadCount() + 2);
        QVERIFY(loader.decodedCount() < 60); // not all of them
        QCOMPARE(loaded.size(), 2);
    }

    void listByMouseAndKeys()
    {
        const qlonglong patient = addPatient(3);
        ThumbnailView view(m_index->path());
        view.resize(600, 400);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QSignalSpy finished(view.loader(), &ThumbnailLoader::finished);
        QSignalSpy chosen(&view, &ThumbnailView::seriesChosen);
        QSignalSpy opened(&view, &ThumbnailView::previewRequested);
        view.show({RecordLevel::Patient, {patient}});
        QVERIFY(finished.wait());
        QVERIFY(chosen.isEmpty());
        QListView *list = view.list();
        const QModelIndex second = view.model()->index(1);
        QVERIFY(!second.data(ThumbnailModel::PictureRole).value<QImage>().isNull());
        QCOMPARE(second.data(Qt::AccessibleTextRole).toString(), QStringLiteral("CT 2, 3 image(s)"));
        QFocusEvent focus(QEvent::FocusIn, Qt::TabFocusReason);
        QApplication::sendEvent(list, &focus);
        QVERIFY(list->currentIndex().isValid()); // by itself, which is nobody's choice
        QVERIFY(chosen.isEmpty());
        QTest::keyClick(list, Qt::Key_Space);
        QCOMPARE(chosen.takeLast().at(0).toLongLong(), view.model()->at(0).series);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(second).center());
        QCOMPARE(chosen.takeLast().at(0).toLongLong(), view.model()->at(1).series);
        QTest::keyClick(list, Qt::Key_Right);
        QCOMPARE(chosen.takeLast().at(0).toLongLong(), view.model()->at(2).series);
        QTest::keyClick(list, Qt::Key_Return);
        QCOMPARE(opened.takeLast().at(0).toLongLong(), view.model()->at(2).series);
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(second).center());
        QCOMPARE(opened.takeLast().at(0).toLongLong(), view.model()->at(1).series);
    }

    void refreshKeepsWhatStays()
    {
        const qlonglong patient = addPatient(2);
        ThumbnailView view(m_index->path());
        QSignalSpy finished(view.loader(), &ThumbnailLoader::finished);
        view.show({RecordLevel::Patient, {patient}});
        QVERIFY(finished.wait());
        view.list()->setCurrentIndex(view.model()->index(1));
        QSignalSpy chosen(&view, &ThumbnailView::seriesChosen);
        bool wasEmpty = false;
        connect(view.model(), &QAbstractItemModel::modelReset, this, [&] {
            wasEmpty =
                wasEmpty || view.model()->index(1).data(ThumbnailModel::PictureRole).value<QImage>().isNull();
        });
        m_index->addSeries(1, QStringLiteral("1.2.9"), QStringLiteral("MR"), 9);
        view.refresh();
        QVERIFY(finished.wait());
        QCOMPARE(view.model()->rowCount(), 3);
        QCOMPARE(view.list()->currentIndex().row(), 1);
        QVERIFY(!wasEmpty);
        // Another file in the place of one that is shown.
        QVERIFY(QFile::resize(imageFile(QStringLiteral("1.2.1.2")), 10));
        int loaded = 0;
        connect(view.loader(), &ThumbnailLoader::loaded, this, [&] { ++loaded; });
        view.refresh();
        QVERIFY(finished.wait());
        QCOMPARE(loaded, 2); // and the one that has no file
        QCOMPARE(view.model()->index(0).data(ThumbnailModel::LettersRole).toString(), QStringLiteral("!"));
        QVERIFY(chosen.isEmpty());
    }

    void reasonsAreTold()
    {
        const qlonglong patient = addPatient(2);
        QVERIFY(QFile::remove(imageFile(QStringLiteral("1.2.1.2"))));
        DicomFileBuilder()
            .uids(QStringLiteral("1.2"), QStringLiteral("1.2.2"), QStringLiteral("1.2.2.2"))
            .set(0x00280008, QStringLiteral("1000000"))
            .write(imageFile(QStringLiteral("1.2.2.2")));
        ThumbnailView view(m_index->path());
        QSignalSpy finished(view.loader(), &ThumbnailLoader::finished);
        view.show({RecordLevel::Patient, {patient}});
        QVERIFY(finished.wait());
        const auto text = [&](int row) { return view.model()->index(row).data(Qt::ToolTipRole).toString(); };
        QVERIFY2(text(0).contains(QLatin1String("cannot be opened")), qPrintable(text(0)));
        QVERIFY2(text(1).contains(QLatin1String("more frames")), qPrintable(text(1)));
        QVERIFY(!view.model()->index(0).data(ThumbnailModel::LettersRole).toString().isEmpty());
    }

    void longSelectionIsCut()
    {
        m_index->query(QStringLiteral("BEGIN"));
        const qlonglong study = m_index->addStudy(
            m_index->addPatient(QStringLiteral("A"), QStringLiteral("1")), QStringLiteral("1.2"));
        for (int i = 0; i < ThumbnailLoader::mostSeries + 7; ++i) {
            m_index->addSeries(study, QStringLiteral("1.2.%1").arg(i));
        }
        m_index->query(QStringLiteral("COMMIT"));
        ThumbnailView view(m_index->path());
        view.show({RecordLevel::Study, {study}});
        QTRY_COMPARE(view.model()->rowCount(), ThumbnailLoader::mostSeries);
        const auto *note = view.findChild<QLabel *>(QStringLiteral("thumbnailNote"));
        QVERIFY2(note->text().contains(QLatin1String(" 7 ")), qPrintable(note->text()));
        view.clear();
        QCOMPARE(view.model()->rowCount(), 0);
    }

private:
    /// A patient with series of three images each, numbered backwards against their keys.
    qlonglong addPatient(int series) const
    {
        m_index->query(QStringLiteral("BEGIN"));
        const qlonglong patient = m_index->addPatient(QStringLiteral("A^B"), QStringLiteral("1"));
        const qlonglong study = m_index->addStudy(patient, QStringLiteral("1.2"));
        for (int number = 1; number <= series; ++number) {
            const QString uid = QStringLiteral("1.2.%1").arg(number);
            const qlonglong key = m_index->addSeries(study, uid, QStringLiteral("CT"), number);
            for (int image = 3; image >= 1; --image) {
                const QString imageUid = uid + QStringLiteral(".%1").arg(image);
                DicomFileBuilder().uids(QStringLiteral("1.2"), uid, imageUid).write(imageFile(imageUid));
                m_index->addImage(key, imageUid, image, imageFile(imageUid));
            }
        }
        m_index->query(QStringLiteral("COMMIT"));
        return patient;
    }

    QString imageFile(const QString &uid) const { return m_index->folder() + QLatin1Char('/') + uid; }

    std::unique_ptr<TemporaryIndex> m_index;
};

PM_TEST_MAIN(ThumbnailsTest)
#include "tst_thumbnails.moc"
