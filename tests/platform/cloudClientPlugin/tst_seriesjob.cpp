#include "seriesjob.h"
#include "testmain.h"

#include <QtTest>

/// How often a series is asked for again, whose line breaks each time.
class SeriesJobTest : public QObject
{
    Q_OBJECT

private slots:
    void itEndsWhereNothingOfUseComes_data()
    {
        QTest::addColumn<int>("received"); ///< objects in each round
        QTest::addColumn<bool>("isTaken");
        QTest::addColumn<int>("gained"); ///< objects that the index has more of, after each
        QTest::addColumn<bool>("isEnded");
        QTest::newRow("nobody is there") << 0 << false << 0 << false;
        QTest::newRow("one by one") << 1 << true << 1 << false;
        QTest::newRow("objects that the index refuses") << 3 << false << 0 << true;
        QTest::newRow("the same object each time") << 1 << true << 0 << true;
    }

    void itEndsWhereNothingOfUseComes()
    {
        QFETCH(const int, received);
        QFETCH(const bool, isTaken);
        QFETCH(const int, gained);
        QFETCH(const bool, isEnded);
        constexpr int rounds = 50;
        SeriesJob series;
        for (int round = 0; round < rounds && series.begin(round * gained); ++round) {
            for (int object = 0; object < received; ++object) {
                series.receive();
                series.land(isTaken);
            }
            series.fail({WebProblem::LineCut, {}, 0}, 0);
            QVERIFY(!series.isEnded());
        }
        QCOMPARE(series.isEnded(), isEnded);
        series.tryAgain();
        QVERIFY(series.begin(0));
    }
};

PM_TEST_MAIN(SeriesJobTest)
#include "tst_seriesjob.moc"
