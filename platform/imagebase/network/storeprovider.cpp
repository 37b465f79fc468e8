#include "storeprovider.h"

#include "dicomreader.h"
#include "filecopy.h"
#include "filemeta.h"
#include "objectspool.h"
#include "receivejournal.h"
#include "spoolfile.h"
#include "spoolindexer.h"
#include "systemtext.h"

#include <cerrno>
#include <memory>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dcdeftag.h>
#include <dcmtk/dcmdata/dcostrma.h>
#include <dcmtk/dcmnet/assoc.h>
#include <dcmtk/dcmnet/dimse.h>

namespace {

constexpr qint64 leastRoom = 1 << 20;
constexpr int longestComment = 64;

/// DCMTK's way of writing, into a file of the spool.
class SpoolConsumer : public DcmConsumer
{
public:
    explicit SpoolConsumer(SpoolFile &file)
        : m_file(file)
    { }
    OFBool good() const override { return OFTrue; }
    OFCondition status() const override { return EC_Normal; }
    OFBool isFlushed() const override { return OFTrue; }
    offile_off_t avail() const override { return 1 << 30; }
    offile_off_t write(const void *bytes, offile_off_t length) override
    {
        m_file.write(bytes, static_cast<std::size_t>(length));
        return length;
    }
    void flush() override { }

private:
    SpoolFile &m_file;
};

class SpoolStream : public DcmOutputStream
{
public:
    explicit SpoolStream(SpoolFile &file)
        : DcmOutputStream(&m_consumer)
        , m_consumer(file)
    { }

private:
    SpoolConsumer m_consumer;
};

/// One request on its way to its answer.
class StoreRequest
{
public:
    StoreRequest(
        T_ASC_Association *association, int context, const T_DIMSE_C_StoreRQ &request, const QString &peer)
        : m_association(association)
        , m_context(static_cast<T_ASC_PresentationContextID>(context))
        , m_request(request)
    {
        event.peer = peer;
    }

    bool check();
    bool receiveInto(SpoolFile &file);
    bool ignoreData();
    bool answer() const;
    bool isGood() const { return m_status == STATUS_STORE_Success; }
    void refuse(quint16 status, ReceiveProblem problem, const QString &detail = {});
    void refuseForSystem(int error);
    void refuseUnreadable(const DicomReadResult &result);
    void compare(const DicomHeader &header);
    QByteArray meta() const;

    ReceiveEvent event;

private:
    T_ASC_Association *const m_association;
    const T_ASC_PresentationContextID m_context;
    const T_DIMSE_C_StoreRQ &m_request;
    T_ASC_PresentationContext m_accepted = {};
    quint16 m_status = STATUS_STORE_Success;
};

void StoreRequest::refuse(quint16 status, ReceiveProblem problem, const QString &detail)
{
    m_status = status;
    event.problem = problem;
    event.detail = detail;
}

void StoreRequest::refuseForSystem(int error)
{
    refuse(STATUS_STORE_Refused_OutOfResources,
        isDiskFull(error) ? ReceiveProblem::DiskFull : ReceiveProblem::WriteFailed, systemText(error));
}

/// Whether the request itself can be served.
bool StoreRequest::check()
{
    event.sopInstanceUid = QString::fromLatin1(m_request.AffectedSOPInstanceUID);
    const auto isUid = [](const char *text) { return DicomReader::isUid(QString::fromLatin1(text)); };
    if (ASC_findAcceptedPresentationContext(m_association->params, m_context, &m_accepted).bad()) {
        refuse(
            STATUS_STORE_Refused_SOPClassNotSupported, ReceiveProblem::BadRequest, QStringLiteral("context"));
    } else if (!isUid(m_request.AffectedSOPClassUID) || !isUid(m_request.AffectedSOPInstanceUID)) {
        refuse(
            STATUS_STORE_Error_CannotUnderstand, ReceiveProblem::BadRequest, QStringLiteral("malformed UID"));
    } else if (qstrcmp(m_accepted.abstractSyntax, m_request.AffectedSOPClassUID) != 0) {
        refuse(STATUS_STORE_Refused_SOPClassNotSupported, ReceiveProblem::BadRequest,
            QStringLiteral("class of another context"));
    } else if (m_request.DataSetType == DIMSE_DATASET_NULL) {
        refuse(STATUS_STORE_Error_CannotUnderstand, ReceiveProblem::BadRequest, QStringLiteral("no data"));
    }
    return isGood();
}

QByteArray StoreRequest::meta() const
{
    return fileMeta({m_request.AffectedSOPClassUID, m_request.AffectedSOPInstanceUID,
        m_accepted.acceptedTransferSyntax, event.peer.toLatin1()});
}

/// @return false where the association broke
bool StoreRequest::receiveInto(SpoolFile &file)
{
    const QByteArray head = meta();
    file.write(head.constData(), static_cast<std::size_t>(head.size()));
    SpoolStream stream(file);
    T_ASC_PresentationContextID context = m_context;
    const OFCondition result = DIMSE_receiveDataSetInFile(
        m_association, DIMSE_NONBLOCKING, StoreProvider::silenceSeconds, &context, &stream, nullptr, nullptr);
    if (result.good() && context != m_context) {
        refuse(STATUS_STORE_Error_CannotUnderstand, ReceiveProblem::BadRequest,
            QStringLiteral("data in another context"));
    }
    if (result.bad()) {
        event.problem = ReceiveProblem::LineLost;
        event.detail = QString::fromLatin1(result.text());
    }
    return result.good();
}

bool StoreRequest::ignoreData()
{
    DIC_UL bytes = 0;
    DIC_UL parts = 0;
    return m_request.DataSetType == DIMSE_DATASET_NULL
        || DIMSE_ignoreDataSet(
            m_association, DIMSE_NONBLOCKING, StoreProvider::silenceSeconds, &bytes, &parts)
               .good();
}

void StoreRequest::refuseUnreadable(const DicomReadResult &result)
{
    refuse(STATUS_STORE_Error_CannotUnderstand, ReceiveProblem::NotReadable,
        result.detail.isEmpty() ? QStringLiteral("not an object of a study") : result.detail);
}

/// The peer names what it sends twice.
void StoreRequest::compare(const DicomHeader &header)
{
    const QString &instance = header[Attribute::SOPInstanceUID];
    const QString &itsClass = header[Attribute::SOPClassUID];
    const bool sameClass = itsClass.isEmpty() || itsClass == QLatin1String(m_request.AffectedSOPClassUID);
    if (instance != QLatin1String(m_request.AffectedSOPInstanceUID) || !sameClass) {
        refuse(STATUS_STORE_Error_DataSetDoesNotMatchSOPClass, ReceiveProblem::OtherObject,
            sameClass ? instance : itsClass);
    }
}

bool StoreRequest::answer() const
{
    T_DIMSE_C_StoreRSP response = {};
    response.MessageIDBeingRespondedTo = m_request.MessageID;
    qstrncpy(response.AffectedSOPClassUID, m_request.AffectedSOPClassUID, sizeof(DIC_UI));
    qstrncpy(response.AffectedSOPInstanceUID, m_request.AffectedSOPInstanceUID, sizeof(DIC_UI));
    response.opts = O_STORE_AFFECTEDSOPCLASSUID | O_STORE_AFFECTEDSOPINSTANCEUID;
    response.DataSetType = DIMSE_DATASET_NULL;
    response.DimseStatus = m_status;
    DcmDataset comment;
    if (!isGood() && !event.detail.isEmpty()) {
        comment.putAndInsertString(
            DCM_ErrorComment, event.detail.left(longestComment).toLatin1().constData());
    }
    return DIMSE_sendStoreResponse(
        m_association, m_context, &m_request, &response, isGood() || comment.isEmpty() ? nullptr : &comment)
        .good();
}

} // namespace

StoreProvider::StoreProvider(ObjectSpool &spool, SpoolIndexer &indexer, ReceiveJournal &journal)
    : m_spool(spool)
    , m_indexer(indexer)
    , m_journal(journal)
{ }

StoreProvider::Outcome StoreProvider::serve(
    T_ASC_Association *association, int context, const T_DIMSE_C_StoreRQ &request, const QString &peer) const
{
    StoreRequest store(association, context, request, peer);
    std::unique_ptr<SpoolFile> file;
    if (store.check()) {
        int error = 0;
        file = m_spool.hasRoom(leastRoom) ? m_spool.create(&error) : nullptr;
        if (!file) {
            store.refuseForSystem(error == 0 ? ENOSPC : error);
        }
    }
    if (!(file ? store.receiveInto(*file) : store.ignoreData())) {
        store.event.problem = ReceiveProblem::LineLost;
        m_journal.note(store.event, false); // nobody was told of anything
        return Outcome::Broken;
    }
    DicomReadResult result;
    if (store.isGood() && file->error() == 0) {
        // Judged before it is acknowledged: a peer keeps what we cannot use.
        thread_local DicomReader reader;
        result = reader.read(file->path());
        if (result.outcome == DicomReadResult::Outcome::Image) {
            store.compare(result.header);
        } else {
            store.refuseUnreadable(result);
        }
    }
    if (store.isGood()) {
        const int error = file->keep();
        if (error != 0) {
            store.refuseForSystem(error);
        }
    }
    const bool answered = store.answer();
    if (!store.isGood()) {
        m_journal.note(store.event, true);
        return answered ? Outcome::Refused : Outcome::Broken;
    }
    m_journal.countReceived();
    m_indexer.add(file->keptPath(), result);
    return answered ? Outcome::Kept : Outcome::Broken;
}
