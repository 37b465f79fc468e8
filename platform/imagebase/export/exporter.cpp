#include "exporter.h"

#include "exportrun.h"

struct Exporter::Private
{
    explicit Private(ExportRequest asked)
        : request(std::move(asked))
    { }

    const ExportRequest request;
    std::atomic<bool> cancelled{false};
    ExportTally tally;
};

Exporter::Exporter(ExportRequest request)
    : d(std::make_unique<Private>(std::move(request)))
{ }

Exporter::~Exporter() = default;

const ExportRequest &Exporter::request() const
{
    return d->request;
}

ExportReport Exporter::run()
{
    return ExportRun(d->request, d->cancelled, d->tally).run();
}

void Exporter::cancel()
{
    d->cancelled = true;
}

ExportProgress Exporter::progress() const
{
    return d->tally.progress();
}
