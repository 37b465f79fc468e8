#include "objectsretrieve.h"

#include "webclient.h"

#include <QDir>
#include <QNetworkReply>
#include <QTimer>
#include <QUuid>

namespace {

constexpr qint64 heldBytes = qint64(4) << 20;
constexpr int pieceBytes = 256 << 10;
constexpr qint64 askForRoomAfter = qint64(1) << 20;
constexpr char wanted[] = "multipart/related; type=\"application/dicom\"; transfer-syntax=*";

} // namespace

ObjectsRetrieve::ObjectsRetrieve(WebClient &client, const QString &resource, QString folder, QObject *parent)
    : QObject(parent)
    , m_folder(std::move(folder))
{
    const WebFailure refusal = client.refusal();
    if (!refusal.isNone()) {
        QTimer::singleShot(0, this, [this, refusal] { emit finished(refusal); });
        return;
    }
    m_reply = client.get(resource, {}, wanted);
    m_reply->setParent(this);
    m_reply->setReadBufferSize(heldBytes); // a slow disk slows the service down
    connect(m_reply, &QNetworkReply::readyRead, this, &ObjectsRetrieve::readMore);
    connect(m_reply, &QNetworkReply::downloadProgress, this,
        [this](qint64 bytes, qint64 /*all*/) { emit progress(bytes); });
    connect(m_reply, &QNetworkReply::finished, this, &ObjectsRetrieve::end);
}

ObjectsRetrieve::~ObjectsRetrieve()
{
    if (m_reply) {
        m_reply->disconnect(this);
        delete m_reply;
    }
    removeHalf();
}

void ObjectsRetrieve::removeHalf()
{
    if (!m_file.fileName().isEmpty()) {
        m_file.remove();
    }
}

void ObjectsRetrieve::abort()
{
    if (m_reply) {
        m_reply->abort();
    }
}

bool ObjectsRetrieve::beginFile(const QByteArray &type)
{
    if (!type.isEmpty() && !type.toLower().startsWith("application/dicom")) {
        m_failure = {WebProblem::BadAnswer, QString::fromLatin1(type.left(100)), 0};
        return false;
    }
    const QString name = QUuid::createUuid().toString(QUuid::Id128) + QStringLiteral(".part");
    m_file.setFileName(QDir(m_folder).filePath(name));
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::NewOnly)) {
        m_failure = {WebProblem::DiskFull, m_file.errorString(), 0};
        return false;
    }
    return true;
}

bool ObjectsRetrieve::writeFile(const char *data, qint64 length)
{
    if (m_file.write(data, length) != length) {
        m_failure = {WebProblem::DiskFull, m_file.errorString(), 0};
        return false;
    }
    m_sinceAsked += length;
    if (m_hasRoom && m_sinceAsked >= askForRoomAfter) {
        m_sinceAsked = 0;
        if (!m_hasRoom()) {
            m_failure = {WebProblem::DiskFull, {}, 0};
            return false;
        }
    }
    return true;
}

bool ObjectsRetrieve::endFile()
{
    if (!m_file.flush()) {
        m_failure = {WebProblem::DiskFull, m_file.errorString(), 0};
        return false;
    }
    const QString part = m_file.fileName();
    const QString whole = part.left(part.lastIndexOf(QLatin1Char('.'))) + QStringLiteral(".dcm");
    m_file.close();
    if (!m_file.rename(whole)) {
        m_failure = {WebProblem::DiskFull, m_file.errorString(), 0};
        return false;
    }
    m_file.setFileName(QString()); // it is the caller's now
    ++m_objects;
    emit received(whole);
    return true;
}

void ObjectsRetrieve::readMore()
{
    constexpr int good = 200;
    if (!m_reply || !m_reply->isOpen() || !m_failure.isNone()) {
        return;
    }
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (status != good) {
        if (m_reply->isRunning()) { // its words, however many, are not wanted
            const WebFailure failure = WebClient::failureOf(*m_reply);
            refuse(failure.isNone() ? WebFailure{WebProblem::BadAnswer, {}, status} : failure);
        }
        return;
    }
    if (!m_reader) {
        const QByteArray type = m_reply->rawHeader("Content-Type");
        m_reader = std::make_unique<MultipartReader>(type,
            MultipartReader::Sink{[this](const QByteArray &part) { return beginFile(part); },
                [this](const char *data, qint64 length) { return writeFile(data, length); },
                [this] { return endFile(); }});
    }
    // Piece by piece through one buffer, which stays in the processor's cache.
    m_buffer.resize(pieceBytes);
    bool isGood = true;
    for (qint64 got = 1; isGood && got > 0 && m_reply;) {
        got = m_reply->read(m_buffer.data(), pieceBytes);
        isGood = got <= 0 || m_reader->feed(QByteArray::fromRawData(m_buffer.constData(), int(got)));
    }
    if (!isGood && m_reply) {
        refuse({WebProblem::BadAnswer, {}, good});
    }
}

/// Ends what still comes. @param failure unless another came before
void ObjectsRetrieve::refuse(const WebFailure &failure)
{
    if (m_failure.isNone()) {
        m_failure = failure;
    }
    if (m_reply->isRunning()) {
        m_reply->abort();
    }
}

void ObjectsRetrieve::end()
{
    readMore();
    if (!m_reply) {
        return;
    }
    WebFailure failure = m_failure.isNone() ? WebClient::failureOf(*m_reply) : m_failure;
    const bool isWhole = m_reader && m_reader->state() == MultipartReader::State::Complete;
    if (failure.isNone() && !isWhole) {
        failure = {m_reader ? WebProblem::LineCut : WebProblem::BadAnswer, {}, 0};
    }
    removeHalf();
    m_reply->deleteLater();
    m_reply.clear();
    emit finished(failure);
}
