// The process that the fault runs kill while it corrects:
//   correctionprocess INDEX ADDRESS [STUDY NAME]
// Finishes what earlier ones have begun; then, where a study is named, gives its patient another name. Says
// of each correction which values there are in the end: new, old, or neither.
#include "objectcorrection.h"
#include "studycorrection.h"

#include <QCoreApplication>
#include <QThread>

#include <cstdio>
#include <memory>

namespace {

const char *wordOf(CorrectionReport::End end)
{
    return end == CorrectionReport::End::Done  ? "new"
        : end == CorrectionReport::End::Undone ? "old"
                                               : "neither";
}

void correct(const QStringList &arguments)
{
    WebService service;
    service.address = QUrl(arguments[2]);
    const std::atomic<bool> never{false};
    StudyCorrection correction(service, never, [](const CorrectionProgress &) {});
    QVector<CorrectionReport> reports = correction.finishBegun(arguments[1]);
    if (arguments.size() > 4) {
        CorrectionRequest request;
        request.databasePath = arguments[1];
        request.index.studyUid = arguments[3];
        request.index.changes.insert(PatientField::Name, arguments[4]);
        reports.append(correction.run(request));
    }
    for (const CorrectionReport &report : qAsConst(reports)) {
        std::puts(wordOf(report.end));
    }
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3 && arguments.size() != 5) {
        return 2;
    }
    const std::unique_ptr<QThread> thread(QThread::create([&arguments] { correct(arguments); }));
    thread->setStackSize(correctionStack);
    QObject::connect(thread.get(), &QThread::finished, &QCoreApplication::quit);
    thread->start();
    const int result = QCoreApplication::exec();
    thread->wait();
    return result;
}
