#include "windowclosing.h"

#include "editcontroller.h"
#include "kivmessageboxform.h"
#include "treecontroller.h"

#include <QWidget>

#include <algorithm>

WindowClosing::WindowClosing(QWidget *window, TreeController *tree, EditController *edits)
    : QObject(window)
    , m_window(window)
    , m_tree(tree)
    , m_edits(edits)
{ }

/// The edits come last: they are gone with the answer, and nothing may keep the window open after that.
bool WindowClosing::mayClose()
{
    return m_tree->mayClose()
        && std::all_of(m_works.cbegin(), m_works.cend(),
            [this](const RunningWork &work) {
                return work.question.isEmpty() || !work.isRunning() || mayStop(work.question);
            })
        && m_edits->mayDropEdits();
}

bool WindowClosing::mayBeReplaced()
{
    return m_tree->mayClose() && m_edits->mayDropEdits();
}

bool WindowClosing::mustWait() const
{
    return std::any_of(m_works.cbegin(), m_works.cend(),
        [](const RunningWork &work) { return work.cancel && work.isRunning(); });
}

void WindowClosing::cancel()
{
    for (const RunningWork &work : qAsConst(m_works)) {
        if (work.cancel && work.isRunning()) {
            work.cancel();
        }
    }
}

bool WindowClosing::mayStop(const QString &question)
{
    return kivMessageBoxForm::question(m_window, tr("Quit"), question, kivMessageBoxForm::OkAndCancel,
               kivMessageBoxForm::AnswerCancel)
        != kivMessageBoxForm::AnswerCancel;
}
