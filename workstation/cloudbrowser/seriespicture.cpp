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

constexpr qint64 largestArea = qint64(16) << 20; ///< of a picture that is worth decoding
constexpr qint64 mostOfPicture = qint64(8) << 20; ///< bytes
constexpr qint64 mostOfList = qint64(16) << 20; ///< bytes, where a service gives all instances of a series
constexpr char askedFormat[] = "jpeg";
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
    await(m_client.get(m_series + QStringLiteral("/instances"), one), mostOfList,
        [this](bool isGood, const QByteArray &answer) {
            const QString uid = isGood ? DicomJson::read(answer).value(0).text(sopInstanceTag) : QString();
            uid.isEmpty() ? deleteLater() : askForPicture(uid);
        });
}

/// An answer that is larger than it may be is cut off while it comes in.
void SeriesPicture::await(
    QNetworkReply *asked, qint64 most, const std::function<void(bool isGood, const QByteArray &answer)> &then)
{
    m_reply = asked;
    connect(m_reply, &QNetworkReply::readyRead, this, [this, most] {
        if (m_reply && m_reply->bytesAvailable() > most) {
            m_reply->abort();
        }
    });
    connect(m_reply, &QNetworkReply::finished, this, [this, most, then] {
        const QScopedPointer<QNetworkReply, QScopedPointerDeleteLater> reply(m_reply);
        m_reply.clear();
        const bool isGood = WebClient::failureOf(*reply).isNone() && reply->bytesAvailable() <= most;
        then(isGood, isGood ? reply->readAll() : QByteArray());
    });
}

void SeriesPicture::askForPicture(const QString &instanceUid)
{
    m_instance = m_series + QStringLiteral("/instances/") + instanceUid;
    QUrlQuery small;
    small.addQueryItem(QStringLiteral("viewport"), QStringLiteral("%1,%1").arg(2 * m_side));
    await(m_client.get(m_instance + QStringLiteral("/rendered"), small, "image/jpeg"), mostOfPicture,
        [this](bool isGood, const QByteArray &answer) {
            if (!isGood) {
                fetchObject();
                return;
            }
            make([answer, side = m_side] { return readPicture(answer, side); },
                [this](const QImage &picture) { picture.isNull() ? fetchObject() : give(picture); });
        });
}

QImage SeriesPicture::readPicture(const QByteArray &bytes, int side)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, askedFormat);
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    if (size.isEmpty() || qint64(size.width()) * size.height() > largestArea) {
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
    connect(retrieve, &ObjectsRetrieve::received, this, [this, retrieve](const QString &path) {
        retrieve->abort(); // whatever else the service would send
        make([path, folder = m_folder, side = m_side] { return pictureOf(path, side); },
            [this](const QImage &picture) { give(picture); });
    });
    connect(retrieve, &ObjectsRetrieve::finished, this, [this, retrieve] {
        if (retrieve->objects() == 0) {
            deleteLater();
        }
    });
}

/// Makes a picture on a thread of the pool.
void SeriesPicture::make(const std::function<QImage()> &work, const std::function<void(const QImage &)> &then)
{
    QPointer<SeriesPicture> self(this);
    QThreadPool::globalInstance()->start([self, work, then] {
        const QImage picture = work();
        QMetaObject::invokeMethod(
            qApp,
            [self, then, picture] {
                if (self) {
                    then(picture);
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
