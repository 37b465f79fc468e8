#include "indexcare.h"

#include "createconnection.h"
#include "filechooser.h"
#include "importer.h"
#include "indexmaintenance.h"
#include "maintenancetext.h"

#include <QDate>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QStandardPaths>
#include <QVBoxLayout>

namespace {

constexpr int barSteps = 1000;

QString proposedBackup()
{
    const QFileInfo index(databasePath());
    const QString name =
        QStringLiteral("%1-%2.db").arg(index.completeBaseName(), QDate::currentDate().toString(Qt::ISODate));
    return QDir(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)).filePath(name);
}

} // namespace

IndexCare::IndexCare(QWidget *parent)
    : QWidget(parent)
{
    build();
    setRunning(false);
}

void IndexCare::build()
{
    auto *row = new QHBoxLayout;
    connect(addButton(
                row, tr("Chec&k"), QStringLiteral("check"), tr("Reads the whole index and looks for damage")),
        &QPushButton::clicked, this, &IndexCare::check);
    connect(addButton(row, tr("Co&mpact"), QStringLiteral("compact"),
                tr("Gives the room of deleted records back to the disk")),
        &QPushButton::clicked, this, &IndexCare::compact);
    connect(addButton(row, tr("&Back Up…"), QStringLiteral("backup"),
                tr("Copies the index to another file; the images stay where they are")),
        &QPushButton::clicked, this, &IndexCare::backUp);
    row->addStretch();
    m_bar = new QProgressBar(this);
    m_bar->setObjectName(QStringLiteral("progress"));
    m_bar->setAccessibleName(tr("Progress"));
    m_stop = new QPushButton(tr("S&top"), this);
    m_stop->setObjectName(QStringLiteral("stop"));
    m_stop->setToolTip(tr("Ends what runs and leaves the index as it was"));
    connect(m_stop, &QPushButton::clicked, this, &IndexCare::stop);
    auto *progress = new QHBoxLayout;
    progress->addWidget(m_bar, 1);
    progress->addWidget(m_stop);
    m_result = new QLabel(this);
    m_result->setObjectName(QStringLiteral("result"));
    m_result->setWordWrap(true);
    m_result->setTextFormat(Qt::PlainText);
    m_result->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(row);
    layout->addLayout(progress);
    layout->addWidget(m_result);
}

QPushButton *IndexCare::addButton(QLayout *row, const QString &text, const QString &name, const QString &hint)
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(name);
    button->setToolTip(hint);
    row->addWidget(button);
    m_buttons.append(button);
    return button;
}

void IndexCare::check()
{
    const QString path = databasePath();
    run(
        tr("Checking the index…"),
        [path](const std::atomic<bool> &stop, const IndexJob::Progress &) {
            return QVariant::fromValue(IndexMaintenance(path, stop).check());
        },
        MaintenanceText::checked);
}

void IndexCare::compact()
{
    if (Importer::isAnyRunning()) {
        showEnd(tr("An import is running. Compact the index when it has ended."));
        return;
    }
    const QString path = databasePath();
    run(
        tr("Compacting the index…"),
        [path](const std::atomic<bool> &stop, const IndexJob::Progress &) {
            return QVariant::fromValue(IndexMaintenance(path, stop).compact());
        },
        MaintenanceText::compacted);
}

void IndexCare::backUp()
{
    const QString target = FileChooser::toReplace(
        this, {tr("Back Up the Index"), proposedBackup(), tr("Indexes (*.db);;All files (*)")});
    if (target.isEmpty()) {
        return;
    }
    const QString path = databasePath();
    if (QFileInfo(target) == QFileInfo(path)) {
        showEnd(tr("The backup must be another file than the index."));
        return;
    }
    run(
        tr("Copying the index…"),
        [path, target](const std::atomic<bool> &stop, const IndexJob::Progress &progress) {
            return QVariant::fromValue(IndexMaintenance(path, stop).backUp(target, progress));
        },
        MaintenanceText::backedUp);
}

void IndexCare::run(const QString &doing, IndexJob::Work work, Sentence sentence)
{
    if (m_job) {
        return;
    }
    m_bar->setRange(0, 0); // until the work knows how far it is
    m_result->setText(doing);
    m_job = new IndexJob(std::move(work), this);
    connect(m_job, &IndexJob::progressed, this, [this](double share) {
        m_bar->setRange(0, barSteps);
        m_bar->setValue(int(share * barSteps));
    });
    connect(m_job, &IndexJob::finished, this, [this, sentence](const QVariant &result) {
        m_job->deleteLater();
        m_job = nullptr;
        setRunning(false);
        showEnd(sentence(result.value<MaintenanceResult>()));
        emit changed();
    });
    setRunning(true);
    m_job->start();
}

void IndexCare::stop()
{
    if (m_job) {
        m_job->stop();
    }
}

void IndexCare::showEnd(const QString &sentence)
{
    m_result->setText(sentence);
    m_result->setAccessibleName(sentence);
}

void IndexCare::setRunning(bool running)
{
    for (QPushButton *button : qAsConst(m_buttons)) {
        button->setEnabled(!running);
    }
    m_bar->setVisible(running);
    m_stop->setVisible(running);
}
