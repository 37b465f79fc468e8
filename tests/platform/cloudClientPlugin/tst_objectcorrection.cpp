#include "correctionthread.h"
#include "dicomfilebuilder.h"
#include "dicomreader.h"
#include "dicomservers.h"
#include "objectcorrection.h"
#include "testmain.h"

#include <QSemaphore>
#include <QtTest>

namespace {

constexpr quint32 institutionTag = 0x00080080;

DicomHeader headerOf(const QString &path)
{
    return DicomReader().read(QFile::encodeName(path)).header;
}

} // namespace

class ObjectCorrectionTest : public QObject
{
    Q_OBJECT

private slots:
    /// Same UIDs, other values, other texts unharmed whatever they were written in; the old values are kept.
    void objectsAreWrittenAnew()
    {
        const QTemporaryDir folder;
        const QString source = folder.filePath(QStringLiteral("source.dcm"));
        const QString target = folder.filePath(QStringLiteral("target.dcm"));
        DicomFileBuilder()
            .patient(QStringLiteral("P1"), QStringLiteral("Old^Name"))
            .set(institutionTag, QStringLiteral("Klinik Köln"))
            .write(source);
        QCOMPARE(runTool(QStringLiteral("dcmconv"),
                     {QStringLiteral("+C"), QStringLiteral("ISO_IR 100"), source, source})
                     .exitCode,
            0);
        const QByteArray sets[]{"ISO_IR 100", "ISO_IR 192"};
        const QString names[]{QStringLiteral("Jürgens^Jörg"), QStringLiteral("山田^太郎")};
        for (int at = 0; at < 2; ++at) {
            ObjectCorrection done;
            {
                CorrectionThread thread; // which has the stack for it
                thread.begin([&](const std::atomic<bool> & /*stop*/) {
                    done = correctObject(source, target, {{PatientField::Name, names[at]}});
                });
            }
            QCOMPARE(done.problem, ObjectCorrection::Problem::None);
            QCOMPARE(headerOf(target)[Attribute::PatientName], names[at]);
            QCOMPARE(headerOf(target)[Attribute::InstitutionName], QStringLiteral("Klinik Köln"));
            QCOMPARE(
                headerOf(target)[Attribute::SOPInstanceUID], headerOf(source)[Attribute::SOPInstanceUID]);
            const QByteArray dump = runTool(QStringLiteral("dcmdump"), {target}).output;
            QVERIFY2(dump.contains("[" + sets[at] + "]"), dump.constData());
            QVERIFY(dump.contains("[Old^Name]") && dump.contains("[CORRECT]"));
        }
    }

    /// Nobody waits for it; a stop is for what was begun last, whether or not it runs yet.
    void theNextBeginsWhenTheOneBeforeHasEnded()
    {
        QSemaphore held;
        std::atomic<int> ended{0};
        CorrectionThread thread;
        thread.begin([&](const std::atomic<bool> &stop) {
            held.acquire();
            ended += stop ? 1 : 0;
        });
        thread.begin([&](const std::atomic<bool> &stop) { ended += stop && ended == 1 ? 1 : 0; });
        thread.stop();
        held.release();
        QTRY_COMPARE(int(ended), 2);
    }
};

PM_TEST_MAIN(ObjectCorrectionTest)
#include "tst_objectcorrection.moc"
