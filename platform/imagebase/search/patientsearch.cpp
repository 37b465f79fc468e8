#include "patientsearch.h"

#include "foldedtexts.h"
#include "nativestatement.h"
#include "readsnapshot.h"
#include "textfold.h"

#include <QBitArray>
#include <QStringList>

#include <algorithm>
#include <array>

namespace {

constexpr int noPatient = -1; // as FoldedTexts answers
/// How many rows are read between two looks at the stop flag.
constexpr int rowsAtOnce = 2048;

const QString patientRows =
    QStringLiteral("SELECT pk, PatientName, PatientID, PatientBirthDate FROM patient ORDER BY pk");
const QString studyRows = QStringLiteral(
    "SELECT pk, patient_fk, StudyDate, AccessionNumber, StudyDescription FROM generalstudy ORDER BY pk");

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isStoredDate(std::string_view text)
{
    constexpr std::size_t digits = 8;
    return text.size() == digits && std::all_of(text.begin(), text.end(), isDigit);
}

/// "1980-01-02", as the tables show a date.
std::string shownDate(std::string_view stored)
{
    if (!isStoredDate(stored)) {
        return {};
    }
    std::string shown(stored);
    shown.insert(6, 1, '-').insert(4, 1, '-');
    return shown;
}

/// A day as one number that sorts like it; 0 for what is none.
int dayOf(std::string_view stored)
{
    if (!isStoredDate(stored)) {
        return 0;
    }
    int day = 0;
    for (const char c : stored) {
        day = day * 10 + (c - '0');
    }
    return QDate::isValid(day / 10000, day / 100 % 100, day % 100) ? day : 0;
}

int dayOf(const QDate &date)
{
    return date.year() * 10000 + date.month() * 100 + date.day();
}

template <typename Row>
bool eachRow(NativeStatement &statement, const std::atomic<bool> &stop, const Row &row)
{
    NativeStatement::Step step = statement.step();
    for (int count = 1; step == NativeStatement::Step::Row; ++count) {
        row();
        if (count % rowsAtOnce == 0 && stop) {
            return false;
        }
        step = statement.step();
    }
    return step == NativeStatement::Step::Done;
}

QStringList partsOfName(QString word)
{
    for (const char separator : {'^', '=', ','}) {
        word.replace(QLatin1Char(separator), QLatin1Char(' '));
    }
    return word.split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// The groups of a name whose script parts no words, without what stands between their parts.
std::string joinedGroups(std::string_view name)
{
    const bool isPlain = std::all_of(name.begin(), name.end(), [](char c) { return uchar(c) < 0x80; });
    if (isPlain) {
        return {};
    }
    QStringList joined;
    for (const QString &group : QString::fromUtf8(name.data(), int(name.size())).split(QLatin1Char('='))) {
        if (isUnparted(group)) {
            joined.append(joinedName(group));
        }
    }
    return joined.join(QLatin1Char('=')).toStdString();
}

} // namespace

struct PatientSearch::Content
{
    struct Study
    {
        int patient; ///< its place among the patients
        int day; ///< 0 for none
    };

    explicit Content(const Content *previous)
        : patients(previous ? &previous->patients : nullptr)
        , studies(previous ? &previous->studies : nullptr)
    { }

    bool read(const QSqlDatabase &db, const std::atomic<bool> &stop);
    bool readPatients(const QSqlDatabase &db, const std::atomic<bool> &stop);
    bool readStudies(const QSqlDatabase &db, const std::atomic<bool> &stop);
    int placeOf(qint64 patient, int guess) const;
    QBitArray withText(const QString &text) const;
    QBitArray withWord(const QString &word) const;
    QBitArray withDates(const StudyDates &dates) const;

    FoldedTexts patients;
    FoldedTexts studies;
    std::vector<Study> places; ///< of the studies, in their order
};

bool PatientSearch::Content::read(const QSqlDatabase &db, const std::atomic<bool> &stop)
{
    const ReadSnapshot snapshot(db);
    const bool good = readPatients(db, stop) && readStudies(db, stop);
    patients.close();
    studies.close();
    places.shrink_to_fit();
    return good;
}

bool PatientSearch::Content::readPatients(const QSqlDatabase &db, const std::atomic<bool> &stop)
{
    NativeStatement rows(db, patientRows);
    return eachRow(rows, stop, [&] {
        const std::string_view birthDate = rows.utf8(3);
        const std::string_view name = rows.utf8(1);
        patients.add(
            rows.integer(0), {name, rows.utf8(2), birthDate, shownDate(birthDate), joinedGroups(name)});
    });
}

bool PatientSearch::Content::readStudies(const QSqlDatabase &db, const std::atomic<bool> &stop)
{
    NativeStatement rows(db, studyRows);
    int patient = 0;
    return eachRow(rows, stop, [&] {
        patient = placeOf(rows.integer(1), patient);
        places.push_back({patient, dayOf(rows.utf8(2))});
        studies.add(rows.integer(0), {rows.utf8(3), rows.utf8(4)});
    });
}

/// Studies lie mostly in the order of their patients: the guess is the patient of the study before.
int PatientSearch::Content::placeOf(qint64 patient, int guess) const
{
    for (const int place : {guess, guess + 1}) {
        if (place >= 0 && place < patients.size() && patients.key(place) == patient) {
            return place;
        }
    }
    return patients.recordOf(patient);
}

QBitArray PatientSearch::Content::withWord(const QString &word) const
{
    const QByteArray bytes = word.toUtf8();
    const std::string_view wanted(bytes.constData(), std::size_t(bytes.size()));
    QBitArray found(patients.size());
    patients.eachWith(wanted, [&found](int patient) { found.setBit(patient); });
    studies.eachWith(wanted, [this, &found](int study) {
        const int patient = places[std::size_t(study)].patient;
        if (patient != noPatient) {
            found.setBit(patient);
        }
    });
    return found;
}

QBitArray PatientSearch::Content::withText(const QString &text) const
{
    QBitArray found(patients.size(), true);
    const QStringList words = foldedText(text).simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString &word : words) {
        QBitArray ofWord = withWord(word);
        const QStringList parts = partsOfName(word);
        if (!parts.isEmpty() && parts != QStringList(word)) {
            QBitArray ofParts(patients.size(), true);
            for (const QString &part : parts) {
                ofParts &= withWord(part);
            }
            ofWord |= ofParts;
        }
        found &= ofWord;
    }
    return found;
}

QBitArray PatientSearch::Content::withDates(const StudyDates &dates) const
{
    if (dates.kind == StudyDates::Kind::Any) {
        return QBitArray(patients.size(), true);
    }
    const bool missing = dates.kind == StudyDates::Kind::Missing;
    const int first = missing ? 0 : dayOf(dates.first);
    const int last = missing ? 0 : dayOf(dates.last);
    QBitArray found(patients.size());
    for (const Study &study : places) {
        if (study.day >= first && study.day <= last && study.patient != noPatient) {
            found.setBit(study.patient);
        }
    }
    return found;
}

PatientSearch::PatientSearch(std::unique_ptr<const Content> content)
    : m_content(std::move(content))
{ }

PatientSearch::~PatientSearch() = default;

std::shared_ptr<const PatientSearch> PatientSearch::read(
    const QSqlDatabase &db, const PatientSearch *previous, const std::atomic<bool> &stop)
{
    auto content = std::make_unique<Content>(previous ? previous->m_content.get() : nullptr);
    if (!content->read(db, stop)) {
        return {};
    }
    return std::shared_ptr<const PatientSearch>(new PatientSearch(std::move(content)));
}

int PatientSearch::patients() const
{
    return m_content->patients.size();
}

std::size_t PatientSearch::bytes() const
{
    return m_content->patients.bytes() + m_content->studies.bytes()
        + m_content->places.capacity() * sizeof(Content::Study);
}

std::vector<qint64> PatientSearch::find(const PatientQuestion &question) const
{
    QBitArray found = m_content->withDates(question.dates);
    found &= m_content->withText(question.text);
    std::vector<qint64> keys;
    keys.reserve(std::size_t(found.count(true)));
    for (int place = 0; place < found.size(); ++place) {
        if (found.testBit(place)) {
            keys.push_back(m_content->patients.key(place));
        }
    }
    return keys;
}
