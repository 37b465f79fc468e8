#pragma once

#include <QString>

/// How data sets are made anonymous: the Basic Profile, with these of its options. A plain value.
struct DeidentifyOptions
{
    /// Dates are moved by a number of days that belongs to the patient, and times stay; otherwise they go.
    bool shiftDates = false;
    /// Descriptions stay, without the words that identify; otherwise they go.
    bool cleanDescriptors = false;
    /// Sex, age, size, weight and the like stay.
    bool keepCharacteristics = false;
    bool removePrivate = true;

    /// What patients are called: printable ASCII without backslashes and equals signs; codeMark() stands
    /// for a code that belongs to the patient.
    QString namePattern = QStringLiteral("Anonymous^") + codeMark();
    QString idPattern = codeMark();

    static QString codeMark() { return QStringLiteral("{code}"); }
    /// Whether a text can be a pattern of a name or an ID.
    static bool isPattern(const QString &text)
    {
        constexpr int longest = 48; // a value has 64 characters, and the code is longer than its mark
        for (const QChar c : text) {
            if (c < QLatin1Char(' ') || c > QLatin1Char('~') || c == QLatin1Char('\\')
                || c == QLatin1Char('=')) {
                return false;
            }
        }
        return !text.trimmed().isEmpty() && text.size() <= longest;
    }
};
