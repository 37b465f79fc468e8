#pragma once

#include "patientquestion.h"
#include "queryscu.h"

#include <QVector>

/**
 * What a person looks for in an archive. A value.
 *
 * Archives differ in what they make of case and of several words, so that one question becomes several
 * queries, which are asked in turn: attempt(), until isEnough(). What comes back is held against the question
 * here as well: matches(). People may write "*" and "?" themselves; then an archive gets their text as it is.
 */
struct ArchiveQuestion
{
    QString name; ///< words in any order and case
    QString patientId;
    QString accessionNumber;
    QString description; ///< words that stand in the study's description
    QString modality; ///< one or several, parted by blanks or commas; one of them must be in the study
    QDate birthDate;
    StudyDates dates; ///< Any or Between; each day may be null, for no bound

    /// Whether it asks for everything that the archive has.
    bool isEmpty() const;
    /// How many queries there are.
    int attempts() const;
    /// One of them; the first is the likeliest to find something.
    QueryRequest attempt(int number, int limit) const;
    /// Whether it says something of studies, which archives have no keys for at the level of patients.
    bool isAboutStudies() const;
    /// The same attempt at the level of patients, by what it says of them.
    QueryRequest patientAttempt(int number, int limit) const;
    /// The same attempt below one patient that was found, for archives that know studies only there.
    QueryRequest attemptBelow(const QueryRecord &patient, int number, int limit) const;
    /// Whether the next attempt would find nothing new, by what an attempt has found.
    bool isEnough(int number, const QVector<QueryRecord> &found) const;
    /// Whether a study is asked for, as far as the archive told its values.
    bool matches(const QueryRecord &study) const;
    bool matchesPatient(const QueryRecord &patient) const;
};

/// The attributes that are wanted of a series.
QueryRequest seriesOf(const QString &patientId, const QString &studyUid, int limit);
