#include "dimsedialogue.h"

#include "dicomuids.h"
#include "scuassociation.h"

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dcdatset.h>
#include <dcmtk/dcmdata/dcdeftag.h>
#include <dcmtk/dcmdata/dcostrma.h>
#include <dcmtk/dcmnet/dimse.h>

#include <memory>

namespace {

constexpr int lookMs = 100; ///< how soon a wish to cancel is noticed
constexpr int cancelMs = 5000; ///< what the peer has for ending after it
constexpr int msPerSecond = 1000;

/// Keeps what is written up to a limit; beyond it writing fails.
class BoundedConsumer : public DcmConsumer
{
public:
    explicit BoundedConsumer(qint64 limit)
        : m_limit(limit)
    { }

    OFBool good() const override { return !m_full; }
    OFCondition status() const override { return m_full ? EC_StreamNotifyClient : EC_Normal; }
    OFBool isFlushed() const override { return OFTrue; }
    offile_off_t avail() const override { return m_full ? 0 : m_limit - m_bytes.size(); }
    offile_off_t write(const void *bytes, offile_off_t length) override
    {
        m_full = m_full || length > m_limit - m_bytes.size();
        if (m_full) {
            return 0;
        }
        m_bytes.append(static_cast<const char *>(bytes), static_cast<int>(length));
        return length;
    }
    void flush() override { }

    const QByteArray &bytes() const { return m_bytes; }
    bool isFull() const { return m_full; }

private:
    const qint64 m_limit;
    QByteArray m_bytes;
    bool m_full = false;
};

class BoundedStream : public DcmOutputStream
{
public:
    explicit BoundedStream(BoundedConsumer &consumer)
        : DcmOutputStream(&consumer)
    { }
};

QString commentIn(DcmDataset *detail)
{
    OFString text;
    if (detail) {
        detail->findAndGetOFStringArray(DCM_ErrorComment, text);
    }
    return QString::fromLatin1(text.c_str()).simplified();
}

} // namespace

NetworkFailure DimseDialogue::begin(
    const QVector<QByteArray> &services, T_DIMSE_Message &request, DcmDataset &identifier)
{
    T_ASC_Association *association = m_association.native();
    T_ASC_PresentationContext accepted = {};
    for (const QByteArray &service : services) {
        const T_ASC_PresentationContextID id =
            ASC_findAcceptedPresentationContextID(association, service.constData());
        if (id != 0 && ASC_findAcceptedPresentationContext(association->params, id, &accepted).good()) {
            m_service = service;
            m_context = id;
            break;
        }
    }
    if (m_context == 0) {
        return {NetworkProblem::NoContext, {}};
    }
    m_isImplicit = qstrcmp(accepted.acceptedTransferSyntax, DicomUid::implicitLittleEndian) == 0;
    m_messageId = association->nextMsgID++;
    // All requests begin with these two.
    request.msg.CFindRQ.MessageID = m_messageId;
    qstrncpy(request.msg.CFindRQ.AffectedSOPClassUID, m_service.constData(),
        sizeof request.msg.CFindRQ.AffectedSOPClassUID);
    return m_association.failureOf(
        DIMSE_sendMessageUsingMemoryData(association, static_cast<T_ASC_PresentationContextID>(m_context),
            &request, nullptr, &identifier, nullptr, nullptr));
}

NetworkFailure DimseDialogue::sendCancel()
{
    m_sinceCancel.start();
    return m_association.failureOf(DIMSE_sendCancelRequest(
        m_association.native(), static_cast<T_ASC_PresentationContextID>(m_context), m_messageId));
}

NetworkFailure DimseDialogue::wait()
{
    QElapsedTimer clock;
    clock.start();
    do {
        if ((m_cancelWanted || m_cancelled) && !m_sinceCancel.isValid()) {
            NetworkFailure failure = sendCancel();
            if (!failure.isNone()) {
                return failure;
            }
        }
        if (m_sinceCancel.isValid() && m_sinceCancel.hasExpired(cancelMs)) {
            return {NetworkProblem::Stopped, {}};
        }
        if (m_association.waitForData(lookMs)) {
            return {};
        }
    } while (!clock.hasExpired(m_association.options().requestMs) && !m_association.isAborted());
    return {m_association.isAborted() ? NetworkProblem::Stopped : NetworkProblem::NoAnswer, {}};
}

NetworkFailure DimseDialogue::next(T_DIMSE_Message &message, int &context, QString &comment)
{
    NetworkFailure failure = wait();
    if (!failure.isNone()) {
        return failure;
    }
    DcmDataset *detail = nullptr;
    const OFCondition result =
        m_association.receiveCommand(ScuAssociation::CommandSize::WithData, context, message, &detail);
    const std::unique_ptr<DcmDataset> owned(detail);
    comment = commentIn(detail);
    return m_association.failureOf(result);
}

NetworkFailure DimseDialogue::readData(qint64 limit, QByteArray &bytes)
{
    BoundedConsumer consumer(limit);
    BoundedStream stream(consumer);
    T_ASC_PresentationContextID id = 0;
    const OFCondition result = DIMSE_receiveDataSetInFile(m_association.native(), DIMSE_NONBLOCKING,
        m_association.options().requestMs / msPerSecond, &id, &stream, nullptr, nullptr);
    bytes = consumer.bytes();
    if (consumer.isFull()) {
        return {NetworkProblem::BadAnswer, {}};
    }
    return m_association.failureOf(result);
}
