#pragma once

#include "boundedparse.h"
#include "deidentifier.h"
#include "filewindow.h"
#include "pixelplace.h"

#include <QElapsedTimer>

#include <memory>
#include <optional>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dctk.h>

/// A file that is to become anonymous: its data set up to the pixels, and where those stand. Used on a deep
/// stack.
class DeidentifySource
{
public:
    /// What a packed data set may have, packed and unpacked.
    static constexpr qint64 mostPacked = qint64(64) * 1024 * 1024;
    static constexpr qint64 mostUnpacked = qint64(256) * 1024 * 1024;

    DeidentifySource(QByteArray path, const std::atomic<bool> &cancelled);

    /// @return None where the whole file is understood; detail() then is empty
    DeidentifyProblem open();
    QString detail() const { return m_detail; }

    DcmDataset &dataset() { return *m_format.getDataset(); }
    QByteArray sopClass();
    /// How the data set is written, and will be again.
    E_TransferSyntax encoding() const { return m_encoding; }
    /// What the file meta information has to say of it.
    QByteArray transferSyntax() const { return m_transferSyntax; }
    const PixelBytes &pixels() const { return m_pixels; }
    /// Copies the pixels behind what an open file has. @return errno, 0 for success
    int copyPixels(int to);

private:
    DeidentifyProblem unpack();
    DeidentifyProblem parse();
    DeidentifyProblem checkSyntax();
    DeidentifyProblem checkObject();

    const QByteArray m_path;
    const std::atomic<bool> &m_cancelled;
    FileWindow m_window;
    std::optional<MemoryFile> m_unpacked;
    DcmFileFormat m_format;
    PixelBytes m_pixels;
    QByteArray m_transferSyntax;
    E_TransferSyntax m_encoding = EXS_LittleEndianExplicit;
    QString m_detail;
};
