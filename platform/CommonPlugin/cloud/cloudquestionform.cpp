#include "cloudquestionform.h"

#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

namespace {

constexpr int allDates = -1;
constexpr int between = -2;
constexpr int week = 6;
constexpr int month = 29;
constexpr int fieldsInRow = 3;
constexpr int longestText = 64; ///< of a name's part, and of an ID

void addLabelled(QGridLayout *grid, int place, const QString &text, QWidget *field)
{
    auto *label = new QLabel(text, field->parentWidget());
    label->setBuddy(field);
    const int column = 2 * (place % fieldsInRow);
    grid->addWidget(label, place / fieldsInRow, column);
    grid->addWidget(field, place / fieldsInRow, column + 1);
    grid->setColumnStretch(column + 1, 1);
}

QString dicomDate(const QDate &day)
{
    return day.toString(QStringLiteral("yyyyMMdd"));
}

} // namespace

CloudQuestionForm::CloudQuestionForm(QWidget *parent)
    : QWidget(parent)
{
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    m_name = addText(
        grid, 0, "name", tr("Patient &name:"), tr("Patient name"), tr("A part of the name, in any case"));
    m_id = addText(grid, 1, "patientId", tr("Patient &ID:"), tr("Patient ID"),
        tr("The whole ID; * stands for any text"));
    addModality(grid, 2);
    addDates(grid, fieldsInRow);
    setFocusProxy(m_name);
}

QLineEdit *CloudQuestionForm::addText(QGridLayout *grid, int place, const char *name, const QString &label,
    const QString &accessibleName, const QString &toolTip)
{
    auto *field = new QLineEdit(this);
    field->setObjectName(QLatin1String(name));
    field->setAccessibleName(accessibleName);
    field->setToolTip(toolTip);
    field->setClearButtonEnabled(true);
    field->setMaxLength(longestText);
    connect(field, &QLineEdit::returnPressed, this, &CloudQuestionForm::asked);
    addLabelled(grid, place, label, field);
    return field;
}

void CloudQuestionForm::addModality(QGridLayout *grid, int place)
{
    m_modality = new QComboBox(this);
    m_modality->setObjectName(QStringLiteral("modality"));
    m_modality->setAccessibleName(tr("Modality"));
    m_modality->setToolTip(tr("One that the study has; empty for all"));
    m_modality->setEditable(true);
    m_modality->addItems({QString(), QStringLiteral("CR"), QStringLiteral("CT"), QStringLiteral("DX"),
        QStringLiteral("MG"), QStringLiteral("MR"), QStringLiteral("NM"), QStringLiteral("PT"),
        QStringLiteral("RF"), QStringLiteral("US"), QStringLiteral("XA")});
    m_modality->lineEdit()->setAccessibleName(tr("Modality"));
    m_modality->lineEdit()->setMaxLength(longestText);
    connect(m_modality->lineEdit(), &QLineEdit::returnPressed, this, &CloudQuestionForm::asked);
    addLabelled(grid, place, tr("&Modality:"), m_modality);
}

void CloudQuestionForm::addDates(QGridLayout *grid, int place)
{
    m_pick = new QComboBox(this);
    m_pick->setObjectName(QStringLiteral("dates"));
    m_pick->setAccessibleName(tr("Study date"));
    m_pick->setToolTip(tr("When the study was made"));
    m_pick->addItem(tr("All"), allDates);
    m_pick->addItem(tr("Today"), 0);
    m_pick->addItem(tr("Last 7 days"), week);
    m_pick->addItem(tr("Last 30 days"), month);
    m_pick->addItem(tr("Between"), between);
    connect(m_pick, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &CloudQuestionForm::onPick);
    const auto addDay = [this](const char *name, const QString &accessibleName) {
        auto *day = new QDateEdit(QDate::currentDate(), this);
        day->setObjectName(QLatin1String(name));
        day->setAccessibleName(accessibleName);
        day->setToolTip(accessibleName);
        day->setCalendarPopup(true);
        day->setDisplayFormat(QStringLiteral("yyyy-MM-dd"));
        return day;
    };
    m_first = addDay("firstDay", tr("First day"));
    m_last = addDay("lastDay", tr("Last day"));
    addLabelled(grid, place, tr("Study da&te:"), m_pick);
    addLabelled(grid, place + 1, tr("f&rom:"), m_first);
    addLabelled(grid, place + 2, tr("t&o:"), m_last);
    onPick();
}

void CloudQuestionForm::onPick()
{
    const bool isBetween = m_pick->currentData().toInt() == between;
    m_first->setEnabled(isBetween);
    m_last->setEnabled(isBetween);
}

StudyQuestion CloudQuestionForm::question() const
{
    StudyQuestion question;
    question.patientName = m_name->text().trimmed();
    question.patientId = m_id->text().trimmed();
    question.modality = m_modality->currentText().trimmed().toUpper();
    const int pick = m_pick->currentData().toInt();
    if (pick == between) {
        question.firstDate = dicomDate(qMin(m_first->date(), m_last->date()));
        question.lastDate = dicomDate(qMax(m_first->date(), m_last->date()));
    } else if (pick != allDates) {
        question.firstDate = dicomDate(QDate::currentDate().addDays(-pick));
        question.lastDate = dicomDate(QDate::currentDate());
    }
    return question;
}
