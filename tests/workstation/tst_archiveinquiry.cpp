#include "archiveinquiry.h"
#include "dicomservers.h"
#include "strangearchive.h"
#include "testmain.h"

#include <QtTest>

#include <atomic>

namespace {

constexpr quint16 outOfResources = 0xa700;

ArchiveAnswer ask(quint16 port)
{
    QueryScu scu({QStringLiteral("STRANGE"), DicomServer::host(), port});
    ArchiveQuestion question;
    question.patientId = QStringLiteral("7");
    const auto ignore = [](const QVector<QueryRecord> &) {};
    return ArchiveInquiry(scu, question, {ignore, ignore}).run();
}

} // namespace

/// What a search makes of archives that do not answer all of its questions.
class ArchiveInquiryTest : public QObject
{
    Q_OBJECT

private slots:
    void aRefusalIsNoEmptyAnswer()
    {
        const quint16 port = freePort();
        const StrangeArchive archive(port,
            [](const StrangeArchive::Query &query) { query.answer(outOfResources, nullptr); },
            {StrangeArchive::patientRoot});
        QCOMPARE(ask(port).status, outOfResources);
    }

    /// The line is made anew, for the question that counts.
    void whereThePatientsFailStudiesAreAskedFor()
    {
        const quint16 port = freePort();
        std::atomic<int> asked{0};
        const auto script = [&asked](const StrangeArchive::Query &query) {
            if (++asked == 1) {
                query.leave();
            } else {
                query.answer(0, nullptr);
            }
        };
        const StrangeArchive archive(
            port, script, {StrangeArchive::studyRoot, StrangeArchive::patientRoot}, 2);
        const ArchiveAnswer answer = ask(port);
        QVERIFY2(answer.isGood(), qPrintable(answer.failure.detail));
        QCOMPARE(asked.load(), 2);
    }
};

PM_TEST_MAIN(ArchiveInquiryTest)
#include "tst_archiveinquiry.moc"
