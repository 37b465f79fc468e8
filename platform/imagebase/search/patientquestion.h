#pragma once

#include <QDate>
#include <QString>

/// Which studies a patient must have one of. A value.
struct StudyDates
{
    enum class Kind { Any, Between, Missing };
    Kind kind = Kind::Any;
    QDate first; ///< of Between, both days included
    QDate last;
};

/**
 * What somebody looks for among all patients. A value; the question of no text and any dates finds all.
 *
 * The text is split at blanks. Every word must occur somewhere in the patient's name, ID or birth date or in
 * the accession number or description of one of its studies, whatever the case, accents and width. A word
 * that has separators of a person name ("Müller^Jörg", "Müller,") is also found where each of its parts is,
 * and one of a script that parts no words ("山田太郎") where the name has it in parts.
 * No character stands for others.
 */
struct PatientQuestion
{
    QString text;
    StudyDates dates;
};
