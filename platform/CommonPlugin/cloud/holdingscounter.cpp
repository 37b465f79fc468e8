#include "holdingscounter.h"

#include "createconnection.h"
#include "localholdings.h"

HoldingsCounter::HoldingsCounter(QObject *parent)
    : QObject(parent)
{
    m_pool.setMaxThreadCount(1);
}

void HoldingsCounter::count(const QStringList &studyUids, const QStringList &seriesUids)
{
    m_next = Question{studyUids, seriesUids};
    countNext();
}

void HoldingsCounter::countNext()
{
    if (m_isCounting || !m_next) {
        return;
    }
    m_isCounting = true;
    m_pool.start([this, question = *std::exchange(m_next, std::nullopt), path = databasePath()] {
        const QHash<QString, int> studies = localHoldings(path, RecordLevel::Study, question.studyUids);
        const QHash<QString, int> series = localHoldings(path, RecordLevel::Series, question.seriesUids);
        QMetaObject::invokeMethod(
            this,
            [this, studies, series] {
                m_isCounting = false;
                emit counted(studies, series);
                countNext();
            },
            Qt::QueuedConnection);
    });
}
