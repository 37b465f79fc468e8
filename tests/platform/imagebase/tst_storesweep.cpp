#include "dicomfilebuilder.h"
#include "storesweep.h"
#include "temporaryindex.h"
#include "testfiles.h"
#include "testmain.h"

#include <QtTest>

#include <atomic>
#include <memory>

Q_DECLARE_METATYPE(StoreKept)

namespace {

const std::atomic<bool> never{false};

} // namespace

/// The store of an index with six imported images, and files that no record names.
class StoreSweepTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_index = std::make_unique<TemporaryIndex>();
        DicomFileBuilder builder;
        for (int number = 1; number <= 6; ++number) {
            builder.patient(QStringLiteral("A"), QStringLiteral("A"));
            builder.uids(
                QStringLiteral("1.1"), QStringLiteral("1.1.1"), QStringLiteral("1.2.%1").arg(number));
            builder.write(source(QStringLiteral("%1.dcm").arg(number)));
        }
    }

    void cleanup() { m_index.reset(); }

    void strayFilesAreSweptAndNothingElse()
    {
        import();
        const QString stray = addStray();
        const QStringList others{store() + QStringLiteral("/.incoming/1-2-3/4"),
            m_index->folder() + QStringLiteral("/source/outside.dcm"),
            store() + QStringLiteral("/readme.txt"), store() + QStringLiteral("/mine/b/c/other.dcm")};
        for (const QString &path : others) {
            writeFile(path);
        }
        m_index->query(
            QStringLiteral("VACUUM INTO '%1.jobs'").arg(m_index->path())); // whatever is in it by now
        QVERIFY(
            QFile::link(m_index->folder() + QStringLiteral("/source"), store() + QStringLiteral("/link")));
        const QString expired = store() + QStringLiteral("/.removed/2001-02-03/x/y");
        writeFile(expired);
        const StoreSweep swept = sweep();
        QVERIFY(swept.left.isEmpty());
        QCOMPARE(swept.removed, QStringList{stray});
        QVERIFY(!QFile::exists(stray) && !QFileInfo::exists(QFileInfo(stray).path()));
        QVERIFY(QFile::exists(swept.removedTo + stray.mid(store().size())));
        QVERIFY(!QFile::exists(expired));
        for (const QString &path : others) {
            QVERIFY2(QFile::exists(path), qPrintable(path));
        }
        QCOMPARE(m_index->count("imageformat"), 6);
        for (qlonglong image = 1; image <= 6; ++image) {
            QVERIFY(QFile::exists(pathOf(image)));
        }
    }

    void aStoreInDoubtIsKept_data()
    {
        QTest::addColumn<QString>("change"); ///< of the index, with %1 for its folder
        QTest::addColumn<StoreKept>("kept");
        QTest::newRow("another index beside it")
            << QStringLiteral("VACUUM INTO '%1/index.db2'") << StoreKept::Shared;
        QTest::newRow("a new index") << QStringLiteral("DELETE FROM patient") << StoreKept::NoRecords;
        QTest::newRow("another index's mark")
            << QStringLiteral("UPDATE store SET Identity = 'x'") << StoreKept::OtherIndex;
        QTest::newRow("a backup in its place")
            << QStringLiteral("UPDATE store SET Changes = 0") << StoreKept::OlderIndex;
        QTest::newRow("a renamed folder")
            << QStringLiteral("UPDATE imageformat SET FilePath = '/before' || FilePath WHERE pk = 2")
            << StoreKept::Elsewhere;
    }

    void aStoreInDoubtIsKept()
    {
        QFETCH(QString, change);
        import();
        const QString stray = addStray();
        m_index->query(QString(change).replace(QLatin1String("%1"), m_index->folder()));
        const StoreSweep swept = sweep();
        QTEST(swept.kept, "kept");
        QVERIFY(swept.removed.isEmpty() && swept.left.contains(stray) && QFile::exists(stray));
    }

    /// An older copy that has gone on with the store is no better; records for all files make it good.
    void anOlderIndexKeepsTheStore()
    {
        import();
        m_index->query(QStringLiteral("DELETE FROM imageformat WHERE pk = 6"));
        m_index->query(QStringLiteral("UPDATE store SET Changes = 0"));
        DicomFileBuilder()
            .patient(QStringLiteral("C"), QStringLiteral("C"))
            .uids(QStringLiteral("1.7"), QStringLiteral("1.7.1"), QStringLiteral("1.2.7"))
            .write(source(QStringLiteral("7.dcm")));
        import(QStringLiteral("7.dcm"), 1);
        StoreSweep swept = sweep();
        QCOMPARE(swept.kept, StoreKept::OlderIndex);
        QCOMPARE(swept.left.size(), 1);
        import(QStringLiteral("6.dcm"), 1);
        QVERIFY(sweep().left.isEmpty());
        const QString stray = addStray();
        QCOMPARE(sweep().removed, QStringList{stray});
    }

private:
    void import(const QString &name = QString(), int files = 6) const
    {
        QCOMPARE(m_index->import({source(name)}, ImportMode::Copy).of(FileVerdict::New), files);
    }

    StoreSweep sweep() const
    {
        return sweepStore(m_index->path(), {m_index->path() + QStringLiteral(".jobs")}, never);
    }
    QString source(const QString &name) const
    {
        return m_index->folder() + QStringLiteral("/source/") + name;
    }
    QString store() const { return m_index->folder() + QStringLiteral("/store"); }
    /// A file that an import might have put there and no record names.
    QString addStray() const
    {
        QString path = store() + QStringLiteral("/A-0123456789/1.1/1.1.1/1.2.99-2.dcm");
        writeFile(path);
        return path;
    }
    QString pathOf(qlonglong image) const
    {
        return m_index->query(QStringLiteral("SELECT FilePath FROM imageformat WHERE pk = ?"), {image})
            .toString();
    }

    std::unique_ptr<TemporaryIndex> m_index;
};

PM_TEST_MAIN(StoreSweepTest)
#include "tst_storesweep.moc"
