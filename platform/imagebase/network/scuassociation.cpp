#include "scuassociation.h"

#include "dcmtklog.h"
#include "scuconnection.h"
#include "scufailure.h"
#include "scurequest.h"

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmnet/assoc.h>
#include <dcmtk/dcmnet/cond.h>
#include <dcmtk/dcmnet/dimse.h>

namespace {

/// How long a peer that is told of the end may take to close the line itself.
constexpr int closingMs = 1000;

constexpr qint64 bareCommandBytes = qint64(32) * 1024; ///< a command is a few hundred
constexpr int pdusWithCommand = 3;

int seconds(int milliseconds)
{
    return (milliseconds + 999) / 1000;
}

} // namespace

struct ScuAssociation::Private
{
    const DicomNode node;
    const ScuOptions options;
    AbortSwitch abort;
    std::unique_ptr<ScuTransport> transport;
    T_ASC_Network *network = nullptr;
    T_ASC_Association *association = nullptr;
    QVector<ScuContext> offered;

    NetworkFailure request();
    ScuConnection *line() const { return ScuConnection::of(association); }
    void drop();
};

NetworkFailure ScuAssociation::Private::request()
{
    T_ASC_Parameters *parameters = nullptr;
    OFCondition result = ASC_initializeNetwork(NET_REQUESTOR, 0, seconds(options.associationMs), &network);
    if (result.good()) {
        DUL_setTransportLayer(network->network, transport.get(), 0);
        result = ScuRequest::make(node, options, offered, transport->address(), &parameters);
    }
    if (result.good()) {
        result = ASC_requestAssociation(
            network, parameters, &association, nullptr, nullptr, DUL_NOBLOCK, seconds(options.associationMs));
    } else if (parameters) {
        ASC_destroyAssociationParameters(&parameters);
    }
    if (abort.isTriggered()) {
        return {NetworkProblem::Stopped, {}};
    }
    if (result == DUL_ASSOCIATIONREJECTED && association) {
        return ScuFailure::ofRejection(association->params);
    }
    if (result.good() && ASC_countAcceptedPresentationContexts(association->params) == 0) {
        ASC_abortAssociation(association);
        return {NetworkProblem::NoContext, {}};
    }
    if (result.bad()) {
        const bool isSilent = transport->timedOut();
        return {isSilent ? NetworkProblem::NoAnswer : NetworkProblem::PeerGone,
            QString::fromLatin1(result.text())};
    }
    return {};
}

void ScuAssociation::Private::drop()
{
    if (association) {
        ASC_dropAssociation(association);
        ASC_destroyAssociation(&association);
    }
    if (network) {
        ASC_dropNetwork(&network);
    }
    association = nullptr;
    network = nullptr;
    transport.reset();
}

ScuAssociation::ScuAssociation(DicomNode node, ScuOptions options)
    : d(new Private{std::move(node), std::move(options), {}, {}, nullptr, nullptr, {}})
{
    silenceDcmtk();
}

ScuAssociation::~ScuAssociation()
{
    release();
}

const DicomNode &ScuAssociation::node() const
{
    return d->node;
}

const ScuOptions &ScuAssociation::options() const
{
    return d->options;
}

NetworkFailure ScuAssociation::open(const QVector<ScuContext> &contexts)
{
    close();
    Q_ASSERT(contexts.size() <= mostContexts);
    if (!ScuRequest::isAddressGood(d->node, d->options)) {
        return {NetworkProblem::BadAddress, {}};
    }
    if (isAborted()) {
        return {NetworkProblem::Stopped, {}};
    }
    NetworkFailure failure;
    OwnedSocket socket = connectTo(d->node, d->options.connectMs, d->abort, failure);
    if (!failure.isNone()) {
        return failure;
    }
    d->offered = contexts;
    d->transport = std::make_unique<ScuTransport>(std::move(socket), d->abort, d->options.requestMs);
    failure = d->request();
    if (!failure.isNone()) {
        d->drop();
    }
    endOfLimit();
    return failure;
}

bool ScuAssociation::isOpen() const
{
    return d->association != nullptr;
}

const QVector<ScuContext> &ScuAssociation::offered() const
{
    return d->offered;
}

int ScuAssociation::contextFor(const QByteArray &abstractSyntax, const QByteArray &transferSyntax) const
{
    for (int number = 0; number < d->offered.size() && d->association; ++number) {
        if (d->offered[number].abstractSyntax != abstractSyntax) {
            continue;
        }
        const int id = ScuRequest::contextId(number);
        T_ASC_PresentationContext context = {};
        if (ASC_findAcceptedPresentationContext(
                d->association->params, static_cast<T_ASC_PresentationContextID>(id), &context)
                .good()
            && transferSyntax == context.acceptedTransferSyntax) {
            return id;
        }
    }
    return 0;
}

bool ScuAssociation::accepts(const QByteArray &abstractSyntax) const
{
    return d->association
        && ASC_findAcceptedPresentationContextID(d->association, abstractSyntax.constData()) != 0;
}

void ScuAssociation::release()
{
    if (d->association && !isAborted()) {
        if (ScuConnection *line = d->line()) {
            line->limit(ScuConnection::negotiationBytes, d->options.requestMs);
        }
        ASC_releaseAssociation(d->association);
    }
    d->drop();
}

void ScuAssociation::close()
{
    if (d->association && !isAborted()) {
        if (ScuConnection *line = d->line()) {
            line->setPatience(closingMs);
            line->limit(ScuConnection::negotiationBytes, closingMs);
        }
        ASC_abortAssociation(d->association);
    }
    d->drop();
}

void ScuAssociation::abort()
{
    d->abort.trigger();
}

bool ScuAssociation::isAborted() const
{
    return d->abort.isTriggered();
}

bool ScuAssociation::waitForData(int milliseconds) const
{
    ScuConnection *line = d->line();
    return line && line->waitForData(milliseconds);
}

void ScuAssociation::joinWrites(bool on) const
{
    if (ScuConnection *line = d->line()) {
        line->join(on);
    }
}

void ScuAssociation::limitCommand(CommandSize size) const
{
    if (ScuConnection *line = d->line()) {
        const qint64 withData = pdusWithCommand * qint64(d->options.longestPdu);
        line->limit(size == CommandSize::Bare ? bareCommandBytes : withData, 2 * d->options.requestMs);
    }
}

void ScuAssociation::endOfLimit() const
{
    if (ScuConnection *line = d->line()) {
        line->unlimit();
    }
}

OFCondition ScuAssociation::receiveCommand(
    CommandSize size, int &context, T_DIMSE_Message &message, DcmDataset **detail) const
{
    T_ASC_PresentationContextID id = 0;
    limitCommand(size);
    const OFCondition result = DIMSE_receiveCommand(
        d->association, DIMSE_NONBLOCKING, seconds(d->options.requestMs), &id, &message, detail);
    endOfLimit();
    context = id;
    return result;
}

T_ASC_Association *ScuAssociation::native() const
{
    return d->association;
}

NetworkFailure ScuAssociation::failureOf(const OFCondition &condition) const
{
    if (condition.good()) {
        return {};
    }
    if (isAborted()) {
        return {NetworkProblem::Stopped, {}};
    }
    if ((d->transport && d->transport->timedOut()) || condition == DUL_READTIMEOUT
        || condition == DIMSE_NODATAAVAILABLE) {
        return {NetworkProblem::NoAnswer, QString::fromLatin1(condition.text())};
    }
    return ScuFailure::ofLine(condition);
}
