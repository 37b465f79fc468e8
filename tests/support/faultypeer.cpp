#include "faultypeer.h"

#include "dicomservers.h"

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmnet/assoc.h>
#include <dcmtk/dcmnet/dimse.h>

namespace {

constexpr int longestPdu = 65536;
constexpr char explicitLittleEndian[] = "1.2.840.10008.1.2.1";
constexpr char implicitLittleEndian[] = "1.2.840.10008.1.2";

} // namespace

FaultyPeer::FaultyPeer(Script script, Takes takes)
    : m_script(std::move(script))
    , m_takes(takes)
    , m_port(freePort())
{
    qputenv("TCP_NODELAY", "1");
    if (ASC_initializeNetwork(NET_ACCEPTOR, m_port, 1, &m_network).bad()) {
        qFatal("the peer cannot listen");
    }
    m_listener = std::thread([this] { listen(); });
}

FaultyPeer::~FaultyPeer()
{
    m_stop = true;
    m_listener.join();
    for (std::thread &server : m_servers) {
        server.join();
    }
    ASC_dropNetwork(&m_network);
}

QVector<FaultyPeer::Received> FaultyPeer::received() const
{
    const std::lock_guard lock(m_mutex);
    return m_received;
}

QHash<QByteArray, int> FaultyPeer::accepted() const
{
    QHash<QByteArray, int> counts;
    for (const Received &one : received()) {
        const bool isTaken = one.answered && (one.status == 0 || (one.status & 0xf000) == 0xb000);
        counts[one.sopInstance] += isTaken ? 1 : 0;
    }
    return counts;
}

void FaultyPeer::listen()
{
    while (!m_stop) {
        T_ASC_Association *association = nullptr;
        const OFCondition result = ASC_receiveAssociation(
            m_network, &association, longestPdu, nullptr, nullptr, OFFalse, DUL_NOBLOCK, 1);
        if (result.good()) {
            const int number = ++m_associations;
            m_servers.emplace_back([this, association, number] { serve(association, number); });
        } else if (association) {
            ASC_dropAssociation(association);
            ASC_destroyAssociation(&association);
        }
    }
}

void FaultyPeer::acceptContexts(T_ASC_Association *association)
{
    const int count = ASC_countPresentationContexts(association->params);
    m_mostContexts = std::max(m_mostContexts.load(), count);
    for (int at = 0; at < count; ++at) {
        T_ASC_PresentationContext context = {};
        ASC_getPresentationContext(association->params, at, &context);
        const char *chosen = nullptr;
        for (int syntax = 0; syntax < context.transferSyntaxCount && !chosen; ++syntax) {
            const char *offered = context.proposedTransferSyntaxes[syntax];
            const bool isPlain =
                qstrcmp(offered, explicitLittleEndian) == 0 || qstrcmp(offered, implicitLittleEndian) == 0;
            chosen = isPlain || m_takes == Takes::Everything ? offered : nullptr;
        }
        if (chosen) {
            const std::string syntax(chosen);
            ASC_acceptPresentationContext(association->params, context.presentationContextID, syntax.c_str());
        } else {
            ASC_refusePresentationContext(
                association->params, context.presentationContextID, ASC_P_TRANSFERSYNTAXESNOTSUPPORTED);
        }
    }
}

void FaultyPeer::serve(T_ASC_Association *association, int number)
{
    acceptContexts(association);
    if (ASC_acknowledgeAssociation(association).good()) {
        while (!m_stop && answerNext(association, number)) { }
    }
    ASC_dropAssociation(association);
    ASC_destroyAssociation(&association);
}

bool FaultyPeer::answerNext(T_ASC_Association *association, int number)
{
    T_ASC_PresentationContextID id = 0;
    T_DIMSE_Message message = {};
    const OFCondition result =
        DIMSE_receiveCommand(association, DIMSE_NONBLOCKING, 1, &id, &message, nullptr);
    if (result == DIMSE_NODATAAVAILABLE) {
        return true;
    }
    if (result == DUL_PEERREQUESTEDRELEASE) {
        ASC_acknowledgeRelease(association);
    }
    if (result.bad() || message.CommandField != DIMSE_C_STORE_RQ) {
        return false;
    }
    DcmDataset *data = nullptr;
    if (DIMSE_receiveDataSetInMemory(association, DIMSE_NONBLOCKING, 10, &id, &data, nullptr, nullptr)
            .bad()) {
        return false;
    }
    delete data;
    T_DIMSE_C_StoreRQ &request = message.msg.CStoreRQ;
    T_ASC_PresentationContext context = {};
    ASC_findAcceptedPresentationContext(association->params, id, &context);
    Received received{request.AffectedSOPInstanceUID, context.acceptedTransferSyntax, number, 0, false};
    PeerAction action;
    {
        const std::lock_guard lock(m_mutex);
        int earlier = 0;
        for (const Received &one : qAsConst(m_received)) {
            earlier += one.sopInstance == received.sopInstance ? 1 : 0;
        }
        if (m_script) {
            action = m_script(m_received.size() + 1, received.sopInstance, earlier);
        }
        received.status = action.status;
        received.answered = action.kind == PeerAction::Kind::Answer;
        m_received.append(received);
    }
    if (action.kind != PeerAction::Kind::Answer) {
        return action.kind == PeerAction::Kind::BeSilent;
    }
    T_DIMSE_C_StoreRSP response = {};
    response.DimseStatus = action.status;
    return DIMSE_sendStoreResponse(association, id, &request, &response, nullptr).good();
}
