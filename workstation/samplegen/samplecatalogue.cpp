#include "samplecatalogue.h"

namespace {

SampleGeometry axial(const Vector3 &centre, float spacing, float gap)
{
    return {centre, {1, 0, 0}, {0, 1, 0}, spacing, gap};
}

SampleGeometry sagittal(const Vector3 &centre, float spacing, float gap)
{
    return {centre, {0, 1, 0}, {0, 0, -1}, spacing, gap};
}

SampleGeometry coronal(const Vector3 &centre, float spacing, float gap)
{
    return {centre, {1, 0, 0}, {0, 0, -1}, spacing, gap};
}

SampleSeries series(SamplePicture picture, const char *description, const char *protocol,
    const char *bodyPart, int slices, const SampleGeometry &geometry, float windowCentre, float windowWidth,
    float contrast = 0)
{
    return {picture, QString::fromUtf8(description), QString::fromUtf8(protocol), QString::fromUtf8(bodyPart),
        slices, geometry, windowCentre, windowWidth, contrast};
}

CataloguePatient headCtPatient()
{
    CataloguePatient entry;
    entry.patient = {QStringLiteral("1-wang-xiaoming"), QStringLiteral("Wang^XiaoMing=王^小明"),
        QStringLiteral("P-10021"), QStringLiteral("19680412"), QStringLiteral("M"),
        QStringLiteral("头痛三天"), "GB18030", "GB18030"};
    entry.studies = {
        {{QStringLiteral("20240311"), QStringLiteral("091205"), QStringLiteral("4471"),
             QStringLiteral("A240311-07"), QStringLiteral("头颅CT平扫"), QStringLiteral("Li^Hua=李^华"),
             QStringLiteral("市第一医院"), QStringLiteral("055Y"), QStringLiteral("71")},
            {
                series(SamplePicture::HeadCt, "Head 8.0 axial", "Head routine", "HEAD", 12,
                    axial({0, 0, 2}, 0.9F, 12), 40, 90),
                series(SamplePicture::HeadCt, "Head bone", "Head routine", "HEAD", 8,
                    axial({0, 0, -46}, 0.9F, 5), 500, 2200),
            }},
        {{QStringLiteral("20240318"), QStringLiteral("143010"), QStringLiteral("4502"),
             QStringLiteral("A240318-22"), QStringLiteral("头颅CT复查"), QStringLiteral("Li^Hua=李^华"),
             QStringLiteral("市第一医院"), QStringLiteral("055Y"), QStringLiteral("71")},
            {series(SamplePicture::HeadCt, "Head follow-up", "Head routine", "HEAD", 8,
                axial({0, 0, 12}, 0.9F, 14), 40, 90)}},
    };
    return entry;
}

CataloguePatient headMrPatient()
{
    CataloguePatient entry;
    entry.patient = {QStringLiteral("2-zhang-li"), QStringLiteral("Zhang^Li=张^丽"),
        QStringLiteral("P-10388"), QStringLiteral("19851130"), QStringLiteral("F"), QString(), "ISO_IR 192",
        "UTF-8"};
    entry.studies = {{{QStringLiteral("20240402"), QStringLiteral("102233"), QStringLiteral("812"),
                          QStringLiteral("A240402-03"), QStringLiteral("MR brain / 颅脑磁共振"),
                          QStringLiteral("Chen^Jun=陈^军"), QStringLiteral("影像中心"),
                          QStringLiteral("038Y"), QStringLiteral("58.5")},
        {
            series(SamplePicture::HeadT1, "T1 SE axial", "Brain standard", "BRAIN", 10,
                axial({0, 0, 4}, 0.9F, 12), 520, 1000),
            series(SamplePicture::HeadT2, "T2 TSE axial", "Brain standard", "BRAIN", 10,
                axial({0, 0, 4}, 0.9F, 12), 560, 1100),
            series(SamplePicture::HeadT1, "T1 SE sagittal", "Brain standard", "BRAIN", 7,
                sagittal({0, 0, 0}, 0.9F, 10), 520, 1000),
        }}};
    return entry;
}

CataloguePatient trunkCtPatient()
{
    CataloguePatient entry;
    entry.patient = {QStringLiteral("3-yamada-tarou"), QStringLiteral("Yamada^Tarou=山田^太郎=やまだ^たろう"),
        QStringLiteral("JP-5582"), QStringLiteral("19550720"), QStringLiteral("M"), QString(),
        "\\ISO 2022 IR 87", "ISO-2022-JP"};
    entry.studies = {{{QStringLiteral("20240115"), QStringLiteral("160040"), QStringLiteral("29"),
                          QStringLiteral("A240115-11"), QStringLiteral("CT abdomen, two phases"),
                          QStringLiteral("Suzuki^Hanako=鈴木^花子"), QStringLiteral("中央病院"),
                          QStringLiteral("068Y"), QStringLiteral("64")},
        {
            series(SamplePicture::TrunkCt, "Abdomen arterial 5.0", "Abdomen two phases", "ABDOMEN", 10,
                axial({0, 0, -44}, 1.45F, 13), 60, 400, 230),
            series(SamplePicture::TrunkCt, "Abdomen venous 5.0", "Abdomen two phases", "ABDOMEN", 10,
                axial({0, 0, -44}, 1.45F, 13), 60, 400, 110),
            series(SamplePicture::TrunkCt, "Lung coronal", "Abdomen two phases", "CHEST", 6,
                coronal({0, -4, 40}, 1.45F, 16), -500, 1500, 110),
        }}};
    return entry;
}

CataloguePatient kneePatient()
{
    CataloguePatient entry;
    entry.patient = {QStringLiteral("4-mueller-joerg"), QStringLiteral("Müller^Jörg^^Dr."),
        QStringLiteral("DE-0077"), QStringLiteral("19790205"), QStringLiteral("M"),
        QStringLiteral("Skiunfall, Knie rechts"), "ISO_IR 100", "ISO-8859-1"};
    entry.studies = {
        {{QStringLiteral("20240222"), QStringLiteral("081500"), QStringLiteral("K118"),
             QStringLiteral("A240222-01"), QStringLiteral("MR Knie rechts"), QStringLiteral("Groß^Änne"),
             QStringLiteral("Klinik für Radiologie"), QStringLiteral("045Y"), QStringLiteral("83")},
            {
                series(SamplePicture::KneePd, "PD fs sagittal", "Knee", "KNEE", 8,
                    sagittal({8, 0, 0}, 0.65F, 6), 420, 850),
                series(SamplePicture::KneePd, "PD fs coronal", "Knee", "KNEE", 6,
                    coronal({0, 0, 0}, 0.65F, 8), 420, 850),
            }},
        {{QStringLiteral("20240222"), QStringLiteral("093000"), QStringLiteral("T044"),
             QStringLiteral("A240222-09"), QStringLiteral("Thorax p.a."), QStringLiteral("Groß^Änne"),
             QStringLiteral("Klinik für Radiologie"), QStringLiteral("045Y"), QStringLiteral("83")},
            {series(SamplePicture::ChestX, "Thorax p.a.", "Thorax", "CHEST", 1, coronal({0, 0, 62}, 1.4F, 1),
                2450, 2700)}},
    };
    return entry;
}

CataloguePatient spinePatient()
{
    CataloguePatient entry;
    entry.patient = {QStringLiteral("5-dvorakova-jirina"), QStringLiteral("Dvořáková^Jiřina"),
        QStringLiteral("CZ-314"), QStringLiteral("19910917"), QStringLiteral("F"), QString(), "ISO_IR 101",
        "ISO-8859-2"};
    entry.studies = {
        {{QStringLiteral("20231204"), QStringLiteral("134500"), QStringLiteral("96"),
             QStringLiteral("A231204-05"), QStringLiteral("MR páteře"), QStringLiteral("Němec^Tomáš"),
             QStringLiteral("Nemocnice"), QStringLiteral("032Y"), QStringLiteral("61")},
            {series(SamplePicture::SpineT2, "T2 TSE sagittal", "Spine", "SPINE", 7,
                sagittal({0, 20, -30}, 1.3F, 6), 520, 1100)}},
        {{QStringLiteral("20231206"), QStringLiteral("100000"), QStringLiteral("97"),
             QStringLiteral("A231206-02"), QStringLiteral("Echokardiografie"), QStringLiteral("Němec^Tomáš"),
             QStringLiteral("Nemocnice"), QStringLiteral("032Y"), QStringLiteral("61")},
            {series(SamplePicture::Doppler, "4CH colour Doppler", "Echo", "HEART", 6, axial({0, 0, 0}, 1, 1),
                128, 256)}},
    };
    return entry;
}

} // namespace

QVector<CataloguePatient> sampleCatalogue()
{
    return {headCtPatient(), headMrPatient(), trunkCtPatient(), kneePatient(), spinePatient()};
}
