#include "testmain.h"
#include "uploadjudge.h"

#include <QtTest>

using UploadJudge::Deed;
using Fault = UploadFault::Kind;

Q_DECLARE_METATYPE(UploadJudge::Deed)
Q_DECLARE_METATYPE(UploadFault::Kind)

/// What an answer means for a file: until when it is asked for again, and when it has failed.
class UploadJudgeTest : public QObject
{
    Q_OBJECT

private slots:
    void whoIsAskedForAgain_data()
    {
        QTest::addColumn<WebFailure>("failure");
        QTest::addColumn<int>("request"); ///< with the file alone, from 1; 0 with others
        QTest::addColumn<bool>("isHealthy");
        QTest::addColumn<Deed>("deed");
        QTest::addColumn<Fault>("fault");
        const WebFailure broken{WebProblem::ServerError, {}, 500};
        const WebFailure gateway{WebProblem::ServerError, {}, 503};
        const WebFailure cut{WebProblem::LineCut, {}, 0};
        const WebFailure conflict{WebProblem::Conflict, {}, 409};
        const auto row = [](const char *name, const WebFailure &failure, int request, bool isHealthy,
                             Deed deed, Fault fault = Fault::None) {
            QTest::newRow(name) << failure << request << isHealthy << deed << fault;
        };
        row("500, among others", broken, 0, true, Deed::AgainAlone);
        row("500, while others are stored", broken, 3, true, Deed::AgainAlone);
        row("500, while others are stored, once more", broken, 4, true, Deed::Record, Fault::Request);
        row("500 for all", broken, 11, false, Deed::AgainAlone);
        row("500 for all, for ever", broken, 12, false, Deed::Record, Fault::Request);
        row("no answer for all, for ever", cut, 1000, false, Deed::AgainAlone);
        row("no answer, while others are stored", cut, 4, true, Deed::Record, Fault::Request);
        row("the service is away behind its gateway", gateway, 1000, true, Deed::Again);
        row("nobody is signed in", {WebProblem::Unauthorized, {}, 401}, 1000, true, Deed::Again);
        row("a refusal, among others", conflict, 0, true, Deed::AgainAlone);
        row("a refusal", conflict, 1, false, Deed::Record, Fault::Request);
        row("not a word", {}, 1, true, Deed::LookAgain);
        row("not a word, time and again", {}, 4, false, Deed::Record, Fault::Unanswered);
    }

    void whoIsAskedForAgain()
    {
        QFETCH(const WebFailure, failure);
        QFETCH(const int, request);
        QFETCH(const bool, isHealthy);
        QueuedFile file;
        file.tries = qMax(0, request - 1);
        const UploadJudge::Judgement judgement =
            UploadJudge::judge(file, {}, failure, request > 0, isHealthy);
        QTEST(judgement.deed, "deed");
        QTEST(judgement.fault, "fault");
        // Who fails is told why.
        QCOMPARE(judgement.reason, judgement.deed == Deed::Record ? failure.status : 0);
    }
};

PM_TEST_MAIN(UploadJudgeTest)
#include "tst_uploadjudge.moc"
