#pragma once

#include <QByteArray>

/**
 * Puts DICOM files together byte by byte, right or wrong as a test wants them: explicit little endian unless
 * said otherwise. Lengths are those given or those of the values; nothing is checked.
 */
class RawDicom
{
public:
    /// Preamble, mark and file meta information for a syntax, then an empty data set.
    explicit RawDicom(const QByteArray &transferSyntax = "1.2.840.10008.1.2.1");

    RawDicom &explicitElement(quint32 tag, const char *vr, const QByteArray &value);
    RawDicom &implicitElement(quint32 tag, const QByteArray &value);
    RawDicom &raw(const QByteArray &bytes);
    /// The three UIDs of a valid object and what else an image needs, from group 0020 on.
    RawDicom &identification();

    QByteArray bytes() const { return m_bytes; }
    int size() const { return m_bytes.size(); }

    static QByteArray tagBytes(quint32 tag);
    static QByteArray number(quint32 value, int bytes);

private:
    QByteArray m_bytes;
};
