#include "importprogresspage.h"

#include "durationtext.h"
#include "elidedlabel.h"
#include "importer.h"

#include <QGridLayout>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>

namespace {

constexpr int barSteps = 1000;

QString number(qint64 value)
{
    return QLocale().toString(value);
}

} // namespace

ImportProgressPage::ImportProgressPage(QWidget *parent)
    : QWidget(parent)
{
    build();
    reset();
}

void ImportProgressPage::build()
{
    m_headline = new QLabel(this);
    m_bar = new QProgressBar(this);
    m_bar->setAccessibleName(tr("Progress of the import"));
    m_current = new ElidedLabel(this);
    m_current->setAccessibleName(tr("File being read"));
    m_cancel = new QPushButton(this);
    m_cancel->setObjectName(QStringLiteral("cancel"));
    m_cancel->setToolTip(tr("Stop the import; what has been imported so far stays"));
    connect(m_cancel, &QPushButton::clicked, this, &ImportProgressPage::cancelRequested);

    auto *values = new QGridLayout;
    m_files = addValue(values, 0, tr("Files:"));
    m_speed = addValue(values, 1, tr("Rate:"));
    m_elapsed = addValue(values, 2, tr("Elapsed:"));
    m_left = addValue(values, 3, tr("Time left:"));
    values->setColumnStretch(1, 1);
    values->setColumnStretch(3, 1);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_headline);
    layout->addWidget(m_bar);
    layout->addWidget(m_current);
    layout->addLayout(values);
    layout->addStretch();
    layout->addWidget(m_cancel, 0, Qt::AlignRight);
}

/// Two captioned values a row.
QLabel *ImportProgressPage::addValue(QGridLayout *grid, int place, const QString &caption)
{
    auto *value = new QLabel(this);
    value->setAccessibleName(caption);
    const int column = place % 2 * 2;
    grid->addWidget(new QLabel(caption, this), place / 2, column);
    grid->addWidget(value, place / 2, column + 1);
    return value;
}

void ImportProgressPage::reset()
{
    m_rate.clear();
    m_time.invalidate();
    m_headline->setText(tr("Waiting for other imports to end…"));
    m_bar->setRange(0, 0);
    m_current->setText(QString());
    for (QLabel *label : {m_files, m_speed, m_elapsed, m_left}) {
        label->setText(tr("–"));
    }
    m_cancel->setText(tr("Cancel"));
    m_cancel->setEnabled(true);
}

void ImportProgressPage::begin()
{
    m_time.start();
    m_headline->setText(tr("Looking for files…"));
}

void ImportProgressPage::showProgress(const ImportProgress &progress)
{
    if (!m_time.isValid()) {
        return;
    }
    if (m_cancel->isEnabled()) {
        m_headline->setText(progress.walking ? tr("Importing, still looking for files…") : tr("Importing…"));
    }
    if (progress.found > 0) {
        m_bar->setRange(0, barSteps);
        m_bar->setValue(int(progress.done * barSteps / progress.found));
    }
    m_current->setText(progress.current);
    m_files->setText(tr("%1 of %2").arg(number(progress.done), number(progress.found)));
    showTimes(progress);
}

void ImportProgressPage::showTimes(const ImportProgress &progress)
{
    m_rate.add(m_time.elapsed(), progress.done);
    m_speed->setText(tr("%1 files/s").arg(number(qRound64(m_rate.filesPerSecond()))));
    m_elapsed->setText(durationText(m_time.elapsed()));
    const qint64 left = progress.walking ? -1 : m_rate.millisecondsFor(progress.found - progress.done);
    m_left->setText(left < 0 ? tr("–") : durationText(left));
}

void ImportProgressPage::showCancelling()
{
    m_cancel->setText(tr("Cancelling…"));
    m_cancel->setEnabled(false);
    m_headline->setText(tr("Cancelling…"));
}
