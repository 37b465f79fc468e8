#include "filemeta.h"

#include <QtEndian>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dcuid.h>

namespace {

constexpr int preambleLength = 128;
constexpr quint16 metaGroup = 0x0002;

template <typename Number>
void append(QByteArray &to, Number number)
{
    const Number little = qToLittleEndian(number);
    to.append(reinterpret_cast<const char *>(&little), sizeof little);
}

void appendHead(QByteArray &to, quint16 element, const char *vr)
{
    append(to, metaGroup);
    append(to, element);
    to.append(vr);
}

/// Texts have an even length; UIDs are padded with zero, others with a space.
void appendText(QByteArray &to, quint16 element, const char *vr, QByteArray text)
{
    if (text.isEmpty()) {
        return;
    }
    if (text.size() % 2 != 0) {
        text.append(qstrcmp(vr, "UI") == 0 ? '\0' : ' ');
    }
    appendHead(to, element, vr);
    append(to, static_cast<quint16>(text.size()));
    to.append(text);
}

} // namespace

QByteArray fileMeta(const FileMetaValues &values)
{
    QByteArray group;
    appendHead(group, 0x0001, "OB");
    append(group, quint16(0));
    append(group, quint32(2));
    group.append("\0\1", 2);
    appendText(group, 0x0002, "UI", values.sopClass);
    appendText(group, 0x0003, "UI", values.sopInstance);
    appendText(group, 0x0010, "UI", values.transferSyntax);
    appendText(group, 0x0012, "UI", OFFIS_IMPLEMENTATION_CLASS_UID);
    appendText(group, 0x0013, "SH", OFFIS_DTK_IMPLEMENTATION_VERSION_NAME);
    appendText(group, 0x0016, "AE", values.sourceAeTitle.trimmed());

    QByteArray meta(preambleLength, '\0');
    meta.append("DICM");
    appendHead(meta, 0x0000, "UL");
    append(meta, quint16(4));
    append(meta, static_cast<quint32>(group.size()));
    return meta + group;
}
