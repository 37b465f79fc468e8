#include "steadywriter.h"

#include "indexconnection.h"

#include <QElapsedTimer>
#include <QSqlQuery>
#include <QVariant>

#include <algorithm>
#include <chrono>

namespace {

/// Round eight series, as those of a few scanners come.
const QString insertImage =
    QStringLiteral("INSERT INTO imageformat (series_fk, SOPInstanceUID, InstanceNumber, FilePath) "
                   "VALUES (1 + ? % 8, printf('2.25.77.%d', ?), ?, '/written/' || ?)");
constexpr int boundValues = 4;

} // namespace

SteadyWriter::SteadyWriter(const QString &databasePath, int perSecond)
    : m_databasePath(databasePath)
    , m_perSecond(perSecond)
    , m_thread([this] { write(); })
{ }

SteadyWriter::~SteadyWriter()
{
    stop();
}

void SteadyWriter::stop()
{
    m_stopped = true;
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

void SteadyWriter::write()
{
    const IndexConnection connection(m_databasePath);
    QSqlQuery insert(connection.database());
    insert.prepare(insertImage);
    const auto begin = std::chrono::steady_clock::now();
    QElapsedTimer whole;
    whole.start();
    for (int i = 0; !m_stopped; ++i) {
        std::this_thread::sleep_until(begin + std::chrono::microseconds(qint64(i) * 1'000'000 / m_perSecond));
        QElapsedTimer time;
        time.start();
        for (int place = 0; place < boundValues; ++place) {
            insert.bindValue(place, i);
        }
        (insert.exec() ? m_written : m_refused) += 1;
        m_longestMs = std::max(m_longestMs, double(time.nsecsElapsed()) / 1e6);
    }
    m_seconds = double(whole.elapsed()) / 1000;
}
