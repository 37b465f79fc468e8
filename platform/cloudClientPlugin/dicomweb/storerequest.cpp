#include "storerequest.h"

#include "dicomjson.h"
#include "httpline.h"
#include "multipartbody.h"
#include "webclient.h"

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
    m_line = client.upload(QStringLiteral("studies"), m_body->contentType(), m_body.get(), longestAnswer);
    connect(m_line, &HttpLine::finished, this, &StoreRequest::end);
}

StoreRequest::~StoreRequest()
{
    if (m_line) {
        m_line->disconnect(this);
        m_line->abort(); // it reads the body until then
    }
}

void StoreRequest::abort()
{
    if (m_line) {
        m_line->abort();
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

WebFailure StoreRequest::failureOf(const HttpAnswer &answer, bool isUnderstood) const
{
    if (!m_body->unreadableFile().isEmpty()) {
        return {WebProblem::FileUnreadable, m_body->unreadableFile(), 0};
    }
    return answer.failure.isNone() && !isUnderstood ? WebFailure{WebProblem::BadAnswer, {}, answer.status}
                                                    : answer.failure;
}

void StoreRequest::end(const HttpAnswer &answer)
{
    m_line->disconnect(this);
    m_line.clear();
    bool isUnderstood = false;
    // A service that refuses some of the objects answers with an error and still says what it did to each.
    const QHash<QString, StoreVerdict> verdicts = verdictsOf(answer.body, &isUnderstood);
    StoreAnswer told{failureOf(answer, isUnderstood), {}};
    for (const StoredFile &file : m_files) {
        told.verdicts.append(verdicts.value(file.sopInstanceUid));
    }
    emit finished(told);
}
