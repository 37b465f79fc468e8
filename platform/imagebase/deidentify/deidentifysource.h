#pragma once

#include "boundedparse.h"
#include "deidentifier.h"
#include "filewindow.h"
#include "pixelblanks.h"
#include "pixelplace.h"

#include <QElapsedTimer>

#include <mutex>
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
    /// Whether the bytes of the pixels may tell something that is not taken out of them.
    BurnedIn doubt() const { return m_blanks.doubt(); }
    /// Copies the pixels, without what only stands beside them, behind what an open file has. @return errno,
    /// 0 for success
    int copyPixels(int to);

private:
    DeidentifyProblem unpack();
    void waitForTurn();
    DeidentifyProblem parse();
    DeidentifyProblem checkSyntax();
    DeidentifyProblem checkObject();

    std::unique_lock<std::mutex> m_turn; ///< held while this is a large one, until all of it is gone
    const QByteArray m_path;
    const std::atomic<bool> &m_cancelled;
    FileWindow m_window;
    std::optional<MemoryFile> m_unpacked;
    DcmFileFormat m_format;
    PixelBytes m_pixels;
    PixelBlanks m_blanks;
    QByteArray m_transferSyntax;
    E_TransferSyntax m_encoding = EXS_LittleEndianExplicit;
    QString m_detail;
};
