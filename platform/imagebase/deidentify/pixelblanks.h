#pragma once

#include "burnedin.h"
#include "filewindow.h"
#include "pixelplace.h"

class DcmItem;

/// What stands among the bytes of pixels without being part of a picture: it is not copied.
class PixelBlanks
{
public:
    /// Looks at a file whose data set is still as it was.
    /// @param transferSyntax as the file declares it
    void find(DcmItem &dataset, FileWindow &file, const PixelBytes &pixels, ElementEncoding encoding,
        const QByteArray &transferSyntax);

    /// Whether something stays that may tell; No where all is found.
    BurnedIn doubt() const { return m_doubt; }
    bool isEmpty() const { return m_ranges.isEmpty() && m_mask.isEmpty(); }
    /// Sets such bytes to zero. @param offset of the bytes in the file; asked in rising order
    void apply(QByteArray &bytes, qint64 offset);

private:
    void findOverlays(DcmItem &dataset, const PixelBytes::Range &range, bool isPacked, bool isBig);
    void findSlack(DcmItem &dataset, const PixelBytes::Range &range);
    void findTexts(FileWindow &file, const PixelBytes::Range &range, const QByteArray &transferSyntax);

    QVector<PixelBytes::Range> m_ranges; ///< in order
    int m_next = 0; ///< the first that is not behind
    QByteArray m_mask; ///< of a sample, byte by byte
    PixelBytes::Range m_masked;
    BurnedIn m_doubt = BurnedIn::No;
};
