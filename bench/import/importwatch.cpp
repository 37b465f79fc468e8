#include "importwatch.h"

#include "indexconnection.h"

#include <QSqlQuery>
#include <QVariant>

#include <algorithm>
#include <chrono>

namespace {

using namespace std::chrono_literals;

constexpr auto lookEvery = 2ms;
constexpr auto askIndexEvery = 20ms;

qlonglong newestPatient(const QSqlDatabase &db)
{
    QSqlQuery query(db);
    return query.exec(QStringLiteral("SELECT max(pk) FROM patient")) && query.next()
        ? query.value(0).toLongLong()
        : 0;
}

} // namespace

ImportWatch::ImportWatch(const Importer &importer, const QString &databasePath)
    : m_importer(importer)
    , m_databasePath(databasePath)
{
    m_time.start();
    m_progress = std::thread([this] { watchProgress(); });
    m_index = std::thread([this] { watchIndex(); });
}

ImportWatch::~ImportWatch()
{
    stop();
}

void ImportWatch::stop()
{
    m_stopped = true;
    for (std::thread *thread : {&m_progress, &m_index}) {
        if (thread->joinable()) {
            thread->join();
        }
    }
}

void ImportWatch::watchProgress()
{
    double changed = now();
    ImportProgress last;
    while (!m_stopped) {
        const ImportProgress progress = m_importer.progress();
        if (progress.finished) {
            break;
        }
        if (progress.found != last.found || progress.done != last.done) {
            m_longestSilence = std::max(m_longestSilence, now() - changed);
            changed = now();
            last = progress;
        }
        std::this_thread::sleep_for(lookEvery);
    }
    m_longestSilence = std::max(m_longestSilence, now() - changed);
}

void ImportWatch::watchIndex()
{
    const IndexConnection connection(m_databasePath);
    const qlonglong before = newestPatient(connection.database());
    while (!m_stopped && m_firstPatient < 0) {
        if (newestPatient(connection.database()) > before) {
            m_firstPatient = now();
        }
        std::this_thread::sleep_for(askIndexEvery);
    }
}
