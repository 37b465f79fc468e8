#include "objectkind.h"

#include <QLatin1String>

namespace {

struct ClassKind
{
    const char *prefix; ///< a whole UID, or one that ends with a dot
    ObjectKind kind;
};

/// The first that fits counts.
constexpr ClassKind classKinds[] = {
    {"1.2.840.10008.5.1.4.1.1.88.59", ObjectKind::KeyObjects},
    {"1.2.840.10008.5.1.4.1.1.88.", ObjectKind::Report},
    {"1.2.840.10008.5.1.4.1.1.104.", ObjectKind::Document},
    {"1.2.840.10008.5.1.4.1.1.11.", ObjectKind::PresentationState},
    {"1.2.840.10008.5.1.4.1.1.9.", ObjectKind::Waveform},
    {"1.2.840.10008.5.1.4.1.1.481.3", ObjectKind::Structures},
    {"1.2.840.10008.5.1.4.1.1.481.4", ObjectKind::Plan},
    {"1.2.840.10008.5.1.4.1.1.481.5", ObjectKind::Plan},
    {"1.2.840.10008.5.1.4.1.1.481.6", ObjectKind::Plan},
    {"1.2.840.10008.5.1.4.1.1.481.7", ObjectKind::Plan},
    {"1.2.840.10008.5.1.4.1.1.481.8", ObjectKind::Plan},
    {"1.2.840.10008.5.1.4.1.1.481.9", ObjectKind::Plan},
    {"1.2.840.10008.5.1.4.1.1.66.4", ObjectKind::Image},
    {"1.2.840.10008.5.1.4.1.1.66.7", ObjectKind::Image},
    {"1.2.840.10008.5.1.4.1.1.66.1", ObjectKind::Registration},
    {"1.2.840.10008.5.1.4.1.1.66.3", ObjectKind::Registration},
    {"1.2.840.10008.5.1.4.1.1.66.", ObjectKind::Measurements},
    {"1.2.840.10008.5.1.4.1.1.66", ObjectKind::RawData},
    {"1.2.840.10008.5.1.4.1.1.67", ObjectKind::RawData},
    {"1.2.840.10008.5.1.4.1.1.4.2", ObjectKind::Measurements},
    {"1.2.840.10008.5.1.4.1.1.91.", ObjectKind::Measurements},
    {"1.2.840.10008.5.1.4.1.1.200.", ObjectKind::Protocol},
    {"1.2.840.10008.5.1.4.38.", ObjectKind::Protocol},
    {"1.2.840.10008.5.1.4.39.", ObjectKind::Palette},
    {"1.2.840.10008.1.3.10", ObjectKind::Directory},
};

} // namespace

ObjectKind kindOfClass(const QString &sopClassUid)
{
    for (const ClassKind &entry : classKinds) {
        const QLatin1String prefix(entry.prefix);
        if (prefix.endsWith(QLatin1Char('.')) ? sopClassUid.startsWith(prefix) : sopClassUid == prefix) {
            return entry.kind;
        }
    }
    return ObjectKind::Image;
}
