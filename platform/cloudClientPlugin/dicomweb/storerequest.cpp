#include "storerequest.h"

#include "boundedanswer.h"
#include "dicomjson.h"
#include "multipartbody.h"
#include "webclient.h"

#include <QNetworkReply>
#include <QTimer>

namespace {

constexpr qint64 longestAnswer = qint64(16) << 20;

void read(const DicomJson &answer, quint32 sequence, quint32 reason, StoreVerdict::State state,
    StoreVerdict::State withReason, QHash<QString, StoreVerdict> &into)
{
    for (const DicomJson &item : answer.items(sequence)) {
        const int code = static_cast<int>(item.number(reason));
        into.insert(item.text(DicomTag::referencedInstance), {code > 0 ? withReason : state, qMax(0, code)});
    }
}

} // namespace

StoreRequest::StoreRequest(WebClient &client, QVector<StoredFile> files, QObject *parent)
    : QObject(parent)
    , m_files(std::move(files))
    , m_body(std::make_unique<MultipartBody>("application/dicom"))
{
    const WebFailure refusal = client.refusal();
    if (!refusal.isNone()) {
        endBefore(refusal);
        return;
    }
    for (const StoredFile &file : m_files) {
        if (!m_body->addFile(file.path)) {
            endBefore({WebProblem::FileUnreadable, file.path, 0});
            return;
        }
    }
    m_body->open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    m_reply = client.post(QStringLiteral("studies"), m_body->contentType(), m_body.get());
    m_reply->setParent(this);
    m_answer = new BoundedAnswer(*m_reply, longestAnswer);
    connect(m_reply, &QNetworkReply::uploadProgress, this,
        [this](qint64 bytes, qint64 /*all*/) { emit sent(bytes); });
    connect(m_reply, &QNetworkReply::finished, this, &StoreRequest::end);
}

StoreRequest::~StoreRequest()
{
    if (m_reply) {
        m_reply->disconnect(this);
        delete m_reply; // reads the body until then
    }
}

void StoreRequest::abort()
{
    if (m_reply) {
        m_reply->abort();
    }
}

void StoreRequest::endBefore(const WebFailure &failure)
{
    QTimer::singleShot(0, this, [this, failure] {
        emit finished({failure, QVector<StoreVerdict>(m_files.size())});
    });
}

QHash<QString, StoreVerdict> StoreRequest::verdictsOf(const QByteArray &answer, bool *isGood)
{
    using State = StoreVerdict::State;
    QHash<QString, StoreVerdict> verdicts;
    for (const DicomJson &part : DicomJson::read(answer, isGood)) {
        read(part, DicomTag::failedSequence, DicomTag::failureReason, State::Refused, State::Refused,
            verdicts);
        read(part, DicomTag::referencedSequence, DicomTag::warningReason, State::Stored,
            State::StoredWithWarning, verdicts);
    }
    verdicts.remove(QString());
    return verdicts;
}

WebFailure StoreRequest::failureOfAnswer(bool isUnderstood) const
{
    if (!m_body->unreadableFile().isEmpty()) {
        return {WebProblem::FileUnreadable, m_body->unreadableFile(), 0};
    }
    WebFailure failure = m_answer->isTooLong() ? WebFailure() : WebClient::failureOf(*m_reply);
    if (failure.isNone() && !isUnderstood) {
        const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        failure = {WebProblem::BadAnswer, {}, status};
    }
    return failure;
}

void StoreRequest::end()
{
    bool isUnderstood = false;
    // A service that refuses some of the objects answers with an error and still says what it did to each.
    const QHash<QString, StoreVerdict> verdicts = verdictsOf(m_answer->read(), &isUnderstood);
    StoreAnswer answer{failureOfAnswer(isUnderstood), {}};
    for (const StoredFile &file : m_files) {
        answer.verdicts.append(verdicts.value(file.sopInstanceUid));
    }
    m_reply->deleteLater();
    m_reply.clear();
    emit finished(answer);
}
