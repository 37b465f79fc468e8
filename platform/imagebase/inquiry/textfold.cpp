#include "textfold.h"

#include "nativehandle.h"

#include <algorithm>
#include <cstring>

namespace {

/// Accents, and the points of Hebrew and Arabic. Marks that make another letter stay: kana voicing, viramas.
bool isIgnoredMark(uint c)
{
    constexpr int firstPoint = 10;
    constexpr int lastPoint = 35;
    constexpr int firstAccent = 200;
    const int order = QChar::combiningClass(c);
    return order >= firstAccent || (order >= firstPoint && order <= lastPoint);
}

/// Letters of their own that people type without their stroke, or as two.
const char *plainLetters(uint c)
{
    switch (c) {
    case 0x00df:
        return "ss";
    case 0x00e6:
        return "ae";
    case 0x00f8:
        return "o";
    case 0x0111:
        return "d";
    case 0x0127:
        return "h";
    case 0x0131:
        return "i";
    case 0x0142:
        return "l";
    case 0x0153:
        return "oe";
    default:
        return nullptr;
    }
}

void append(QString &text, uint c)
{
    if (QChar::requiresSurrogates(c)) {
        text += QChar(QChar::highSurrogate(c));
        text += QChar(QChar::lowSurrogate(c));
    } else {
        text += QChar(ushort(c));
    }
}

/// One text type for a whole name, or the bytes of a plain one.
template <typename Character, typename Text>
Text withPartsApart(Text name)
{
    for (const char separator : {'^', '=', ',', '\\'}) {
        name.replace(Character(separator), Character(' '));
    }
    return name.simplified();
}

enum class Folding { Text, Name, JoinedName };

QString folded(const QString &text, Folding folding)
{
    switch (folding) {
    case Folding::Name:
        return foldedName(text);
    case Folding::JoinedName:
        return joinedName(text);
    case Folding::Text:
        break;
    }
    return foldedText(text);
}

/// The plain texts, nearly all of an index, never leave their bytes.
QByteArray folded(const QByteArray &utf8, Folding folding)
{
    const bool plain = std::all_of(utf8.begin(), utf8.end(), [](char c) { return uchar(c) < 0x80; });
    if (!plain) {
        return folded(QString::fromUtf8(utf8), folding).toUtf8();
    }
    const QByteArray text = utf8.toLower();
    if (folding == Folding::Text) {
        return text;
    }
    const QByteArray name = withPartsApart<char>(text);
    return folding == Folding::Name ? name : QByteArray(name).replace(' ', "");
}

/// The text folded last: the conditions of an inquiry ask for the same value of a row one after the other.
struct LastFolded
{
    QByteArray text;
    QByteArray result;
};

const QByteArray &foldedOnce(const char *text, int size, Folding folding, LastFolded *last)
{
    if (last->text.size() != size || std::memcmp(last->text.constData(), text, std::size_t(size)) != 0) {
        last->text = QByteArray(text, size);
        last->result = folded(last->text, folding);
    }
    return last->result;
}

template <Folding folding>
void foldArgument(sqlite3_context *context, int, sqlite3_value **arguments)
{
    const auto *text = reinterpret_cast<const char *>(sqlite3_value_text(arguments[0]));
    if (!text) {
        sqlite3_result_null(context);
        return;
    }
    auto *last = static_cast<LastFolded *>(sqlite3_user_data(context));
    const QByteArray &result = foldedOnce(text, sqlite3_value_bytes(arguments[0]), folding, last);
    sqlite3_result_text(context, result.constData(), result.size(), SQLITE_TRANSIENT);
}

void define(sqlite3 *db, const char *name, void (*function)(sqlite3_context *, int, sqlite3_value **))
{
    constexpr int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    const auto destroy = [](void *last) { delete static_cast<LastFolded *>(last); };
    sqlite3_create_function_v2(db, name, 1, flags, new LastFolded, function, nullptr, nullptr, destroy);
}

} // namespace

QString foldedText(const QString &text)
{
    QString bare;
    const QString parts = text.normalized(QString::NormalizationForm_KD);
    bare.reserve(parts.size());
    for (const uint c : parts.toUcs4()) {
        if (!isIgnoredMark(c)) {
            append(bare, c);
        }
    }
    QString letters;
    letters.reserve(bare.size());
    for (const uint c : bare.toCaseFolded().toUcs4()) {
        if (const char *plain = plainLetters(c)) {
            letters += QLatin1String(plain);
        } else {
            append(letters, c);
        }
    }
    return letters.normalized(QString::NormalizationForm_KC);
}

QString foldedName(const QString &name)
{
    return withPartsApart<QLatin1Char>(foldedText(name));
}

bool isUnparted(const QString &text)
{
    constexpr ushort firstIdeograph = 0x2e80; // radicals and kana come with them
    return std::any_of(
        text.begin(), text.end(), [](QChar letter) { return letter.unicode() >= firstIdeograph; });
}

QString joinedName(const QString &name)
{
    return foldedName(name).remove(QLatin1Char(' '));
}

void registerTextFunctions(const QSqlDatabase &db)
{
    sqlite3 *native = nativeHandle(db);
    if (!native) {
        return;
    }
    define(native, "folded", foldArgument<Folding::Text>);
    define(native, "foldedname", foldArgument<Folding::Name>);
    define(native, "joinedname", foldArgument<Folding::JoinedName>);
}
