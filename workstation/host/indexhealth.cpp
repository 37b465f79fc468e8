#include "indexhealth.h"

#include "indexcheck.h"

IndexHealth::IndexHealth(QObject *parent)
    : QObject(parent)
{ }

IndexHealth::~IndexHealth()
{
    m_stop = true;
    if (m_reader.joinable()) {
        m_reader.join();
    }
}

void IndexHealth::check(const QString &databasePath)
{
    m_reader = std::thread([this, databasePath] {
        const QString detail = firstDamage(databasePath, m_stop);
        if (!detail.isEmpty() && !m_stop) {
            emit damaged(detail); // queued to receivers on the GUI thread
        }
    });
}
