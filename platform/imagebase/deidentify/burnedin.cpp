#include "burnedin.h"

#include "elementtext.h"

#include <QByteArray>
#include <QList>

#include <algorithm>

namespace {

/// Kinds of which devices write texts into the pictures, or that are photographs or scans of paper.
bool isSuspect(const QByteArray &modality, const QByteArray &sopClass)
{
    static const QList<QByteArray> modalities{
        "US", "IVUS", "SC", "XC", "ES", "GM", "OP", "OT", "XA", "RF", "DG", "HC", "DOC", "SM", "CF", "DF"};
    static const QList<QByteArray> classes{
        "1.2.840.10008.5.1.4.1.1.7", // secondary captures
        "1.2.840.10008.5.1.4.1.1.6", // ultrasound
        "1.2.840.10008.5.1.4.1.1.3", // ultrasound, several frames
        "1.2.840.10008.5.1.4.1.1.12", // angiography and fluoroscopy
        "1.2.840.10008.5.1.4.1.1.77" // visible light
    };
    return modalities.contains(modality)
        || std::any_of(classes.cbegin(), classes.cend(),
            [&](const QByteArray &root) { return sopClass == root || sopClass.startsWith(root + '.'); });
}

bool hasPictures(DcmItem &dataset)
{
    return dataset.tagExists(DCM_Rows) || dataset.tagExists(DCM_Columns);
}

} // namespace

BurnedIn burnedInOf(DcmItem &dataset)
{
    const DcmTagKey recognizable(0x0028, 0x0302);
    const QByteArray declared = ElementText::of(dataset, DCM_BurnedInAnnotation).trimmed().toUpper();
    if (declared == "YES" || ElementText::of(dataset, recognizable).trimmed().toUpper() == "YES") {
        return BurnedIn::Declared;
    }
    const bool isSilent = declared != "NO" && hasPictures(dataset);
    return isSilent
            && isSuspect(ElementText::of(dataset, DCM_Modality).trimmed(),
                ElementText::of(dataset, DCM_SOPClassUID).trimmed())
        ? BurnedIn::Possible
        : BurnedIn::No;
}
