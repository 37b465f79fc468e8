#include "questionbar.h"

#include <QComboBox>
#include <QDate>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

constexpr char shownDate[] = "yyyy-MM-dd";
constexpr char dicomDate[] = "yyyyMMdd";

} // namespace

QuestionBar::QuestionBar(QWidget *parent)
    : QWidget(parent)
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    m_name = addLine(tr("&Name:"), "name", {});
    m_id = addLine(tr("Patient &ID:"), "id", {});
    m_from = addLine(tr("&From:"), "from", tr("YYYY-MM-DD"));
    m_to = addLine(tr("&To:"), "to", tr("YYYY-MM-DD"));
    m_modality = new QComboBox(this);
    m_modality->setObjectName(QStringLiteral("modality"));
    m_modality->setAccessibleName(tr("Modality"));
    m_modality->addItem(tr("All modalities"), QString());
    for (const char *modality : {"CR", "CT", "DX", "MG", "MR", "NM", "PT", "RF", "SR", "US", "XA"}) {
        m_modality->addItem(QLatin1String(modality), QLatin1String(modality));
    }
    m_search = new QPushButton(tr("&Search"), this);
    m_search->setObjectName(QStringLiteral("search"));
    m_search->setDefault(true);
    row->addWidget(m_modality);
    row->addWidget(m_search);
    connect(m_search, &QPushButton::clicked, this, &QuestionBar::asked);
}

QLineEdit *QuestionBar::addLine(const QString &label, const char *name, const QString &hint)
{
    auto *line = new QLineEdit(this);
    line->setObjectName(QLatin1String(name));
    line->setPlaceholderText(hint);
    line->setClearButtonEnabled(true);
    auto *caption = new QLabel(label, this);
    caption->setBuddy(line);
    layout()->addWidget(caption);
    layout()->addWidget(line);
    line->setAccessibleName(QString(label).remove(QLatin1Char('&')).remove(QLatin1Char(':')));
    connect(line, &QLineEdit::returnPressed, this, &QuestionBar::asked);
    return line;
}

QString QuestionBar::dateOf(const QLineEdit *line) const
{
    return QDate::fromString(line->text().trimmed(), QLatin1String(shownDate))
        .toString(QLatin1String(dicomDate));
}

StudyQuestion QuestionBar::question() const
{
    StudyQuestion question;
    question.patientName = m_name->text().trimmed();
    question.patientId = m_id->text().trimmed();
    question.firstDate = dateOf(m_from);
    question.lastDate = dateOf(m_to);
    question.modality = m_modality->currentData().toString();
    return question;
}

void QuestionBar::setSearchable(bool isSearchable)
{
    m_search->setEnabled(isSearchable);
}
