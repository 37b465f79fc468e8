#include "archivequestionform.h"

#include "datepick.h"

#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>

namespace {

constexpr int fieldsInRow = 3;
constexpr int rangePick = -1; ///< two days of one's own

void addLabelled(QGridLayout *grid, int place, QWidget *parent, const QString &text, QWidget *field)
{
    auto *label = new QLabel(text, parent);
    label->setBuddy(field);
    const int column = 2 * (place % fieldsInRow);
    grid->addWidget(label, place / fieldsInRow, column);
    grid->addWidget(field, place / fieldsInRow, column + 1);
    grid->setColumnStretch(column + 1, 1);
}

} // namespace

ArchiveQuestionForm::ArchiveQuestionForm(QWidget *parent)
    : QWidget(parent)
{
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    m_name = addField(grid, 0, QStringLiteral("name"), tr("Patient &name:"), tr("Patient name"),
        tr("Words of the name, in any order and case"));
    m_id = addField(grid, 1, QStringLiteral("patientId"), tr("Patient &ID:"), tr("Patient ID"),
        tr("The whole ID; * stands for any text"));
    m_birthDate = addField(grid, 2, QStringLiteral("birthDate"), tr("&Birth date:"), tr("Birth date"),
        tr("A date, such as %1").arg(QDate(1970, 12, 31).toString(Qt::ISODate)));
    m_accession = addField(grid, 3, QStringLiteral("accession"), tr("&Accession number:"),
        tr("Accession number"), tr("The whole number; * stands for any text"));
    m_description = addField(grid, 4, QStringLiteral("description"), tr("Study &description:"),
        tr("Study description"), tr("Words of the description"));
    m_modality = new QComboBox(this);
    m_modality->setObjectName(QStringLiteral("modality"));
    m_modality->setEditable(true);
    m_modality->setAccessibleName(tr("Modality"));
    m_modality->setToolTip(tr("One or several, parted by blanks; empty for all"));
    m_modality->addItems({QString(), QStringLiteral("CR"), QStringLiteral("CT"), QStringLiteral("DX"),
        QStringLiteral("MG"), QStringLiteral("MR"), QStringLiteral("NM"), QStringLiteral("PT"),
        QStringLiteral("RF"), QStringLiteral("US"), QStringLiteral("XA")});
    m_modality->lineEdit()->setAccessibleName(tr("Modality"));
    connect(m_modality->lineEdit(), &QLineEdit::returnPressed, this, &ArchiveQuestionForm::asked);
    addLabelled(grid, 5, this, tr("&Modality:"), m_modality);
    addDates(grid);
    setFocusProxy(m_name);
}

QLineEdit *ArchiveQuestionForm::addField(QGridLayout *grid, int place, const QString &name,
    const QString &label, const QString &accessibleName, const QString &toolTip)
{
    auto *field = new QLineEdit(this);
    field->setObjectName(name);
    field->setAccessibleName(accessibleName);
    field->setToolTip(toolTip);
    field->setClearButtonEnabled(true);
    connect(field, &QLineEdit::returnPressed, this, &ArchiveQuestionForm::asked);
    addLabelled(grid, place, this, label, field);
    return field;
}

void ArchiveQuestionForm::addDates(QGridLayout *grid)
{
    m_pick = new QComboBox(this);
    m_pick->setObjectName(QStringLiteral("dates"));
    m_pick->setAccessibleName(tr("Study date"));
    m_pick->setToolTip(tr("When the study was made"));
    m_pick->addItem(tr("All"), int(DatePick::AllDates));
    m_pick->addItem(tr("Today"), int(DatePick::Today));
    m_pick->addItem(tr("Yesterday"), int(DatePick::Yesterday));
    m_pick->addItem(tr("Last 7 days"), int(DatePick::Week));
    m_pick->addItem(tr("Last 30 days"), int(DatePick::Month));
    m_pick->addItem(tr("Between"), rangePick);
    connect(m_pick, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &ArchiveQuestionForm::onPick);
    const auto addDay = [this](const QString &name, const QString &accessibleName) {
        auto *day = new QDateEdit(QDate::currentDate(), this);
        day->setObjectName(name);
        day->setAccessibleName(accessibleName);
        day->setToolTip(accessibleName);
        day->setCalendarPopup(true);
        day->setDisplayFormat(QStringLiteral("yyyy-MM-dd")); // as the tables have it
        return day;
    };
    m_first = addDay(QStringLiteral("firstDay"), tr("First day"));
    m_last = addDay(QStringLiteral("lastDay"), tr("Last day"));
    addLabelled(grid, 6, this, tr("Study da&te:"), m_pick);
    addLabelled(grid, 7, this, tr("f&rom:"), m_first);
    addLabelled(grid, 8, this, tr("t&o:"), m_last);
    onPick();
}

void ArchiveQuestionForm::onPick()
{
    const bool isRange = m_pick->currentData().toInt() == rangePick;
    m_first->setEnabled(isRange);
    m_last->setEnabled(isRange);
}

/// As people of the language write dates, and as DICOM does.
QDate ArchiveQuestionForm::typedBirthDate() const
{
    const QString text = m_birthDate->text().trimmed();
    for (const QString &format : {QLocale().dateFormat(QLocale::ShortFormat), QStringLiteral("yyyy-MM-dd"),
             QStringLiteral("yyyyMMdd")}) {
        QDate day = QLocale().toDate(text, format);
        if (day.isValid() && !format.contains(QLatin1String("yyyy"))
            && day.addYears(100) <= QDate::currentDate()) {
            day = day.addYears(100); // two digits of a year
        }
        if (day.isValid()) {
            return day;
        }
    }
    return {};
}

QString ArchiveQuestionForm::fault() const
{
    if (!m_birthDate->text().trimmed().isEmpty() && !typedBirthDate().isValid()) {
        return tr("The birth date is no date. %1").arg(m_birthDate->toolTip());
    }
    if (m_pick->currentData().toInt() == rangePick && m_first->date() > m_last->date()) {
        return tr("The first day is after the last one.");
    }
    return {};
}

ArchiveQuestion ArchiveQuestionForm::question() const
{
    const int pick = m_pick->currentData().toInt();
    ArchiveQuestion question;
    question.name = m_name->text();
    question.patientId = m_id->text();
    question.accessionNumber = m_accession->text();
    question.description = m_description->text();
    question.modality = m_modality->currentText();
    question.birthDate = typedBirthDate();
    question.dates = pick == rangePick
        ? StudyDates{StudyDates::Kind::Between, m_first->date(), m_last->date()}
        : studyDates(static_cast<DatePick>(pick), QDate::currentDate());
    return question;
}

void ArchiveQuestionForm::clear()
{
    for (QLineEdit *field : {m_name, m_id, m_birthDate, m_accession, m_description}) {
        field->clear();
    }
    m_modality->setCurrentIndex(0);
    m_pick->setCurrentIndex(0);
    m_name->setFocus();
}
