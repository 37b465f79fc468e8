#include "createconnection.h"
#include "indexbanner.h"
#include "indexhealth.h"
#include "temporaryindex.h"
#include "testmain.h"
#include "workstationwindow.h"

#include <QFile>
#include <QSqlQuery>
#include <QtTest>

/// Damage that opening a file does not meet: in a page of records far inside.
class IndexHealthTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { allowWarningsOfNamedSlots(); }

    void tellsDamageInABanner()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("index.db"));
        writeIndex(path);
        overwriteLastPages(path);
        setDatabasePath(path);
        {
            WorkstationWindow window;
            window.show();
            QVERIFY(window.hasIndex());
            const auto *banner = window.findChild<IndexBanner *>();
            QTRY_VERIFY(banner->isVisible());
            QVERIFY(banner->text().contains(path));
        }
        closeIndex();
    }

    void keepsQuietAboutASoundIndexAndEndsAtOnce()
    {
        const TemporaryIndex index;
        auto health = std::make_unique<IndexHealth>();
        QSignalSpy damaged(health.get(), &IndexHealth::damaged);
        health->check(index.path());
        health.reset();
        QCoreApplication::processEvents();
        QCOMPARE(damaged.count(), 0);
    }

private:
    static void closeIndex()
    {
        QSqlDatabase::database().close();
        QSqlDatabase::removeDatabase(QLatin1String(QSqlDatabase::defaultConnection));
        setDatabasePath(QString());
    }

    static void writeIndex(const QString &path)
    {
        setDatabasePath(path);
        QVERIFY(createConnection());
        QVERIFY(QSqlQuery().exec(
            QStringLiteral("WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n LIMIT 5000) "
                           "INSERT INTO patient (PatientID, PatientName) SELECT i, 'Name ' || i FROM n")));
        closeIndex();
    }

    static void overwriteLastPages(const QString &path)
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        constexpr qint64 pages = 20 * 4096;
        QVERIFY(file.size() > 2 * pages && file.seek(file.size() - pages));
        file.write(QByteArray(pages, '\xa5'));
    }
};

PM_TEST_MAIN(IndexHealthTest)
#include "tst_indexhealth.moc"
