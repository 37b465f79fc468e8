#include "echoscu.h"

#include "dicomuids.h"

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmnet/dimse.h>

EchoScu::EchoScu(const DicomNode &node, const ScuOptions &options)
    : m_association(node, options)
{ }

NetworkFailure EchoScu::run()
{
    NetworkFailure failure =
        m_association.open({{UID_VerificationSOPClass, {DicomUid::implicitLittleEndian}, false}});
    if (!failure.isNone()) {
        return failure;
    }
    T_ASC_Association *association = m_association.native();
    DIC_US status = 0;
    DcmDataset *detail = nullptr;
    m_association.limitCommand(ScuAssociation::CommandSize::Bare);
    const OFCondition result = DIMSE_echoUser(association, association->nextMsgID++, DIMSE_NONBLOCKING,
        m_association.options().requestMs / 1000, &status, &detail);
    delete detail;
    m_association.endOfLimit();
    failure = m_association.failureOf(result);
    if (failure.isNone() && status != STATUS_Success) {
        failure = {NetworkProblem::BadAnswer, QStringLiteral("0x%1").arg(status, 4, 16, QLatin1Char('0'))};
    }
    if (failure.isNone()) {
        m_association.release();
    } else {
        m_association.close();
    }
    return failure;
}
