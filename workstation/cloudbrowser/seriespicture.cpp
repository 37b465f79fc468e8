#include "seriespicture.h"

#include "dicomjson.h"
#include "frameimage.h"
#include "imagefile.h"
#include "objectsretrieve.h"
#include "webclient.h"

#include <QBuffer>
#include <QImageReader>
#include <QNetworkReply>
#include <QPainter>
#include <QThreadPool>
#include <QUrlQuery>

namespace {

constexpr int largestSide = 20000; ///< of a picture that is worth decoding
constexpr int mostBytes = 32 << 20;
constexpr quint32 sopInstanceTag = 0x00080018;

/// In the middle of a black square, as it may be narrow.
QImage squared(const QImage &picture, int side)
{
    QImage square(side, side, QImage::Format_RGB32);
    square.fill(Qt::black);
    if (!picture.isNull()) {
        const QImage fitting = picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        QPainter(&square).drawImage((side - fitting.width()) / 2, (side - fitting.height()) / 2, fitting);
    }
    return square;
}

} // namespace

SeriesPicture::SeriesPicture(WebClient &client, QString series, int side, QObject *parent)
    : QObject(parent)
    , m_client(client)
    , m_series(std::move(series))
    , m_side(side)
{
    askForInstance();
}

SeriesPicture::~SeriesPicture()
{
    if (m_reply) {
        m_reply->disconnect(this);
        delete m_reply;
    }
}

void SeriesPicture::askForInstance()
{
    QUrlQuery one;
    one.addQueryItem(QStringLiteral("limit"), QStringLiteral("1"));
    m_reply = m_client.get(m_series + QStringLiteral("/instances"), one);
    connect(m_reply, &QNetworkReply::finished, this, [this] {
        const QScopedPointer<QNetworkReply, QScopedPointerDeleteLater> reply(m_reply);
        m_reply.clear();
        const QString uid = DicomJson::read(reply->readAll()).value(0).text(sopInstanceTag);
        if (!WebClient::failureOf(*reply).isNone() || uid.isEmpty()) {
            deleteLater();
            return;
        }
        askForPicture(uid);
    });
}

void SeriesPicture::askForPicture(const QString &instanceUid)
{
    m_instance = m_series + QStringLiteral("/instances/") + instanceUid;
    QUrlQuery small;
    small.addQueryItem(QStringLiteral("viewport"), QStringLiteral("%1,%1").arg(2 * m_side));
    m_reply = m_client.get(m_instance + QStringLiteral("/rendered"), small, "image/jpeg");
    connect(m_reply, &QNetworkReply::finished, this, [this] {
        const QScopedPointer<QNetworkReply, QScopedPointerDeleteLater> reply(m_reply);
        m_reply.clear();
        const QImage picture = WebClient::failureOf(*reply).isNone() && reply->size() < mostBytes
            ? readPicture(reply->readAll(), m_side)
            : QImage();
        picture.isNull() ? fetchObject() : give(picture);
    });
}

QImage SeriesPicture::readPicture(const QByteArray &bytes, int side)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    const QSize size = reader.size();
    if (!size.isValid() || size.width() > largestSide || size.height() > largestSide) {
        return {};
    }
    reader.setScaledSize(size.scaled(side, side, Qt::KeepAspectRatio));
    const QImage picture = reader.read();
    return picture.isNull() ? QImage() : squared(picture, side);
}

void SeriesPicture::fetchObject()
{
    m_folder = std::make_shared<QTemporaryDir>();
    auto *retrieve = new ObjectsRetrieve(m_client, m_instance, m_folder->path(), this);
    connect(retrieve, &ObjectsRetrieve::received, this, &SeriesPicture::decode);
    connect(retrieve, &ObjectsRetrieve::finished, this, [this, retrieve] {
        if (retrieve->objects() == 0) {
            deleteLater();
        }
    });
}

void SeriesPicture::decode(const QString &path)
{
    QPointer<SeriesPicture> self(this);
    QThreadPool::globalInstance()->start([self, path, folder = m_folder, side = m_side] {
        const QImage picture = pictureOf(path, side);
        QMetaObject::invokeMethod(
            qApp,
            [self, picture] {
                if (self) {
                    self->give(picture);
                }
            },
            Qt::QueuedConnection);
    });
}

QImage SeriesPicture::pictureOf(const QString &path, int side)
{
    ImageFile file;
    PixelFrame frame;
    if (file.open(path) != PixelProblem::None || file.readFrame(0, frame) != PixelProblem::None) {
        return {};
    }
    const WindowLevel window = FrameImage::defaultWindow(frame);
    return squared(FrameImage::render(FrameImage::reduced(frame, {side, side}), window), side);
}

void SeriesPicture::give(const QImage &picture)
{
    if (!picture.isNull()) {
        emit made(picture);
    }
    deleteLater();
}
