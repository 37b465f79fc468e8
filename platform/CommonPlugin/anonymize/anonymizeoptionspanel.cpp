#include "anonymizeoptionspanel.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

AnonymizeOptionsPanel::AnonymizeOptionsPanel(QWidget *parent)
    : QWidget(parent)
{
    build();
}

void AnonymizeOptionsPanel::build()
{
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(buildOptions());
    layout->addWidget(buildNames());
    layout->addStretch();
}

QCheckBox *AnonymizeOptionsPanel::addOption(
    QLayout *layout, const QString &text, const QString &name, const QString &explanation)
{
    auto *box = new QCheckBox(text, this);
    box->setObjectName(name);
    box->setAccessibleDescription(explanation);
    connect(box, &QCheckBox::toggled, this, &AnonymizeOptionsPanel::changed);
    auto *label = new QLabel(explanation, this);
    label->setWordWrap(true);
    label->setIndent(box->fontMetrics().height() + label->fontMetrics().horizontalAdvance(QLatin1Char('m')));
    layout->addWidget(box);
    layout->addWidget(label);
    return box;
}

QWidget *AnonymizeOptionsPanel::buildOptions()
{
    auto *group = new QGroupBox(tr("What stays"), this);
    auto *layout = new QVBoxLayout(group);
    auto *intro =
        new QLabel(tr("Names, numbers, addresses, institutions and devices always go; UIDs are replaced by "
                      "new ones, the same every time. Pixels are not changed."),
            group);
    intro->setWordWrap(true);
    layout->addWidget(intro);
    m_dates = addOption(layout, tr("&Dates, moved"), QStringLiteral("dates"),
        tr("All dates of a patient move back by the same number of days, so that the time between studies "
           "stays. "
           "Otherwise dates and times go."));
    m_descriptors = addOption(layout, tr("D&escriptions, cleaned"), QStringLiteral("descriptors"),
        tr("Descriptions stay without words that stand among the names and numbers of the same image, and "
           "without "
           "long numbers. Nobody can promise that no other hint is left. Otherwise descriptions go."));
    m_characteristics = addOption(layout, tr("&Sex, age, size and weight"), QStringLiteral("characteristics"),
        tr("Also smoking, pregnancy, allergies and special needs."));
    m_private = addOption(layout, tr("Attributes of device &makers"), QStringLiteral("private"),
        tr("What they hold, only the maker knows; names may be among it. Otherwise they go."));
    return group;
}

QLineEdit *AnonymizeOptionsPanel::addPattern(const QString &name, const QString &label, const QString &text)
{
    auto *edit = new QLineEdit(text, this);
    edit->setObjectName(name);
    edit->setAccessibleName(label);
    connect(edit, &QLineEdit::textChanged, this, &AnonymizeOptionsPanel::changed);
    return edit;
}

QWidget *AnonymizeOptionsPanel::buildNames()
{
    auto *group = new QGroupBox(tr("What patients are called"), this);
    auto *layout = new QFormLayout(group);
    const DeidentifyOptions usual;
    m_name = addPattern(QStringLiteral("namePattern"), tr("Name"), usual.namePattern);
    m_id = addPattern(QStringLiteral("idPattern"), tr("ID"), usual.idPattern);
    layout->addRow(tr("&Name"), m_name);
    layout->addRow(tr("&ID"), m_id);
    auto *note =
        new QLabel(tr("%1 stands for ten letters and digits that belong to the patient, the same every time.")
                       .arg(DeidentifyOptions::codeMark()),
            group);
    note->setWordWrap(true);
    layout->addRow(note);
    return group;
}

DeidentifyOptions AnonymizeOptionsPanel::options() const
{
    DeidentifyOptions options;
    options.shiftDates = m_dates->isChecked();
    options.cleanDescriptors = m_descriptors->isChecked();
    options.keepCharacteristics = m_characteristics->isChecked();
    options.removePrivate = !m_private->isChecked();
    options.namePattern = m_name->text().trimmed();
    options.idPattern = m_id->text().trimmed();
    return options;
}

QString AnonymizeOptionsPanel::obstacle() const
{
    const bool arePatterns =
        DeidentifyOptions::isPattern(m_name->text()) && DeidentifyOptions::isPattern(m_id->text());
    return arePatterns
        ? QString()
        : tr("Names and IDs need plain letters, without accents, backslashes and equals signs, and no "
             "more than 48 of them.");
}

QString AnonymizeOptionsPanel::caution() const
{
    return m_id->text().contains(DeidentifyOptions::codeMark())
        ? QString()
        : tr("Without %1 in the ID all patients become one.").arg(DeidentifyOptions::codeMark());
}
