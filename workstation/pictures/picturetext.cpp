#include "picturetext.h"

#include <QCoreApplication>

namespace {

struct KindWords
{
    const char *letters;
    const char *words;
};

const KindWords &wordsOf(ObjectKind kind)
{
    static constexpr KindWords all[] = {
        {QT_TRANSLATE_NOOP("PictureText", "IMG"), QT_TRANSLATE_NOOP("PictureText", "Image")},
        {QT_TRANSLATE_NOOP("PictureText", "SR"), QT_TRANSLATE_NOOP("PictureText", "Structured report")},
        {QT_TRANSLATE_NOOP("PictureText", "PDF"),
            QT_TRANSLATE_NOOP("PictureText", "Document (PDF or other)")},
        {QT_TRANSLATE_NOOP("PictureText", "KO"), QT_TRANSLATE_NOOP("PictureText", "List of key objects")},
        {QT_TRANSLATE_NOOP("PictureText", "PR"), QT_TRANSLATE_NOOP("PictureText", "Presentation state")},
        {QT_TRANSLATE_NOOP("PictureText", "ECG"), QT_TRANSLATE_NOOP("PictureText", "Waveform")},
        {QT_TRANSLATE_NOOP("PictureText", "PLAN"), QT_TRANSLATE_NOOP("PictureText", "Radiotherapy plan")},
        {QT_TRANSLATE_NOOP("PictureText", "STRUCT"),
            QT_TRANSLATE_NOOP("PictureText", "Radiotherapy structures")},
        {QT_TRANSLATE_NOOP("PictureText", "REG"), QT_TRANSLATE_NOOP("PictureText", "Registration")},
        {QT_TRANSLATE_NOOP("PictureText", "HP"), QT_TRANSLATE_NOOP("PictureText", "Protocol")},
        {QT_TRANSLATE_NOOP("PictureText", "MEAS"), QT_TRANSLATE_NOOP("PictureText", "Measurements")},
        {QT_TRANSLATE_NOOP("PictureText", "RAW"), QT_TRANSLATE_NOOP("PictureText", "Raw data")},
        {QT_TRANSLATE_NOOP("PictureText", "VIDEO"), QT_TRANSLATE_NOOP("PictureText", "Video")},
        {QT_TRANSLATE_NOOP("PictureText", "LUT"), QT_TRANSLATE_NOOP("PictureText", "Colour palette")},
        {QT_TRANSLATE_NOOP("PictureText", "DIR"), QT_TRANSLATE_NOOP("PictureText", "Directory of a medium")},
        {QT_TRANSLATE_NOOP("PictureText", "?"), QT_TRANSLATE_NOOP("PictureText", "Object without a picture")},
    };
    static_assert(std::size(all) == std::size_t(ObjectKind::Unknown) + 1, "one entry a kind");
    return all[std::size_t(kind)];
}

QString translated(const char *text)
{
    return QCoreApplication::translate("PictureText", text);
}

const char *sentence(PixelProblem problem)
{
    switch (problem) {
    case PixelProblem::None:
        return "";
    case PixelProblem::CannotOpen:
        return QT_TRANSLATE_NOOP(
            "PictureText", "The file cannot be opened: it is not there, or may not be read.");
    case PixelProblem::NotDicom:
        return QT_TRANSLATE_NOOP("PictureText", "This is not a DICOM file.");
    case PixelProblem::Damaged:
        return QT_TRANSLATE_NOOP("PictureText", "The file is damaged: its description cannot be read.");
    case PixelProblem::NoPixels:
        return QT_TRANSLATE_NOOP("PictureText", "This object has no picture.");
    case PixelProblem::TooLarge:
        return QT_TRANSLATE_NOOP("PictureText", "The image is larger than the preview shows.");
    case PixelProblem::TooManyFrames:
        return QT_TRANSLATE_NOOP("PictureText", "The file says it has more frames than any image can have.");
    case PixelProblem::Truncated:
        return QT_TRANSLATE_NOOP("PictureText", "The file ends before the image does.");
    case PixelProblem::NoSuchFrame:
        return QT_TRANSLATE_NOOP("PictureText", "The file has no such frame.");
    case PixelProblem::UnknownSyntax:
        return QT_TRANSLATE_NOOP("PictureText", "The preview does not know how this image is compressed.");
    case PixelProblem::Video:
        return QT_TRANSLATE_NOOP("PictureText", "The preview does not play videos.");
    case PixelProblem::UnsupportedFormat:
        return QT_TRANSLATE_NOOP("PictureText", "The preview does not show images of this pixel format.");
    case PixelProblem::BadData:
        return QT_TRANSLATE_NOOP("PictureText", "The compressed image is damaged and cannot be decoded.");
    }
    return "";
}

} // namespace

QString PictureText::shortKind(ObjectKind kind)
{
    return translated(wordsOf(kind).letters);
}

QString PictureText::kind(ObjectKind kind)
{
    return translated(wordsOf(kind).words);
}

QString PictureText::problem(PixelProblem problem, ObjectKind objectKind)
{
    if (problem == PixelProblem::None) {
        return {};
    }
    if (problem == PixelProblem::NoPixels && objectKind != ObjectKind::Unknown) {
        return kind(objectKind) + QStringLiteral(". ") + translated(sentence(problem));
    }
    return translated(sentence(problem));
}
