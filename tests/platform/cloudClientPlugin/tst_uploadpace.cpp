#include "testmain.h"
#include "uploadpace.h"
#include "uploadtrouble.h"

#include <QtTest>

#include <cmath>

/// How much is sent at once, and how long is waited for a service that is away.
class UploadPaceTest : public QObject
{
    Q_OBJECT

private slots:
    /// The pace finds what a service takes best, whatever that is, and follows when it changes.
    void paceClimbsToTheBest_data()
    {
        QTest::addColumn<int>("requests");
        QTest::addColumn<int>("kib");
        QTest::addColumn<int>("size");
        QTest::newRow("one object at a time, few requests") << 2 << 9 << 9000;
        QTest::newRow("large requests, many at once") << 8 << 879 << 9000;
        QTest::newRow("large requests, one at once") << 1 << 879 << 9000;
        QTest::newRow("large objects, some in a request") << 8 << 6211 << 530000;
    }

    void paceClimbsToTheBest()
    {
        QFETCH(int, requests);
        QFETCH(int, kib);
        QFETCH(int, size);
        UploadPace pace;
        const auto count = [&] {
            return qBound(1, int((pace.batchBytes() + size - 1) / size), pace.batchObjects());
        };
        const auto rateNow = [&] { // objects a millisecond, falling to both sides of the best
            const double away = std::abs(std::log2(double(pace.requests()) / requests))
                + std::abs(std::log2((double(count()) * size / 1024 + 8) / (kib + 8)));
            return 2 / (1 + away);
        };
        double now = 0;
        for (int answer = 0; answer < 30000; ++answer) {
            now += count() / rateNow();
            pace.acknowledged(count() * qint64(size), count(), qint64(now));
        }
        QVERIFY2(rateNow() > 0.8 * 2,
            qPrintable(QStringLiteral("%1 requests of %2").arg(pace.requests()).arg(pace.batchBytes())));
    }

    /// Somebody who knows better ends the pause, and the next ones are short again.
    void pausesGrowUntilSomebodyHurries()
    {
        UploadTrouble trouble;
        qint64 now = 0;
        for (int failures = 0; failures < 5; ++failures) {
            trouble.note({WebProblem::NoRoute, {}, 0}, now);
            now = trouble.untilMs();
        }
        trouble.note({WebProblem::NoRoute, {}, 0}, now);
        QVERIFY(trouble.mustWait(now + 8 * UploadTrouble::firstPauseMs));
        trouble.hurry();
        QVERIFY(!trouble.mustWait(now) && !trouble.isNone());
        trouble.note({WebProblem::NoRoute, {}, 0}, now);
        QVERIFY(trouble.mustWait(now) && !trouble.mustWait(now + 2 * UploadTrouble::firstPauseMs));
    }
};

PM_TEST_MAIN(UploadPaceTest)
#include "tst_uploadpace.moc"
