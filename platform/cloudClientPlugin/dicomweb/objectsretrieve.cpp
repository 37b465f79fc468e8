#include "objectsretrieve.h"

#include "diskroom.h"
#include "httpline.h"
#include "webclient.h"

#include <QDir>
#include <QTimer>
#include <QUuid>

namespace {

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
    m_line = client.download(resource, wanted,
        [this](const QByteArray &type, const char *data, qint64 length) { return take(type, data, length); });
    connect(m_line, &HttpLine::finished, this, &ObjectsRetrieve::end);
}

ObjectsRetrieve::~ObjectsRetrieve()
{
    if (m_line) {
        m_line->disconnect(this);
        m_line->abort();
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
    if (m_line) {
        m_line->abort();
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
    if (m_sinceAsked >= askForRoomAfter) {
        m_sinceAsked = 0;
        if (!hasDiskRoom(m_folder)) {
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

bool ObjectsRetrieve::take(const QByteArray &type, const char *data, qint64 length)
{
    if (!m_reader) {
        m_reader = std::make_unique<MultipartReader>(type,
            MultipartReader::Sink{[this](const QByteArray &part) { return m_line && beginFile(part); },
                [this](const char *bytes, qint64 count) { return m_line && writeFile(bytes, count); },
                [this] { return m_line && endFile(); }});
    }
    m_bytes += length;
    emit progress(m_bytes);
    return m_reader->feed(QByteArray::fromRawData(data, static_cast<int>(length))) && m_line;
}

void ObjectsRetrieve::end(const HttpAnswer &answer)
{
    m_line->disconnect(this);
    m_line.clear();
    const bool isWhole = m_reader && m_reader->state() == MultipartReader::State::Complete;
    WebFailure failure = m_failure;
    if (failure.isNone() && !isWhole) {
        failure = answer.failure;
    }
    if (failure.isNone() && !isWhole) {
        failure = {m_reader ? WebProblem::LineCut : WebProblem::BadAnswer, {}, 0};
    }
    removeHalf();
    emit finished(failure);
}
