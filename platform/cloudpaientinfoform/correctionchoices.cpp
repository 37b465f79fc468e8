#include "correctionchoices.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QRadioButton>

namespace {

constexpr int shareOfWhose = 2;
constexpr int shareOfWhere = 1;

QRadioButton *added(QGroupBox *box, const char *name, const QString &text)
{
    auto *button = new QRadioButton(text, box);
    button->setObjectName(QLatin1String(name));
    box->layout()->addWidget(button);
    return button;
}

QGroupBox *groupBox(const QString &title, QWidget *parent)
{
    auto *box = new QGroupBox(title, parent);
    box->setLayout(new QVBoxLayout);
    return box;
}

} // namespace

CorrectionChoices::CorrectionChoices(QWidget *parent)
    : QWidget(parent)
{
    QGroupBox *whose = groupBox(tr("Whose data"), this);
    m_allStudies = added(whose, "allStudies", {});
    m_thisStudy = added(whose, "thisStudy", tr("&This study alone: it goes to the patient with these data"));
    QGroupBox *where = groupBox(tr("Where"), this);
    m_both = added(where, "indexAndService", tr("Index and &service"));
    m_indexOnly = added(where, "indexOnly", tr("Index &only"));
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(whose, shareOfWhose);
    row->addWidget(where, shareOfWhere);
    m_allStudies->setChecked(true);
    offer(0, false);
    for (const QRadioButton *choice : {m_allStudies, m_thisStudy, m_both, m_indexOnly}) {
        connect(choice, &QRadioButton::toggled, this, &CorrectionChoices::changed);
    }
}

void CorrectionChoices::offer(int studies, bool isInService)
{
    m_allStudies->setText(tr("&All %Ln study(ies) of the patient", nullptr, studies));
    m_thisStudy->setEnabled(studies > 1);
    if (studies <= 1) {
        m_allStudies->setChecked(true);
    }
    m_both->setEnabled(isInService);
    if (!isInService) {
        m_indexOnly->setChecked(true);
    } else if (!m_isInService) {
        m_both->setChecked(true); // else as the user chose
    }
    m_isInService = isInService;
}

bool CorrectionChoices::isThisStudyAlone() const
{
    return m_thisStudy->isChecked();
}

bool CorrectionChoices::isServiceToo() const
{
    return m_both->isChecked();
}
