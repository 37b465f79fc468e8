#include "deletionnotice.h"

#include <QCoreApplication>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

namespace {

constexpr qint64 unnoticedMs = 200;
constexpr int leastWidth = 320;

} // namespace

DeletionNotice::DeletionNotice(QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint)
    , m_text(new QLabel(this))
    , m_bar(new QProgressBar(this))
{
    setWindowTitle(tr("Delete"));
    setWindowModality(Qt::ApplicationModal);
    setMinimumWidth(leastWidth);
    auto *column = new QVBoxLayout(this);
    column->addWidget(m_text);
    column->addWidget(m_bar);
    m_bar->setAccessibleName(tr("Progress of the deletion"));
    m_running.start();
}

void DeletionNotice::showProgress(int done, int total)
{
    if (m_running.elapsed() < unnoticedMs) {
        return;
    }
    m_text->setText(total > 0 ? tr("Deleting the selected records and their files…")
                              : tr("Waiting for somebody else who writes to the index…"));
    m_bar->setMaximum(total);
    m_bar->setValue(done);
    show();
    QCoreApplication::processEvents();
}
