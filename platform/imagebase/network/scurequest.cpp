#include "scurequest.h"

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmnet/assoc.h>

namespace {

OFCondition addContext(T_ASC_Parameters *parameters, int number, const ScuContext &context)
{
    QVector<const char *> syntaxes;
    for (const QByteArray &syntax : context.transferSyntaxes) {
        syntaxes.append(syntax.constData());
    }
    return ASC_addPresentationContext(parameters,
        static_cast<T_ASC_PresentationContextID>(ScuRequest::contextId(number)),
        context.abstractSyntax.constData(), syntaxes.data(), syntaxes.size(),
        context.weProvide ? ASC_SC_ROLE_SCP : ASC_SC_ROLE_DEFAULT);
}

} // namespace

bool ScuRequest::isAddressGood(const DicomNode &node, const ScuOptions &options)
{
    return isAeTitle(node.aeTitle.trimmed()) && isAeTitle(options.ownAeTitle.trimmed())
        && !node.host.trimmed().isEmpty() && node.port > 0 && node.port <= highestPort;
}

OFCondition ScuRequest::make(const DicomNode &node, const ScuOptions &options,
    const QVector<ScuContext> &contexts, const QByteArray &peerAddress, T_ASC_Parameters **parameters)
{
    OFCondition result = ASC_createAssociationParameters(parameters, options.longestPdu);
    if (result.bad()) {
        return result;
    }
    ASC_setAPTitles(*parameters, options.ownAeTitle.trimmed().toLatin1().constData(),
        node.aeTitle.trimmed().toLatin1().constData(), nullptr);
    ASC_setPresentationAddresses(*parameters, "localhost", peerAddress.constData());
    for (int number = 0; number < contexts.size() && result.good(); ++number) {
        result = addContext(*parameters, number, contexts[number]);
    }
    return result;
}
