#pragma once

#include "patientquestion.h"

#include <QString>

/// What the search bar offers beside the text. Other stands for what others have put into the table: the
/// patient tree, the query panel.
enum class DatePick { AllDates, Today, Yesterday, Week, Month, NoDate, ArrivedToday, Other };

/// The days of studies that a pick means; any for one that is about something else.
StudyDates studyDates(DatePick pick, const QDate &today);

/// As it is kept in the settings; Other has none.
QString datePickName(DatePick pick);
/// ArrivedToday for a name that is none.
DatePick datePickOf(const QString &name);
