#include "storescu.h"

#include "dcmtkcodecs.h"
#include "dicomuids.h"
#include "filewindow.h"
#include "storemessage.h"
#include "transfersyntax.h"

#include <QFile>

#include <algorithm>

#include <fcntl.h>
#include <unistd.h>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dctk.h>
#include <dcmtk/dcmnet/dimse.h>

namespace {

/// More than that is not decompressed to be sent: it would have to be held in memory.
constexpr double mostDecompressed = 1024.0 * 1024 * 1024;

bool canBeWrittenAnew(const QByteArray &transferSyntax)
{
    const TransferSyntax::Packing packing = TransferSyntax::packingOf(transferSyntax);
    return packing == TransferSyntax::Packing::Native || packing == TransferSyntax::Packing::Dcmtk;
}

double numberOf(DcmDataset &data, const DcmTagKey &tag)
{
    OFString text;
    data.findAndGetOFString(tag, text);
    return std::max(1.0, QByteArray(text.c_str()).toDouble());
}

double decompressedSize(DcmDataset &data)
{
    return numberOf(data, DCM_Rows) * numberOf(data, DCM_Columns) * numberOf(data, DCM_SamplesPerPixel)
        * numberOf(data, DCM_NumberOfFrames) * numberOf(data, DCM_BitsAllocated) / 8;
}

StoreOutcome problem(StoreProblem why, const QString &detail = QString())
{
    StoreOutcome outcome;
    outcome.problem = why;
    outcome.detail = detail;
    return outcome;
}

} // namespace

struct StoreScu::Private
{
    ScuAssociation &association;
    StoreFileReader reader;
    StoreFile ahead; ///< read while the peer worked

    StoreFile fileAt(const QByteArray &path);
    void readAhead(const QByteArray &path);
    StoreOutcome sendAsItIs(const StoreFile &file, int context);
    StoreOutcome sendWrittenAnew(const StoreFile &file);
    StoreOutcome answer(quint16 message, const QByteArray &next);
    StoreOutcome broken(NetworkFailure failure);
};

StoreFile StoreScu::Private::fileAt(const QByteArray &path)
{
    StoreFile file = std::move(ahead);
    ahead = {};
    return file.path == path ? file : reader.read(path);
}

void StoreScu::Private::readAhead(const QByteArray &path)
{
    constexpr off_t far = off_t(16) * 1024 * 1024;
    if (path.isEmpty()) {
        return;
    }
    ahead = reader.read(path);
    if (ahead.size <= FileWindow::windowSize) {
        return; // is in memory by now
    }
    const int file = ::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file >= 0) {
        posix_fadvise(file, 0, far, POSIX_FADV_WILLNEED);
        ::close(file);
    }
}

StoreOutcome StoreScu::Private::broken(NetworkFailure failure)
{
    association.close();
    StoreOutcome outcome;
    outcome.problem = StoreProblem::Network;
    outcome.detail = failure.detail;
    outcome.network = std::move(failure);
    return outcome;
}

StoreOutcome StoreScu::Private::sendAsItIs(const StoreFile &file, int context)
{
    StoreMessage message(association, file, context);
    if (!message.open()) {
        return problem(QFile::exists(QFile::decodeName(file.path)) ? StoreProblem::FileUnreadable
                                                                   : StoreProblem::FileGone,
            message.systemError());
    }
    const OFCondition result = message.send();
    if (result.good()) {
        return {};
    }
    if (!message.systemError().isEmpty()) {
        // Half a message cannot be taken back.
        association.close();
        return problem(StoreProblem::FileUnreadable, message.systemError());
    }
    return broken(association.failureOf(result));
}

/// For peers that take it only uncompressed, and for files that are not quite as they should be.
StoreOutcome StoreScu::Private::sendWrittenAnew(const StoreFile &file)
{
    int context = association.contextFor(file.kind.sopClass, DicomUid::explicitLittleEndian);
    QByteArray syntax = DicomUid::explicitLittleEndian;
    if (context == 0) {
        context = association.contextFor(file.kind.sopClass, DicomUid::implicitLittleEndian);
        syntax = DicomUid::implicitLittleEndian;
    }
    if (context == 0 || !canBeWrittenAnew(file.kind.transferSyntax)) {
        return problem(association.accepts(file.kind.sopClass) ? StoreProblem::SyntaxNotAccepted
                                                               : StoreProblem::ClassNotAccepted);
    }
    DcmtkCodecs::registerDecoders();
    DcmFileFormat format;
    const OFCondition loaded = format.loadFile(OFFilename(file.path.constData()));
    if (loaded.bad()) {
        return problem(StoreProblem::FileUnreadable, QString::fromLatin1(loaded.text()));
    }
    DcmDataset &data = *format.getDataset();
    const bool isCompressed = DcmXfer(data.getOriginalXfer()).isEncapsulated();
    if (isCompressed && decompressedSize(data) > mostDecompressed) {
        return problem(StoreProblem::TooLarge);
    }
    if (data.chooseRepresentation(DcmXfer(syntax.constData()).getXfer(), nullptr).bad()) {
        return problem(StoreProblem::SyntaxNotAccepted);
    }
    T_DIMSE_Message request = {};
    StoreMessage::describe(file, association.native()->nextMsgID, request);
    const OFCondition result = DIMSE_sendMessageUsingMemoryData(association.native(),
        static_cast<T_ASC_PresentationContextID>(context), &request, nullptr, &data, nullptr, nullptr);
    return result.good() ? StoreOutcome() : broken(association.failureOf(result));
}

StoreOutcome StoreScu::Private::answer(quint16 message, const QByteArray &next)
{
    readAhead(next);
    int context = 0;
    T_DIMSE_Message reply = {};
    DcmDataset *detail = nullptr;
    const OFCondition result =
        association.receiveCommand(ScuAssociation::CommandSize::Bare, context, reply, &detail);
    const std::unique_ptr<DcmDataset> owned(detail);
    if (result.bad()) {
        return broken(association.failureOf(result));
    }
    if (reply.CommandField != DIMSE_C_STORE_RSP || reply.msg.CStoreRSP.MessageIDBeingRespondedTo != message) {
        return broken({NetworkProblem::BadAnswer, {}});
    }
    StoreOutcome outcome;
    outcome.status = reply.msg.CStoreRSP.DimseStatus;
    OFString comment;
    if (detail && detail->findAndGetOFString(DCM_ErrorComment, comment).good()) {
        outcome.detail = QString::fromLatin1(comment.c_str());
    }
    outcome.problem = StoreMessage::problemOf(outcome.status);
    return outcome;
}

StoreScu::StoreScu(ScuAssociation &association)
    : d(new Private{association, {}, {}})
{ }

StoreScu::~StoreScu() = default;

QVector<ScuContext> StoreScu::contextsFor(const QVector<StoreKind> &kinds)
{
    QVector<ScuContext> contexts;
    const auto add = [&contexts](const ScuContext &context) {
        if (contexts.size() < ScuAssociation::mostContexts && !contexts.contains(context)) {
            contexts.append(context);
        }
    };
    for (const StoreKind &kind : kinds) {
        add({kind.sopClass, {kind.transferSyntax}, false});
        if (canBeWrittenAnew(kind.transferSyntax)) {
            add({kind.sopClass, {DicomUid::explicitLittleEndian, DicomUid::implicitLittleEndian}, false});
        }
    }
    return contexts;
}

StoreOutcome StoreScu::send(const QByteArray &path, const QByteArray &next)
{
    if (!d->association.isOpen()) {
        return d->broken({NetworkProblem::PeerGone, {}});
    }
    const StoreFile file = d->fileAt(path);
    if (file.problem != StoreProblem::None) {
        return problem(file.problem, file.detail);
    }
    T_ASC_Association *native = d->association.native();
    const int context = d->association.contextFor(file.kind.sopClass, file.kind.transferSyntax);
    const quint16 message = native->nextMsgID;
    StoreOutcome sent =
        context != 0 && file.dataSet > 0 ? d->sendAsItIs(file, context) : d->sendWrittenAnew(file);
    if (!sent.isAccepted()) {
        return sent;
    }
    ++native->nextMsgID;
    return d->answer(message, next);
}
