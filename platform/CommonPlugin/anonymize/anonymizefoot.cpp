#include "anonymizefoot.h"

#include "anonymizeform.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

AnonymizeFoot::AnonymizeFoot(QWidget *parent)
    : QWidget(parent)
{
    m_note = new QLabel(this);
    m_note->setObjectName(QStringLiteral("obstacle"));
    m_note->setWordWrap(true);
    m_note->setTextFormat(Qt::PlainText);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_note, 1);
    m_back = addButton("back", AnonymizeForm::tr("&Back"));
    m_preview = addButton("preview", AnonymizeForm::tr("&Preview"));
    m_preview->setToolTip(AnonymizeForm::tr("Shows what would change in an image; nothing is written"));
    m_start = addButton("start", AnonymizeForm::tr("&Anonymize"));
    connect(m_back, &QPushButton::clicked, this, &AnonymizeFoot::backWanted);
    connect(m_preview, &QPushButton::clicked, this, &AnonymizeFoot::previewWanted);
    connect(m_start, &QPushButton::clicked, this, &AnonymizeFoot::startWanted);
}

QPushButton *AnonymizeFoot::addButton(const char *name, const QString &text)
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(QLatin1String(name));
    layout()->addWidget(button);
    return button;
}

void AnonymizeFoot::tell(const State &state)
{
    const bool isRunning = state.page == Page::Run;
    m_note->setText(state.isPreparing   ? AnonymizeForm::tr("Looking up the images…")
            : !state.fault.isEmpty()    ? state.fault
            : !state.obstacle.isEmpty() ? state.obstacle
                                        : state.caution);
    m_note->setVisible(!isRunning);
    m_preview->setVisible(state.page == Page::Setup);
    m_preview->setEnabled(state.hasStudies && !state.isPreparing);
    m_start->setVisible(!isRunning);
    m_start->setEnabled(state.obstacle.isEmpty() && !state.isPreparing);
    m_back->setVisible(state.page == Page::Changes);
    setVisible(!isRunning);
}
