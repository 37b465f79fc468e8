#include "retrievescu.h"

#include "characterset.h"
#include "dicomuids.h"
#include "dimsedialogue.h"
#include "queryidentifier.h"
#include "queryscu.h"
#include "retrievecontexts.h"
#include "storeprovider.h"

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dcdatset.h>
#include <dcmtk/dcmdata/dcuid.h>
#include <dcmtk/dcmnet/dimse.h>

#include <atomic>

namespace {

constexpr int mostNamed = 1000;

QVector<QByteArray> moveModels()
{
    return {UID_MOVEStudyRootQueryRetrieveInformationModel, UID_MOVEPatientRootQueryRetrieveInformationModel};
}

QVector<ScuContext> contextsOf(const QVector<QByteArray> &models)
{
    QVector<ScuContext> contexts;
    for (const QByteArray &model : models) {
        contexts.append({model, {DicomUid::explicitLittleEndian, DicomUid::implicitLittleEndian}, false});
    }
    return contexts;
}

QueryRecord keysOf(const RetrieveRequest &request)
{
    QueryRecord keys{
        {QueryTag::level, queryLevelName(request.level)}, {QueryTag::studyUid, request.studyUid}};
    if (request.level != RecordLevel::Study) {
        keys.insert(QueryTag::seriesUid, request.seriesUid);
    }
    if (request.level == RecordLevel::Image) {
        Q_ASSERT(request.instanceUids.size() <= RetrieveRequest::mostInstances);
        keys.insert(QueryTag::instanceUid, request.instanceUids.join(QLatin1Char('\\')));
    }
    return keys;
}

void count(const T_DIMSE_C_MoveRSP &answer, RetrieveProgress &progress)
{
    if (answer.opts & O_MOVE_NUMBEROFCOMPLETEDSUBOPERATIONS) {
        progress.completed = answer.NumberOfCompletedSubOperations;
        progress.failed = answer.NumberOfFailedSubOperations;
        progress.warned = answer.NumberOfWarningSubOperations;
    }
    progress.remaining =
        answer.opts & O_MOVE_NUMBEROFREMAININGSUBOPERATIONS ? answer.NumberOfRemainingSubOperations : -1;
}

} // namespace

struct RetrieveScu::Private
{
    ScuAssociation association;
    std::function<void(const RetrieveProgress &)> listener;
    std::atomic<bool> cancelled{false};
    std::atomic<bool> asked{false}; ///< the request is on its way or with the archive

    RetrieveResult run(const QVector<ScuContext> &contexts, const QVector<QByteArray> &models,
        T_DIMSE_Message &message, const RetrieveRequest &request, const StoreProvider *provider);
    NetworkFailure listen(DimseDialogue &dialogue, RetrieveResult &result, const StoreProvider *provider);
    NetworkFailure store(
        const T_DIMSE_C_StoreRQ &request, int context, RetrieveResult &result, const StoreProvider &provider);
    NetworkFailure takeFailed(DimseDialogue &dialogue, RetrieveResult &result);
    void tell(const RetrieveProgress &progress) const;
};

void RetrieveScu::Private::tell(const RetrieveProgress &progress) const
{
    if (listener) {
        listener(progress);
    }
}

/// An object that the archive sends over our association.
NetworkFailure RetrieveScu::Private::store(
    const T_DIMSE_C_StoreRQ &request, int context, RetrieveResult &result, const StoreProvider &provider)
{
    switch (provider.serve(association.native(), context, request, association.node().aeTitle)) {
    case StoreProvider::Outcome::Kept:
        break;
    case StoreProvider::Outcome::Refused:
        ++result.refused;
        if (result.failedInstances.size() < mostNamed) {
            result.failedInstances.append(QString::fromLatin1(request.AffectedSOPInstanceUID));
            result.refusedInstances.append(result.failedInstances.constLast());
        }
        break;
    case StoreProvider::Outcome::Broken:
        return {association.isAborted() ? NetworkProblem::Stopped : NetworkProblem::PeerGone, {}};
    }
    return {};
}

NetworkFailure RetrieveScu::Private::takeFailed(DimseDialogue &dialogue, RetrieveResult &result)
{
    QByteArray bytes;
    NetworkFailure failure = dialogue.readData(QueryIdentifier::longestAnswer, bytes);
    if (!failure.isNone()) {
        return failure;
    }
    CharacterSet characterSet;
    const QString uids =
        QueryIdentifier::decode(bytes, dialogue.isImplicit(), characterSet).value(QueryTag::failedInstances);
    for (const QString &uid : uids.split(QLatin1Char('\\'), Qt::SkipEmptyParts)) {
        if (!result.failedInstances.contains(uid) && result.failedInstances.size() < mostNamed) {
            result.failedInstances.append(uid);
        }
    }
    return {};
}

NetworkFailure RetrieveScu::Private::listen(
    DimseDialogue &dialogue, RetrieveResult &result, const StoreProvider *provider)
{
    for (;;) {
        T_DIMSE_Message message = {};
        QString comment;
        int context = 0;
        NetworkFailure failure = dialogue.next(message, context, comment);
        if (failure.isNone() && message.CommandField == DIMSE_C_STORE_RQ && provider) {
            failure = store(message.msg.CStoreRQ, context, result, *provider);
            if (failure.isNone()) {
                continue;
            }
        }
        if (!failure.isNone()) {
            return failure;
        }
        if (message.CommandField != DIMSE_C_GET_RSP && message.CommandField != DIMSE_C_MOVE_RSP) {
            return {NetworkProblem::BadAnswer, {}};
        }
        const T_DIMSE_C_MoveRSP &answer = message.msg.CMoveRSP; // both answers are of one shape
        static_assert(sizeof(T_DIMSE_C_MoveRSP) == sizeof(T_DIMSE_C_GetRSP));
        const bool isPending = DICOM_PENDING_STATUS(answer.DimseStatus);
        count(answer, result.progress);
        tell(result.progress);
        if (answer.DataSetType != DIMSE_DATASET_NULL) {
            failure = takeFailed(dialogue, result);
        }
        if (!failure.isNone() || !isPending) {
            const bool isEnded = answer.DimseStatus == STATUS_Success
                || answer.DimseStatus == STATUS_MOVE_Cancel_SubOperationsTerminatedDueToCancelIndication;
            result.status = isEnded || isPending ? quint16(0) : answer.DimseStatus;
            return failure.isNone() ? NetworkFailure{NetworkProblem::None, comment} : failure;
        }
    }
}

RetrieveResult RetrieveScu::Private::run(const QVector<ScuContext> &contexts,
    const QVector<QByteArray> &models, T_DIMSE_Message &message, const RetrieveRequest &request,
    const StoreProvider *provider)
{
    RetrieveResult result;
    result.failure = cancelled ? NetworkFailure{NetworkProblem::Stopped, {}} : association.open(contexts);
    if (!result.failure.isNone()) {
        return result;
    }
    QueryRecord keys = keysOf(request);
    if (!association.accepts(models.first()) && !request.patientId.isEmpty()) {
        keys.insert(QueryTag::patientId, request.patientId);
    }
    asked = true;
    DimseDialogue dialogue(association, cancelled);
    result.failure = dialogue.begin(models, message, *QueryIdentifier::encode(keys));
    if (result.failure.isNone()) {
        result.failure = listen(dialogue, result, provider);
    }
    if (result.failure.isNone()) {
        association.release();
    } else {
        association.close();
    }
    asked = false;
    if (cancelled) {
        result.failure = {NetworkProblem::Stopped, {}};
    }
    return result;
}

RetrieveScu::RetrieveScu(const DicomNode &node, const ScuOptions &options)
    : d(new Private{{node, options}, {}, {}, {}})
{ }

RetrieveScu::~RetrieveScu() = default;

void RetrieveScu::setListener(std::function<void(const RetrieveProgress &)> listener)
{
    d->listener = std::move(listener);
}

RetrieveResult RetrieveScu::get(const RetrieveRequest &request, const StoreProvider &provider)
{
    T_DIMSE_Message message = {};
    message.CommandField = DIMSE_C_GET_RQ;
    message.msg.CGetRQ.Priority = DIMSE_PRIORITY_MEDIUM;
    message.msg.CGetRQ.DataSetType = DIMSE_DATASET_PRESENT;
    // The study root alone: every further context would cost a class of storage.
    const QVector<QByteArray> models{UID_GETStudyRootQueryRetrieveInformationModel};
    return d->run(contextsOf(models) + retrieveContexts({request.modalities, request.classes}), models,
        message, request, &provider);
}

RetrieveResult RetrieveScu::move(const RetrieveRequest &request, const QString &destination)
{
    T_DIMSE_Message message = {};
    message.CommandField = DIMSE_C_MOVE_RQ;
    T_DIMSE_C_MoveRQ &move = message.msg.CMoveRQ;
    move.Priority = DIMSE_PRIORITY_MEDIUM;
    move.DataSetType = DIMSE_DATASET_PRESENT;
    qstrncpy(move.MoveDestination, destination.trimmed().toLatin1().constData(), sizeof move.MoveDestination);
    return d->run(contextsOf(moveModels()), moveModels(), message, request, nullptr);
}

void RetrieveScu::cancel()
{
    d->cancelled = true;
    if (!d->asked) {
        d->association.abort(); // it may still be connecting, and nothing is lost
    }
}

void RetrieveScu::abort()
{
    d->cancelled = true;
    d->association.abort();
}
