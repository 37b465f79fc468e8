#include "deidentificationmarks.h"

#include <QByteArray>
#include <QVector>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dctk.h>

namespace {

struct Code
{
    const char *value;
    const char *meaning;
};

QVector<Code> codesOf(const DeidentifyOptions &options, bool hadContent)
{
    QVector<Code> codes{{"113100", "Basic Application Confidentiality Profile"}};
    if (hadContent) {
        codes.append(Code{"113104", "Clean Structured Content Option"});
    }
    if (options.cleanDescriptors) {
        codes.append(Code{"113105", "Clean Descriptors Option"});
    }
    if (options.shiftDates) {
        codes.append(Code{"113107", "Retain Longitudinal Temporal Information Modified Dates Option"});
    }
    if (options.keepCharacteristics) {
        codes.append(Code{"113108", "Retain Patient Characteristics Option"});
    }
    return codes;
}

} // namespace

void markDeidentified(DcmItem &dataset, const DeidentifyOptions &options, bool hadContent)
{
    const DcmTagKey timesModified(0x0028, 0x0303);
    dataset.putAndInsertString(DCM_PatientIdentityRemoved, "YES");
    dataset.putAndInsertString(DCM_DeidentificationMethod, "DICOM PS3.15 Basic Application Confidentiality");
    dataset.putAndInsertString(timesModified, options.shiftDates ? "MODIFIED" : "REMOVED");
    delete dataset.remove(DCM_DeidentificationMethodCodeSequence);
    long place = 0;
    for (const Code &code : codesOf(options, hadContent)) {
        DcmItem *item = nullptr;
        if (dataset.findOrCreateSequenceItem(DCM_DeidentificationMethodCodeSequence, item, place++).good()) {
            item->putAndInsertString(DCM_CodeValue, code.value);
            item->putAndInsertString(DCM_CodingSchemeDesignator, "DCM");
            item->putAndInsertString(DCM_CodeMeaning, code.meaning);
        }
    }
}
