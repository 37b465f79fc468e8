#pragma once

#include "askedseries.h"
#include "webfailure.h"
#include "webservice.h"

#include <QObject>
#include <QSet>

#include <array>
#include <memory>

class ObjectSpool;
class SeriesFetch;
class WebClient;

/**
 * The series that are fetched at once into a spool, each over connections of its own. On the thread of its
 * parent.
 */
class SeriesLines : public QObject
{
    Q_OBJECT

public:
    /// @param spool open before anything is fetched; outlives it
    explicit SeriesLines(const ObjectSpool &spool, QObject *parent);
    ~SeriesLines() override;

    /// Ends what is fetched; whatever comes next comes from there.
    void setService(const WebService &service);
    bool isFree() const;
    /// Fetches a series on a free line. @param present objects that are not wanted. @param byList whether the
    /// service's list says what is missing, instead of one answer with all
    void fetch(const AskedSeries &series, const QSet<QString> &present, bool byList);
    /// @param studyUid empty for all
    void abort(const QString &studyUid);

signals:
    /// An object is whole; its file is the receiver's.
    void received(const AskedSeries &series, const QString &path);
    /// More bytes have come.
    void progressed(const AskedSeries &series, qint64 bytes);
    /// @param listed the objects that the service lists, where it was asked
    void ended(const AskedSeries &series, const QSet<QString> &listed, const WebFailure &failure);

private:
    static constexpr int mostLines = 4;

    struct Line
    {
        std::unique_ptr<WebClient> client;
        SeriesFetch *fetch = nullptr;
        AskedSeries series;
        bool isOfOldService = false; ///< its client
    };

    void end(Line &line, const WebFailure &failure);

    const ObjectSpool &m_spool;
    WebService m_service;
    std::array<Line, mostLines> m_lines;
};
