#include "scpassociation.h"

#include "storageclasses.h"

#include <dcmtk/dcmdata/dcdatset.h>
#include <dcmtk/dcmdata/dcuid.h>
#include <dcmtk/dcmnet/assoc.h>
#include <dcmtk/dcmnet/cond.h>
#include <dcmtk/dcmnet/dimse.h>

namespace {

/// A command is a few hundred bytes; it may share its packets with the beginning of the data.
constexpr qint64 commandBytes = 3 * ScpSettings::longestPdu;
constexpr int msPerSecond = 1000;

QByteArray chosenSyntax(const T_ASC_PresentationContext &context)
{
    // The peer's order is all that says what it would rather send.
    for (int i = 0; i < context.transferSyntaxCount; ++i) {
        if (StorageClasses::isTransferSyntax(context.proposedTransferSyntaxes[i])) {
            return context.proposedTransferSyntaxes[i];
        }
    }
    return {};
}

} // namespace

ScpAssociation::ScpAssociation(
    OwnedSocket socket, const ScpSettings &settings, const StoreProvider &provider, const AbortSwitch &abort)
    : m_settings(settings)
    , m_provider(provider)
    , m_transport(std::move(socket), abort, settings.silenceSeconds * msPerSecond)
{ }

ScpAssociation::~ScpAssociation()
{
    if (m_association) {
        ASC_dropAssociation(m_association);
        ASC_destroyAssociation(&m_association);
    }
}

void ScpAssociation::run()
{
    const OFCondition result =
        m_transport.receive(&m_association, m_settings.silenceSeconds, ScpSettings::longestPdu);
    if (result.bad() || !m_association || !m_association->params || !ScuConnection::of(m_association)) {
        return;
    }
    if (isWelcome() && acknowledge()) {
        m_provider.journal().addAssociations(1);
        serve();
        m_provider.journal().addAssociations(-1);
    }
}

bool ScpAssociation::isWelcome()
{
    char calling[DUL_LEN_TITLE + 1] = "";
    char called[DUL_LEN_TITLE + 1] = "";
    char responding[DUL_LEN_TITLE + 1] = "";
    ASC_getAPTitles(
        m_association->params, calling, sizeof calling, called, sizeof called, responding, sizeof responding);
    m_peer = QString::fromLatin1(calling).trimmed();
    const QString us = QString::fromLatin1(called).trimmed();
    if (us != m_settings.aeTitle) {
        return reject(ASC_REASON_SU_CALLEDAETITLENOTRECOGNIZED, ReceiveProblem::WrongCalledTitle, us);
    }
    if (!m_settings.callers.isEmpty() && !m_settings.callers.contains(m_peer)) {
        return reject(ASC_REASON_SU_CALLINGAETITLENOTRECOGNIZED, ReceiveProblem::UnknownCaller, m_peer);
    }
    return true;
}

bool ScpAssociation::reject(int reason, ReceiveProblem problem, const QString &detail)
{
    const T_ASC_RejectParameters parameters = {ASC_RESULT_REJECTEDPERMANENT, ASC_SOURCE_SERVICEUSER,
        static_cast<T_ASC_RejectParametersReason>(reason)};
    ASC_rejectAssociation(m_association, &parameters);
    ReceiveEvent event;
    event.problem = problem;
    event.peer = m_peer;
    event.detail = detail;
    m_provider.journal().note(event, true);
    return false;
}

void ScpAssociation::acceptContexts()
{
    T_ASC_Parameters *parameters = m_association->params;
    const int contexts = ASC_countPresentationContexts(parameters);
    for (int i = 0; i < contexts; ++i) {
        T_ASC_PresentationContext context = {};
        if (ASC_getPresentationContext(parameters, i, &context).bad()) {
            continue;
        }
        const bool isService = qstrcmp(context.abstractSyntax, UID_VerificationSOPClass) == 0
            || StorageClasses::isStorage(context.abstractSyntax, m_settings.acceptPrivateClasses);
        const QByteArray syntax = isService ? chosenSyntax(context) : QByteArray();
        if (!syntax.isEmpty()) {
            ASC_acceptPresentationContext(parameters, context.presentationContextID, syntax.constData());
        } else {
            ASC_refusePresentationContext(parameters, context.presentationContextID,
                isService ? ASC_P_TRANSFERSYNTAXESNOTSUPPORTED : ASC_P_ABSTRACTSYNTAXNOTSUPPORTED);
        }
    }
}

bool ScpAssociation::acknowledge()
{
    acceptContexts();
    return ASC_acknowledgeAssociation(m_association).good();
}

void ScpAssociation::serve()
{
    while (serveOne()) { }
}

bool ScpAssociation::serveOne()
{
    // The waiting is DCMTK's, the sending of one command must not take longer either.
    if (ScuConnection *line = ScuConnection::of(m_association)) {
        line->limit(commandBytes, 2 * m_settings.idleSeconds * msPerSecond);
    }
    T_DIMSE_Message message = {};
    T_ASC_PresentationContextID context = 0;
    DcmDataset *detail = nullptr;
    const OFCondition result = DIMSE_receiveCommand(
        m_association, DIMSE_NONBLOCKING, m_settings.idleSeconds, &context, &message, &detail);
    delete detail;
    if (ScuConnection *line = ScuConnection::of(m_association)) { // DCMTK may have removed it meanwhile
        line->unlimit();
    }
    if (result == DUL_PEERREQUESTEDRELEASE) {
        ASC_acknowledgeRelease(m_association);
        return false;
    }
    if (result.bad()) {
        if (result != DUL_PEERABORTEDASSOCIATION) {
            ASC_abortAssociation(m_association);
        }
        return false;
    }
    if (!answer(message, context)) {
        ASC_abortAssociation(m_association);
        return false;
    }
    return true;
}

bool ScpAssociation::answer(T_DIMSE_Message &message, int context)
{
    const auto number = static_cast<T_ASC_PresentationContextID>(context);
    switch (message.CommandField) {
    case DIMSE_C_ECHO_RQ:
        return DIMSE_sendEchoResponse(m_association, number, &message.msg.CEchoRQ, STATUS_Success, nullptr)
            .good();
    case DIMSE_C_STORE_RQ:
        return m_provider.serve(m_association, context, message.msg.CStoreRQ, m_peer)
            != StoreProvider::Outcome::Broken;
    default:
        return false;
    }
}
