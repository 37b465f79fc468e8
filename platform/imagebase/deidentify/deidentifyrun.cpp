#include "deidentifyrun.h"

#include "exportstage.h"
#include "filecopy.h"
#include "safename.h"
#include "sharednumbers.h"
#include "uniquenames.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <numeric>
#include <thread>
#include <vector>

namespace {

constexpr int longestName = 64;
constexpr int mostThreads = 8;

/// What ends a run: further files would fare the same.
bool isFinal(DeidentifyProblem problem)
{
    return problem == DeidentifyProblem::DiskFull || problem == DeidentifyProblem::NoDictionary;
}

} // namespace

struct DeidentifyRun::Private
{
    explicit Private(DeidentifyRequest asked)
        : request(std::move(asked))
        , results(std::size_t(request.files.size()))
    { }

    /// A file of the stage.
    QString passing(int number) const { return stage->path(QStringLiteral("%1").arg(number)); }
    void makeAll();
    void separate();
    void runOnAllCores(const Deidentifier &deidentifier, const QVector<int> &numbers);
    void make(const Deidentifier &deidentifier, int number);
    DeidentifyReport report() const;
    bool isWanted(const DeidentifiedFile &file, bool withBurnedIn) const;
    QString nameOf(const DeidentifiedFile &file);
    static void add(const DeidentifiedFile &result, DeidentifyReport &report);
    bool arrange(bool withBurnedIn, DeidentifyReport &report);
    void place(DeidentifyReport &report);

    const DeidentifyRequest request;
    std::unique_ptr<ExportStage> stage;
    std::vector<DeidentifiedFile> results; ///< one for each file; each is written by one thread
    UniqueNames names;
    QSet<QByteArray> shared; ///< IDs of several patients
    std::atomic<int> done{0};
    std::atomic<bool> cancelled{false};
    std::atomic<DeidentifyProblem> ended{DeidentifyProblem::None};
    int madeError = 0;
};

DeidentifyRun::DeidentifyRun(DeidentifyRequest request)
    : d(std::make_unique<Private>(std::move(request)))
{ }

DeidentifyRun::~DeidentifyRun() = default;

const DeidentifyRequest &DeidentifyRun::request() const
{
    return d->request;
}

void DeidentifyRun::cancel()
{
    d->cancelled = true;
}

int DeidentifyRun::done() const
{
    return d->done;
}

DeidentifyReport DeidentifyRun::run()
{
    d->stage = std::make_unique<ExportStage>(d->request.folder);
    d->madeError = d->stage->error();
    if (d->madeError == 0) {
        d->makeAll();
        d->separate();
    }
    return d->report();
}

void DeidentifyRun::Private::makeAll()
{
    QVector<int> numbers(request.files.size());
    std::iota(numbers.begin(), numbers.end(), 0);
    runOnAllCores(Deidentifier(request.options, Pseudonyms(request.siteKey)), numbers);
}

/// Makes those once more whose patients would have become one.
void DeidentifyRun::Private::separate()
{
    shared = sharedNumbers(results);
    QVector<int> numbers;
    for (int number = 0; number < request.files.size(); ++number) {
        if (shared.contains(results[std::size_t(number)].number)) {
            numbers.append(number);
            QFile::remove(passing(number));
        }
    }
    runOnAllCores(Deidentifier(request.options, Pseudonyms(request.siteKey), shared), numbers);
}

void DeidentifyRun::Private::runOnAllCores(const Deidentifier &deidentifier, const QVector<int> &numbers)
{
    std::atomic<int> next{0};
    const auto work = [&] {
        for (int i = next++; i < numbers.size() && !cancelled && !isFinal(ended); i = next++) {
            make(deidentifier, numbers.at(i));
        }
    };
    const int count =
        std::min({std::max(1, int(std::thread::hardware_concurrency())), mostThreads, numbers.size()});
    std::vector<std::thread> workers;
    for (int i = 0; i < count; ++i) {
        workers.emplace_back(work);
    }
    for (std::thread &worker : workers) {
        worker.join();
    }
}

void DeidentifyRun::Private::make(const Deidentifier &deidentifier, int number)
{
    DeidentifiedFile &result = results[std::size_t(number)];
    const bool isFirst = result.sopInstance.isEmpty();
    result = deidentifier.run(
        QFile::encodeName(request.files.at(number)), QFile::encodeName(passing(number)), cancelled);
    if (isFinal(result.problem)) {
        ended = result.problem;
    }
    done += isFirst ? 1 : 0;
}

DeidentifyReport DeidentifyRun::Private::report() const
{
    DeidentifyReport report;
    report.isCancelled = cancelled;
    report.ended = madeError == 0 ? ended.load() : DeidentifyProblem::CannotWrite;
    report.endDetail = madeError == 0 ? QString() : qt_error_string(madeError);
    report.sharedNumbers = shared.size();
    for (int number = 0; number < request.files.size(); ++number) {
        const DeidentifiedFile &result = results[std::size_t(number)];
        if (result.problem == DeidentifyProblem::None && result.sopInstance.isEmpty()) {
            continue; // the run ended before it
        }
        if (result.problem != DeidentifyProblem::None) {
            report.failures.append({request.files.at(number), result.problem, result.detail});
            continue;
        }
        if (result.burnedIn != BurnedIn::No) {
            report.doubtful.append({request.files.at(number), result.burnedIn});
        }
    }
    return report;
}

bool DeidentifyRun::Private::isWanted(const DeidentifiedFile &file, bool withBurnedIn) const
{
    return file.problem == DeidentifyProblem::None && (withBurnedIn || file.burnedIn == BurnedIn::No);
}

/// Patient, study, and the object's UID.
QString DeidentifyRun::Private::nameOf(const DeidentifiedFile &file)
{
    const QString folder = safeName(file.patientId, QStringLiteral("patient"), longestName) + QLatin1Char('/')
        + safeName(QString::fromLatin1(file.studyUid), QStringLiteral("study"), longestName);
    const QString name =
        safeName(QString::fromLatin1(file.sopInstance), QStringLiteral("object"), longestName);
    return folder + QLatin1Char('/') + names.unique(folder, name + QStringLiteral(".dcm"));
}

/// Counts one that is among the results.
void DeidentifyRun::Private::add(const DeidentifiedFile &result, DeidentifyReport &report)
{
    report.documents += result.hadDocument ? 1 : 0;
    if (!report.names.contains(result.patientName)) {
        report.names.append(result.patientName);
        report.modalities.append(result.modality);
    }
}

/// Gives the results their names within the stage.
bool DeidentifyRun::Private::arrange(bool withBurnedIn, DeidentifyReport &report)
{
    for (int number = 0; number < request.files.size() && !cancelled; ++number) {
        const DeidentifiedFile &result = results[std::size_t(number)];
        if (!QFileInfo::exists(passing(number))) {
            continue;
        }
        if (!isWanted(result, withBurnedIn)) {
            ++report.leftOut;
            QFile::remove(passing(number));
            continue;
        }
        const QString name = nameOf(result);
        const QString place = request.name + QLatin1Char('/') + name;
        int error = stage->makeFolderOf(place);
        if (error == 0
            && std::rename(QFile::encodeName(passing(number)).constData(),
                   QFile::encodeName(stage->path(place)).constData())
                != 0) {
            error = errno;
        }
        if (error != 0) {
            report.ended = DeidentifyProblem::CannotWrite;
            report.endDetail = qt_error_string(error);
            return false;
        }
        report.files.append(name);
        add(result, report);
    }
    return true;
}

/// The folder leaves the stage under the first name that is free.
void DeidentifyRun::Private::place(DeidentifyReport &report)
{
    constexpr int mostNames = 1000;
    int error = EEXIST;
    QString name = request.name;
    for (int number = 2; error == EEXIST && number < mostNames; ++number) {
        error = stage->moveOut(name, false);
        if (error == EEXIST) {
            const QString other = QStringLiteral("%1 (%2)").arg(request.name).arg(number);
            std::rename(QFile::encodeName(stage->path(name)).constData(),
                QFile::encodeName(stage->path(other)).constData());
            name = other;
        }
    }
    if (error != 0) {
        report.files.clear();
        report.ended = DeidentifyProblem::CannotWrite;
        report.endDetail = qt_error_string(error);
        return;
    }
    report.folder = QDir(request.folder).filePath(name);
    for (QString &file : report.files) {
        file.prepend(report.folder + QLatin1Char('/'));
    }
}

DeidentifyReport DeidentifyRun::deliver(bool withBurnedIn)
{
    DeidentifyReport report = d->report();
    if (!withBurnedIn) {
        report.doubtful.clear();
    }
    const bool isWhole = !report.isCancelled && report.ended == DeidentifyProblem::None;
    if (isWhole && d->arrange(withBurnedIn, report)) {
        d->stage->sync();
        report.isCancelled = d->cancelled;
        if (report.isCancelled) {
            report.files.clear();
        } else if (!report.files.isEmpty()) {
            d->place(report);
        }
    }
    d->stage.reset();
    return report;
}
