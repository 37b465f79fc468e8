#include "picturequeue.h"

#include "seriespicture.h"

PictureQueue::PictureQueue(WebClient &client, QString study, int side, QObject *parent)
    : QObject(parent)
    , m_client(client)
    , m_study(std::move(study))
    , m_side(side)
{ }

void PictureQueue::add(const QString &seriesUid)
{
    m_waiting.append(seriesUid);
    pump();
}

void PictureQueue::pump()
{
    while (m_running < mostAtOnce && !m_waiting.isEmpty()) {
        const QString uid = m_waiting.takeFirst();
        const auto *picture =
            new SeriesPicture(m_client, m_study + QStringLiteral("/series/") + uid, m_side, this);
        ++m_running;
        connect(
            picture, &SeriesPicture::made, this, [this, uid](const QImage &image) { emit made(uid, image); });
        connect(picture, &QObject::destroyed, this, [this] {
            --m_running;
            pump();
        });
    }
}
