#include "serieslines.h"

#include "objectspool.h"
#include "seriesfetch.h"
#include "webclient.h"

#include <algorithm>

SeriesLines::SeriesLines(const ObjectSpool &spool, QObject *parent)
    : QObject(parent)
    , m_spool(spool)
{ }

SeriesLines::~SeriesLines()
{
    for (Line &line : m_lines) {
        if (line.fetch) {
            line.fetch->disconnect(this);
            delete line.fetch;
        }
    }
}

void SeriesLines::setService(const WebService &service)
{
    m_service = service;
    for (Line &line : m_lines) {
        line.isOfOldService = true;
    }
    abort({});
}

bool SeriesLines::isFree() const
{
    return std::any_of(m_lines.begin(), m_lines.end(), [](const Line &line) { return !line.fetch; });
}

void SeriesLines::fetch(const AskedSeries &series, const QSet<QString> &present, bool byList)
{
    const auto free =
        std::find_if(m_lines.begin(), m_lines.end(), [](const Line &line) { return !line.fetch; });
    if (free == m_lines.end()) {
        return;
    }
    Line &line = *free;
    if (!line.client || line.isOfOldService) {
        if (line.client) {
            line.client.release()->deleteLater(); // one of its replies may be calling
        }
        line.client = std::make_unique<WebClient>(m_service);
        line.isOfOldService = false;
    }
    line.series = series;
    line.fetch = new SeriesFetch(*line.client, series.studyUid, series.seriesUid, m_spool.folder(), this);
    connect(line.fetch, &SeriesFetch::received, this,
        [this, &line](const QString &path) { emit received(line.series, path); });
    connect(line.fetch, &SeriesFetch::progressed, this,
        [this, &line](qint64 bytes) { emit progressed(line.series, bytes); });
    connect(line.fetch, &SeriesFetch::finished, this,
        [this, &line](const WebFailure &failure) { end(line, failure); });
    if (byList) {
        line.fetch->fetchMissing(present);
    } else {
        line.fetch->fetchAll();
    }
}

void SeriesLines::end(Line &line, const WebFailure &failure)
{
    const QSet<QString> listed = line.fetch->listed();
    line.fetch->deleteLater();
    line.fetch = nullptr;
    const AskedSeries series = line.series; // whoever hears of it may begin another
    emit ended(series, listed, failure);
}

void SeriesLines::abort(const QString &studyUid)
{
    for (Line &line : m_lines) {
        if (line.fetch && (studyUid.isEmpty() || line.series.studyUid == studyUid)) {
            line.fetch->abort();
        }
    }
}
