#include "strangearchive.h"

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dcdatset.h>
#include <dcmtk/dcmdata/dcuid.h>
#include <dcmtk/dcmnet/dimse.h>

#include <vector>

namespace {

constexpr int silenceS = 20;

T_ASC_PresentationContextID contextId(int context)
{
    return static_cast<T_ASC_PresentationContextID>(context);
}

} // namespace

bool StrangeArchive::Query::answer(quint16 status, DcmDataset *data) const
{
    T_DIMSE_C_FindRSP response = {};
    response.MessageIDBeingRespondedTo = m_request.MessageID;
    qstrncpy(
        response.AffectedSOPClassUID, m_request.AffectedSOPClassUID, sizeof response.AffectedSOPClassUID);
    response.DataSetType = data ? DIMSE_DATASET_PRESENT : DIMSE_DATASET_NULL;
    response.DimseStatus = status;
    return DIMSE_sendFindResponse(m_association, contextId(m_context), &m_request, &response, data, nullptr)
        .good();
}

bool StrangeArchive::Query::answerAsEcho() const
{
    T_DIMSE_C_EchoRQ request = {};
    request.MessageID = m_request.MessageID;
    return DIMSE_sendEchoResponse(m_association, contextId(m_context), &request, STATUS_Success, nullptr)
        .good();
}

void StrangeArchive::Query::leave() const
{
    ASC_dropAssociation(m_association);
}

StrangeArchive::StrangeArchive(
    quint16 port, Script script, const QVector<QByteArray> &models, int associations)
    : m_script(std::move(script))
    , m_models(models)
    , m_associations(associations)
{
    if (ASC_initializeNetwork(NET_ACCEPTOR, port, silenceS, &m_network).bad()) {
        qFatal("port %d is not free", port);
    }
    m_thread = std::thread([this] {
        for (int i = 0; i < m_associations; ++i) {
            serve();
        }
    });
}

StrangeArchive::~StrangeArchive()
{
    m_thread.join();
    ASC_dropNetwork(&m_network);
}

void StrangeArchive::serve()
{
    T_ASC_Association *association = nullptr;
    const char *syntaxes[] = {UID_LittleEndianExplicitTransferSyntax};
    std::vector<const char *> classes(m_models.begin(), m_models.end());
    T_DIMSE_Message message = {};
    T_ASC_PresentationContextID context = 0;
    DcmDataset *detail = nullptr;
    const bool isAsked = ASC_receiveAssociation(m_network, &association, ASC_DEFAULTMAXPDU, nullptr, nullptr,
                             OFFalse, DUL_NOBLOCK, silenceS)
                             .good()
        && ASC_acceptContextsWithPreferredTransferSyntaxes(
            association->params, classes.data(), int(classes.size()), syntaxes, 1)
               .good()
        && ASC_acknowledgeAssociation(association).good()
        && DIMSE_receiveCommand(association, DIMSE_NONBLOCKING, silenceS, &context, &message, &detail).good();
    delete detail;
    if (isAsked) {
        DcmDataset *question = nullptr;
        T_ASC_PresentationContextID id = 0;
        DIMSE_receiveDataSetInMemory(
            association, DIMSE_NONBLOCKING, silenceS, &id, &question, nullptr, nullptr);
        delete question;
        m_script({association, context, message.msg.CFindRQ});
    }
    if (association) {
        ASC_dropAssociation(association);
        ASC_destroyAssociation(&association);
    }
}
