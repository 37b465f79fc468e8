#include "editorfoot.h"

#include "correctiontext.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

EditorFoot::EditorFoot(QWidget *parent)
    : QWidget(parent)
    , m_said(new QLabel(this))
    , m_progress(new QProgressBar(this))
    , m_save(new QPushButton(tr("&Correct"), this))
    , m_close(new QPushButton(this))
{
    m_said->setObjectName(QStringLiteral("said"));
    m_said->setAccessibleName(tr("What was done"));
    m_said->setTextFormat(Qt::PlainText);
    m_said->setWordWrap(true);
    m_said->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_progress->setAccessibleName(tr("Progress"));
    m_save->setObjectName(QStringLiteral("save"));
    m_save->setDefault(true);
    m_close->setObjectName(QStringLiteral("close"));
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_said);
    column->addWidget(m_progress);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_save);
    buttons->addWidget(m_close);
    column->addLayout(buttons);
    connect(m_save, &QPushButton::clicked, this, &EditorFoot::saveWanted);
    connect(m_close, &QPushButton::clicked, this, [this] {
        if (m_mayStop) {
            emit stopWanted();
        } else {
            emit closeWanted();
        }
    });
}

void EditorFoot::say(const QString &text, bool isProblem)
{
    m_said->setText(text);
    m_said->setProperty("isProblem", isProblem);
    QFont font = m_said->font();
    font.setBold(isProblem);
    m_said->setFont(font);
}

void EditorFoot::setSavable(bool isSavable)
{
    m_save->setEnabled(isSavable);
}

void EditorFoot::setWorking(bool isWorking, bool mayStop)
{
    m_mayStop = mayStop;
    m_progress->setVisible(isWorking);
    m_progress->setRange(0, 0);
    m_close->setText(mayStop ? tr("Stop") : tr("Close"));
    m_close->setEnabled(true);
}

/// What has begun to be stored comes to its end.
void EditorFoot::showProgress(const CorrectionProgress &progress)
{
    m_mayStop = progress.step == CorrectionProgress::Step::Fetching
        || progress.step == CorrectionProgress::Step::Writing;
    m_close->setEnabled(m_mayStop);
    m_progress->setRange(0, progress.all);
    m_progress->setValue(progress.done);
    say(CorrectionText::step(progress));
}
