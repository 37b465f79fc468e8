#include "archivequestion.h"

#include "textfold.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

const QString any = QStringLiteral("*");

/// How an archive that minds the case may have a text.
enum class Spelling { Upper, Capitalised, AsTyped };
constexpr int spellings = 3;

bool hasWildcards(const QString &text)
{
    return text.contains(QLatin1Char('*')) || text.contains(QLatin1Char('?'));
}

QStringList wordsOf(const QString &text)
{
    static const QRegularExpression separators(QStringLiteral("[\\s,^=;\\\\]+"));
    return text.split(separators, Qt::SkipEmptyParts);
}

QString longestWord(const QString &text)
{
    const QStringList words = wordsOf(text);
    const auto longest = std::max_element(
        words.begin(), words.end(), [](const QString &a, const QString &b) { return a.size() < b.size(); });
    return longest == words.end() ? QString() : *longest;
}

QString spelled(const QString &word, Spelling spelling)
{
    switch (spelling) {
    case Spelling::Upper:
        return word.toUpper();
    case Spelling::Capitalised:
        return word.left(1).toUpper() + word.mid(1).toLower();
    case Spelling::AsTyped:
        break;
    }
    return word;
}

/// A key that finds a word anywhere. Accented letters may be written in other ways, and a name of a script
/// that parts no words stands in parts: any text may be in their place, or between them.
QString wordKey(const QString &word, Spelling spelling)
{
    if (isUnparted(word)) {
        QString key = any;
        for (const uint c : word.toUcs4()) {
            key += QString::fromUcs4(&c, 1) + any;
        }
        return key;
    }
    QString key = any;
    for (const QChar c : spelled(word, spelling)) {
        const bool isAccented = c.unicode() >= 0x80 && QChar::script(c.unicode()) == QChar::Script_Latin;
        if (!isAccented) {
            key += c;
        } else if (!key.endsWith(any)) {
            key += any;
        }
    }
    return key.endsWith(any) ? key : key + any;
}

QString textKey(const QString &text, Spelling spelling)
{
    const QString word = longestWord(text);
    return word.isEmpty() || hasWildcards(text) ? text.trimmed() : wordKey(word, spelling);
}

QString dateKey(const StudyDates &dates)
{
    if (dates.kind != StudyDates::Kind::Between) {
        return {};
    }
    const auto text = [](const QDate &day) { return day.toString(QStringLiteral("yyyyMMdd")); };
    if (dates.first == dates.last) {
        return text(dates.first);
    }
    return text(dates.first) + QLatin1Char('-') + text(dates.last);
}

bool hasAllWords(const QString &value, const QString &words)
{
    const QString folded = foldedName(value);
    const QString joined = joinedName(value);
    const QStringList wanted = wordsOf(words);
    return std::all_of(wanted.begin(), wanted.end(), [&](const QString &word) {
        const QString text = foldedText(word);
        return folded.contains(text) || (isUnparted(text) && joined.contains(text));
    });
}

QStringList modalitiesOf(const QString &text)
{
    return wordsOf(text.toUpper());
}

bool hasModality(const QString &value, const QString &wanted)
{
    const QStringList there = value.split(QLatin1Char('\\'));
    const QStringList asked = modalitiesOf(wanted);
    return value.isEmpty() || asked.isEmpty()
        || std::any_of(
            asked.begin(), asked.end(), [&there](const QString &one) { return there.contains(one); });
}

/// Whether a text occurs as it is, and not just in other case.
bool occursExactly(const QVector<QueryRecord> &records, quint32 tag, const QString &word)
{
    return std::all_of(records.begin(), records.end(),
        [&](const QueryRecord &record) { return record.value(tag).contains(word); });
}

} // namespace

bool ArchiveQuestion::isEmpty() const
{
    return (name + patientId + accessionNumber + description + modality).trimmed().isEmpty()
        && !birthDate.isValid() && dates.kind == StudyDates::Kind::Any;
}

int ArchiveQuestion::attempts() const
{
    const auto depends = [](const QString &text) { return !text.trimmed().isEmpty() && !hasWildcards(text); };
    return depends(name) || depends(description) ? spellings : 1;
}

QueryRequest ArchiveQuestion::attempt(int number, int limit) const
{
    const auto spelling = static_cast<Spelling>(number);
    const QStringList modalities = modalitiesOf(modality);
    QueryRecord keys{{QueryTag::patientName, textKey(name, spelling)},
        {QueryTag::patientId, patientId.trimmed()}, {QueryTag::issuerOfPatientId, {}},
        {QueryTag::birthDate, birthDate.toString(QStringLiteral("yyyyMMdd"))}, {QueryTag::sex, {}},
        {QueryTag::studyUid, {}}, {QueryTag::studyId, {}}, {QueryTag::studyDate, dateKey(dates)},
        {QueryTag::studyTime, {}}, {QueryTag::accessionNumber, accessionNumber.trimmed()},
        {QueryTag::studyDescription, textKey(description, spelling)}, {QueryTag::classesInStudy, {}},
        // Archives take one value; several are told apart here.
        {QueryTag::modalitiesInStudy, modalities.size() == 1 ? modalities.first() : QString()},
        {QueryTag::studySeries, {}}, {QueryTag::studyInstances, {}}};
    return {RecordLevel::Study, keys, limit};
}

bool ArchiveQuestion::isAboutStudies() const
{
    return !(accessionNumber + description + modality).trimmed().isEmpty()
        || dates.kind != StudyDates::Kind::Any;
}

QueryRequest ArchiveQuestion::patientAttempt(int number, int limit) const
{
    return {RecordLevel::Patient,
        {{QueryTag::patientName, textKey(name, static_cast<Spelling>(number))},
            {QueryTag::patientId, patientId.trimmed()}, {QueryTag::issuerOfPatientId, {}},
            {QueryTag::birthDate, birthDate.toString(QStringLiteral("yyyyMMdd"))}, {QueryTag::sex, {}},
            {QueryTag::patientStudies, {}}},
        limit};
}

/// The patient is named by its ID alone, which is the key that the standard has for it.
QueryRequest ArchiveQuestion::attemptBelow(const QueryRecord &patient, int number, int limit) const
{
    QueryRequest request = attempt(number, limit);
    request.keys.insert(QueryTag::patientId, patient.value(QueryTag::patientId));
    request.keys.insert(QueryTag::patientName, {});
    request.keys.insert(QueryTag::birthDate, {});
    return request;
}

/// An archive that does not mind the case says so by what it finds.
bool ArchiveQuestion::isEnough(int number, const QVector<QueryRecord> &found) const
{
    const auto ignoresCase = [&](const QString &text, quint32 tag) {
        const QString word = spelled(longestWord(text), static_cast<Spelling>(number));
        return hasWildcards(text) || text.trimmed().isEmpty() || word == word.toLower()
            || !occursExactly(found, tag, word);
    };
    return !found.isEmpty() && ignoresCase(name, QueryTag::patientName)
        && ignoresCase(description, QueryTag::studyDescription);
}

bool ArchiveQuestion::matches(const QueryRecord &study) const
{
    const auto hasWords = [&study](quint32 tag, const QString &words) {
        return hasWildcards(words) || hasAllWords(study.value(tag), words);
    };
    return matchesPatient(study) && hasWords(QueryTag::studyDescription, description)
        && hasModality(study.value(QueryTag::modalitiesInStudy), modality);
}

bool ArchiveQuestion::matchesPatient(const QueryRecord &patient) const
{
    return hasWildcards(name) || hasAllWords(patient.value(QueryTag::patientName), name);
}

QueryRequest seriesOf(const QString &patientId, const QString &studyUid, int limit)
{
    return {RecordLevel::Series,
        {{QueryTag::patientId, patientId}, {QueryTag::studyUid, studyUid}, {QueryTag::seriesUid, {}},
            {QueryTag::seriesNumber, {}}, {QueryTag::modality, {}}, {QueryTag::seriesDescription, {}},
            {QueryTag::seriesDate, {}}, {QueryTag::bodyPart, {}}, {QueryTag::seriesInstances, {}}},
        limit};
}
