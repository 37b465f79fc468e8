#include "anonymizerunpage.h"

#include "anonymisedfolders.h"
#include "anonymizetext.h"
#include "filechooser.h"
#include "importreporttext.h"
#include "plaintableview.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSaveFile>
#include <QStandardItemModel>
#include <QVBoxLayout>

#include <algorithm>

namespace {

QLabel *newText(QWidget *parent, const QString &name)
{
    auto *label = new QLabel(parent);
    label->setObjectName(name);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
}

} // namespace

AnonymizeRunPage::AnonymizeRunPage(QWidget *parent)
    : QWidget(parent)
{
    build();
}

void AnonymizeRunPage::build()
{
    m_title = newText(this, QStringLiteral("title"));
    m_bar = new QProgressBar(this);
    m_bar->setObjectName(QStringLiteral("progress"));
    m_bar->setAccessibleName(tr("Progress"));
    m_model = new QStandardItemModel(this);
    m_files = new PlainTableView(this);
    m_files->setObjectName(QStringLiteral("files"));
    m_files->setAccessibleName(tr("Files"));
    m_files->setModel(m_model);
    m_files->setPathColumn(0);
    auto *row = new QHBoxLayout;
    m_cancel = addButton(row, tr("&Cancel"), QStringLiteral("cancel"));
    m_save = addButton(row, tr("&Save Report…"), QStringLiteral("save"));
    m_caution = newText(this, QStringLiteral("caution"));
    m_caution->setText(AnonymizeText::ownUse());
    row->addWidget(m_caution, 1);
    row->addStretch();
    m_leave = addButton(row, tr("&Back"), QStringLiteral("leave"));
    connect(m_cancel, &QPushButton::clicked, this, &AnonymizeRunPage::cancelled);
    connect(m_save, &QPushButton::clicked, this, &AnonymizeRunPage::save);
    connect(m_leave, &QPushButton::clicked, this, &AnonymizeRunPage::left);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_title);
    layout->addWidget(m_bar);
    layout->addWidget(buildQuestion());
    layout->addWidget(buildImportQuestion());
    layout->addWidget(m_files, 1);
    layout->addStretch();
    layout->addLayout(row);
}

QPushButton *AnonymizeRunPage::addButton(QLayout *row, const QString &text, const QString &name)
{
    auto *button = new QPushButton(text, this);
    button->setObjectName(name);
    row->addWidget(button);
    return button;
}

QWidget *AnonymizeRunPage::buildQuestion()
{
    auto *group = new QGroupBox(tr("Names in the pictures"), this);
    group->setObjectName(QStringLiteral("question"));
    m_warning = newText(group, QStringLiteral("warning"));
    m_looked = new QCheckBox(tr("I have looked at them, or know that nobody can be &recognized"), group);
    m_looked->setObjectName(QStringLiteral("looked"));
    auto *row = new QHBoxLayout;
    QPushButton *open = addButton(row, tr("&Open in the Preview"), QStringLiteral("open"));
    open->setToolTip(
        tr("Look at the chosen image, and from there at the others; Enter in the list does the same"));
    connect(open, &QPushButton::clicked, this, &AnonymizeRunPage::openPictures);
    connect(m_files, &QAbstractItemView::activated, this, &AnonymizeRunPage::openPictures);
    QPushButton *all = addButton(row, tr("Keep &All"), QStringLiteral("keepAll"));
    QPushButton *others = addButton(row, tr("&Leave These Out"), QStringLiteral("leaveOut"));
    row->addStretch();
    all->setEnabled(false);
    connect(m_looked, &QCheckBox::toggled, all, &QPushButton::setEnabled);
    connect(all, &QPushButton::clicked, this, [this] { emit answered(true); });
    connect(others, &QPushButton::clicked, this, [this] { emit answered(false); });
    auto *layout = new QVBoxLayout(group);
    layout->addWidget(m_warning);
    layout->addWidget(m_looked);
    layout->addLayout(row);
    m_question = group;
    return group;
}

QWidget *AnonymizeRunPage::buildImportQuestion()
{
    auto *group = new QGroupBox(tr("Copies that the index has not taken"), this);
    group->setObjectName(QStringLiteral("importQuestion"));
    m_notTaken = newText(group, QStringLiteral("notTaken"));
    auto *row = new QHBoxLayout;
    m_again = addButton(row, tr("&Try Again"), QStringLiteral("again"));
    QPushButton *keep = addButton(row, tr("&Keep the Copies"), QStringLiteral("keep"));
    row->addStretch();
    connect(m_again, &QPushButton::clicked, this, &AnonymizeRunPage::againWanted);
    connect(keep, &QPushButton::clicked, this, &AnonymizeRunPage::keepWanted);
    auto *layout = new QVBoxLayout(group);
    layout->addWidget(m_notTaken);
    layout->addLayout(row);
    m_importQuestion = group;
    return group;
}

void AnonymizeRunPage::showProgress(int done, int count)
{
    m_title->setText(tr("Making anonymous copies: %1 of %2").arg(done).arg(count));
    m_bar->setRange(0, qMax(1, count));
    m_bar->setValue(done);
    m_bar->show();
    m_question->hide();
    m_importQuestion->hide();
    m_files->hide();
    m_save->hide();
    m_caution->hide();
    m_leave->hide();
    m_cancel->show();
}

void AnonymizeRunPage::showImporting()
{
    m_title->setText(tr("Taking the copies into the index…"));
    m_bar->setRange(0, 0);
    m_bar->show();
    m_question->hide();
    m_importQuestion->hide();
    m_files->hide();
}

void AnonymizeRunPage::ask(const DeidentifyReport &report)
{
    m_title->setText(tr("The copies are made. Before they leave:"));
    m_bar->hide();
    m_warning->setText(AnonymizeText::burnedIn(report) + QLatin1Char('\n')
        + tr("The pixels are copied as they are: what is written in them stays."));
    m_model->clear();
    for (const DoubtfulPicture &picture : report.doubtful) {
        addFile(picture.path, AnonymizeText::burnedIn(picture.burnedIn));
    }
    showFiles(tr("Images in which names may be seen"));
    m_looked->setChecked(false);
    m_question->show();
    m_files->selectRow(0);
    m_files->setFocus();
}

/// The list holds other files at other times.
void AnonymizeRunPage::openPictures()
{
    if (m_question->isHidden()) {
        return;
    }
    QStringList paths;
    for (int row = 0; row < m_model->rowCount(); ++row) {
        paths.append(m_model->item(row)->text());
    }
    const int chosen = qMax(0, m_files->currentIndex().row());
    std::rotate(paths.begin(), paths.begin() + chosen, paths.end());
    emit picturesWanted(paths);
}

void AnonymizeRunPage::askAgain(const DeidentifyReport &report, const ImportReport &import)
{
    m_title->setText(importEndText(import));
    m_bar->hide();
    m_notTaken->setText(
        tr("All copies are still in %1. Try again once the cause is mended, keep them there to import them "
           "yourself within %2 days, or cancel: they are removed then, and what the index has taken stays.")
            .arg(report.folder)
            .arg(AnonymisedFolders::daysKept));
    m_model->clear();
    for (const ImportIssue &issue : import.issues()) {
        addFile(issue.path, reasonText(issue));
    }
    showFiles(tr("Copies that the index has not taken"));
    m_importQuestion->show();
    m_again->setFocus();
}

void AnonymizeRunPage::addFile(const QString &path, const QString &why)
{
    m_model->appendRow({new QStandardItem(path), new QStandardItem(why.trimmed())});
}

/// The list where it has files. @param name what it lists
void AnonymizeRunPage::showFiles(const QString &name)
{
    constexpr int pathCharacters = 44;
    m_model->setHorizontalHeaderLabels({tr("File"), tr("Reason")});
    m_files->setAccessibleName(name);
    m_files->setColumnCharacters(0, pathCharacters);
    m_files->setVisible(m_model->rowCount() > 0);
}

void AnonymizeRunPage::showEnd(
    const DeidentifyReport &report, const DeidentifyRequest &request, const QStringList &extra)
{
    QStringList lines = AnonymizeText::summary(report) + extra;
    if (!report.folder.isEmpty()) {
        lines.append(report.folder);
    }
    m_title->setText(lines.join(QLatin1Char('\n')));
    m_text = AnonymizeText::whole(report, request, extra);
    m_model->clear();
    for (const DeidentifyFailure &failure : report.failures) {
        if (!report.isCancelled) {
            addFile(
                failure.path, AnonymizeText::problem(failure.problem) + QLatin1Char(' ') + failure.detail);
        }
    }
    showFiles(tr("Files that could not be copied"));
    m_bar->hide();
    m_question->hide();
    m_importQuestion->hide();
    m_cancel->hide();
    m_save->show();
    m_caution->show();
    m_leave->show();
    m_leave->setFocus();
}

void AnonymizeRunPage::save()
{
    const QString path = FileChooser::toReplace(this,
        {tr("Save the Report for Your Own Use"), QStringLiteral("anonymised.txt"),
            tr("Texts (*.txt);;All files (*)")});
    if (path.isEmpty()) {
        return;
    }
    QSaveFile file(path);
    const QByteArray text = m_text.toUtf8();
    const bool isSaved = file.open(QIODevice::WriteOnly)
        && file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner)
        && file.write(text) == text.size() && file.commit();
    if (!isSaved) {
        m_title->setText(tr("The report cannot be saved: %1").arg(file.errorString()));
    }
}
