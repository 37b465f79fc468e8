#include "queryscu.h"

#include "characterset.h"
#include "dicomuids.h"
#include "dimsedialogue.h"
#include "queryidentifier.h"

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dcdatset.h>
#include <dcmtk/dcmdata/dcuid.h>
#include <dcmtk/dcmnet/dimse.h>

#include <atomic>

namespace {

const QVector<QByteArray> &syntaxes()
{
    static const QVector<QByteArray> list{DicomUid::explicitLittleEndian, DicomUid::implicitLittleEndian};
    return list;
}

T_DIMSE_Message findRequest()
{
    T_DIMSE_Message message = {};
    message.CommandField = DIMSE_C_FIND_RQ;
    T_DIMSE_C_FindRQ &request = message.msg.CFindRQ;
    request.Priority = DIMSE_PRIORITY_MEDIUM;
    request.DataSetType = DIMSE_DATASET_PRESENT;
    return message;
}

} // namespace

QString queryLevelName(RecordLevel level)
{
    switch (level) {
    case RecordLevel::Patient:
        return QStringLiteral("PATIENT");
    case RecordLevel::Study:
        return QStringLiteral("STUDY");
    case RecordLevel::Series:
        return QStringLiteral("SERIES");
    case RecordLevel::Image:
        break;
    }
    return QStringLiteral("IMAGE");
}

struct QueryScu::Private
{
    ScuAssociation association;
    CharacterSet characterSet;
    std::atomic<bool> cancelled{false};
    std::atomic<bool> asked{false}; ///< a request is on its way or with the archive

    NetworkFailure open();
    NetworkFailure ask(const QueryRequest &request, QueryResult &result);
    NetworkFailure listen(DimseDialogue &dialogue, const QueryRequest &request, QueryResult &result);
    NetworkFailure take(DimseDialogue &dialogue, const QueryRequest &request, QueryResult &result);
};

NetworkFailure QueryScu::Private::open()
{
    if (association.isOpen()) {
        return {};
    }
    return association.open({{UID_FINDStudyRootQueryRetrieveInformationModel, syntaxes(), false},
        {UID_FINDPatientRootQueryRetrieveInformationModel, syntaxes(), false}});
}

/// One answer's data set.
NetworkFailure QueryScu::Private::take(
    DimseDialogue &dialogue, const QueryRequest &request, QueryResult &result)
{
    QByteArray bytes;
    NetworkFailure failure = dialogue.readData(QueryIdentifier::longestAnswer, bytes);
    if (!failure.isNone()) {
        return failure;
    }
    if (result.records.size() < request.limit) {
        result.records.append(QueryIdentifier::decode(bytes, dialogue.isImplicit(), characterSet));
    } else {
        result.isCutOff = true;
        dialogue.cancel();
    }
    return {};
}

/// The answers up to the last one, which says how it ended.
NetworkFailure QueryScu::Private::listen(
    DimseDialogue &dialogue, const QueryRequest &request, QueryResult &result)
{
    for (;;) {
        T_DIMSE_Message answer = {};
        QString comment;
        int context = 0;
        NetworkFailure failure = dialogue.next(answer, context, comment);
        if (failure.isNone() && answer.CommandField != DIMSE_C_FIND_RSP) {
            failure = {NetworkProblem::BadAnswer, {}};
        }
        const T_DIMSE_C_FindRSP &response = answer.msg.CFindRSP;
        if (failure.isNone() && DICOM_PENDING_STATUS(response.DimseStatus)
            && response.DataSetType == DIMSE_DATASET_NULL) {
            failure = {NetworkProblem::BadAnswer, {}}; // or a peer could go on like that for ever
        }
        if (failure.isNone() && response.DataSetType != DIMSE_DATASET_NULL) {
            failure = take(dialogue, request, result);
        }
        if (!failure.isNone()) {
            return failure;
        }
        if (!DICOM_PENDING_STATUS(response.DimseStatus)) {
            const bool isEnded =
                response.DimseStatus == STATUS_Success || response.DimseStatus == STATUS_FIND_Cancel;
            result.status = isEnded ? quint16(0) : response.DimseStatus;
            return {NetworkProblem::None, comment};
        }
    }
}

NetworkFailure QueryScu::Private::ask(const QueryRequest &request, QueryResult &result)
{
    QueryRecord keys = request.keys;
    keys.insert(QueryTag::level, queryLevelName(request.level));
    QVector<QByteArray> services{UID_FINDPatientRootQueryRetrieveInformationModel};
    if (request.level != RecordLevel::Patient) {
        services.prepend(UID_FINDStudyRootQueryRetrieveInformationModel);
    }
    DimseDialogue dialogue(association, cancelled);
    T_DIMSE_Message message = findRequest();
    const NetworkFailure failure = dialogue.begin(services, message, *QueryIdentifier::encode(keys));
    return failure.isNone() ? listen(dialogue, request, result) : failure;
}

QueryScu::QueryScu(const DicomNode &node, const ScuOptions &options)
    : d(new Private{{node, options}, {}, {}, {}})
{ }

QueryScu::~QueryScu() = default;

QueryResult QueryScu::find(const QueryRequest &request)
{
    QueryResult result;
    result.failure = d->cancelled ? NetworkFailure{NetworkProblem::Stopped, {}} : d->open();
    if (!result.failure.isNone()) {
        return result;
    }
    d->asked = true;
    result.failure = d->ask(request, result);
    d->asked = false;
    const bool isStopped = d->cancelled || d->association.isAborted();
    if (!result.failure.isNone() && result.failure.problem != NetworkProblem::NoContext) {
        d->association.close(); // nobody knows what would come next
    }
    if (isStopped) {
        result.failure = {NetworkProblem::Stopped, {}};
    } else if (result.isCutOff && result.failure.problem == NetworkProblem::Stopped) {
        result.failure = {}; // an archive that did not end when it was asked to
    }
    return result;
}

NetworkFailure QueryScu::open()
{
    const NetworkFailure failure = d->cancelled ? NetworkFailure{NetworkProblem::Stopped, {}} : d->open();
    return d->cancelled || d->association.isAborted() ? NetworkFailure{NetworkProblem::Stopped, {}} : failure;
}

bool QueryScu::hasStudyRoot() const
{
    return d->association.accepts(UID_FINDStudyRootQueryRetrieveInformationModel);
}

void QueryScu::cancel()
{
    d->cancelled = true;
    if (!d->asked) {
        d->association.abort(); // it may still be connecting, and nothing is lost
    }
}

void QueryScu::abort()
{
    d->cancelled = true;
    d->association.abort();
}
