#include "dummyvalue.h"

#include "elementtext.h"
#include "valuegrammar.h"

#include <QDate>
#include <QString>

QByteArray DummyValue::textFor(DcmEVR vr)
{
    switch (vr) {
    case EVR_AS:
        return "050Y";
    case EVR_DA:
        return date;
    case EVR_DT:
        return "20000101000000";
    case EVR_TM:
        return "000000";
    case EVR_DS:
    case EVR_IS:
        return "0";
    case EVR_PN:
        return "ANONYMOUS";
    case EVR_UR:
        return "http://removed.invalid";
    default:
        return text;
    }
}

bool DummyValue::set(DcmElement &element)
{
    const DcmEVR vr = element.getVR();
    const Uint8 zeros[2] = {0, 0};
    const Uint16 zero = 0;
    switch (vr) {
    case EVR_US:
        return element.putUint16(0).good();
    case EVR_SS:
        return element.putSint16(0).good();
    case EVR_UL:
        return element.putUint32(0).good();
    case EVR_SL:
        return element.putSint32(0).good();
    case EVR_FL:
        return element.putFloat32(0).good();
    case EVR_FD:
        return element.putFloat64(0).good();
    case EVR_OB:
        return element.putUint8Array(zeros, 2).good();
    case EVR_OW:
        return element.putUint16Array(&zero, 1).good();
    default:
        return ElementText::isString(vr) && vr != EVR_UI && element.putString(textFor(vr).constData()).good();
    }
}

QByteArray DummyValue::shifted(DcmEVR vr, const QByteArray &value, int daysBack)
{
    constexpr int dateLength = 8;
    QByteArray result;
    for (QByteArray part : value.split('\\')) {
        part = part.trimmed();
        if (part.size() == 10 && part.at(4) == '.' && part.at(7) == '.') {
            part.replace(".", ""); // as the standard's predecessor wrote them
        }
        const QDate day =
            QDate::fromString(QString::fromLatin1(part.left(dateLength)), QStringLiteral("yyyyMMdd"));
        const bool isWhole = ValueGrammar::isRight(vr, part) && (vr == EVR_DT || part.size() == dateLength);
        if (!day.isValid() || !isWhole) {
            return {};
        }
        result += day.addDays(-daysBack).toString(QStringLiteral("yyyyMMdd")).toLatin1()
            + part.mid(dateLength) + '\\';
    }
    result.chop(1);
    return result;
}

QByteArray DummyValue::emptyPdf()
{
    const QByteArray objects[] = {"<</Type/Catalog/Pages 2 0 R>>", "<</Type/Pages/Kids[3 0 R]/Count 1>>",
        "<</Type/Page/Parent 2 0 R/MediaBox[0 0 595 842]>>"};
    QByteArray pdf("%PDF-1.4\n");
    QByteArray table("0000000000 65535 f \n");
    int number = 0;
    for (const QByteArray &object : objects) {
        table += QByteArray::number(pdf.size()).rightJustified(10, '0') + " 00000 n \n";
        pdf += QByteArray::number(++number) + " 0 obj" + object + "endobj\n";
    }
    const QByteArray place = QByteArray::number(pdf.size());
    pdf += "xref\n0 4\n" + table + "trailer<</Size 4/Root 1 0 R>>\nstartxref\n" + place + "\n%%EOF\n";
    return pdf.size() % 2 == 0 ? pdf : pdf + '\n';
}
