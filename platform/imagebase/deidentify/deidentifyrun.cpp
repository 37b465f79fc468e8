#include "deidentifyrun.h"

#include "deliveredcopies.h"
#include "exportstage.h"
#include "sharednumbers.h"

#include <QFile>
#include <QSet>

#include <algorithm>
#include <numeric>
#include <thread>
#include <vector>

namespace {

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

    const DeidentifyRequest request;
    std::unique_ptr<ExportStage> stage;
    std::vector<DeidentifiedFile> results; ///< one for each file; each is written by one thread
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

DeidentifyReport DeidentifyRun::deliver(bool withBurnedIn)
{
    DeidentifyReport report = d->report();
    if (!withBurnedIn) {
        report.doubtful.clear();
    }
    const bool isWhole = !report.isCancelled && report.ended == DeidentifyProblem::None;
    if (isWhole) {
        DeliveredCopies copies(d->request, *d->stage, report);
        for (int number = 0; number < d->request.files.size() && !d->cancelled && copies.isGood(); ++number) {
            copies.add(d->passing(number), d->results[std::size_t(number)], withBurnedIn);
        }
        copies.deliver(d->cancelled);
    }
    d->stage.reset();
    return report;
}
