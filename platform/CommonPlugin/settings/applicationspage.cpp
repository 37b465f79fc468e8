#include "applicationspage.h"

#include "filechooser.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

ApplicationsPage::ApplicationsPage(QWidget *parent)
    : SettingsPage(tr("Applications"), parent)
{
    build();
}

void ApplicationsPage::build()
{
    m_choice = new QComboBox(this);
    m_choice->setObjectName(QStringLiteral("launcher"));
    const QVector<LauncherId> all = LauncherSettings::all();
    for (const LauncherId id : all) {
        m_choice->addItem(LauncherSettings::caption(id));
    }
    connect(
        m_choice, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &ApplicationsPage::showChosen);
    m_arguments = new QPlainTextEdit(this);
    m_arguments->setObjectName(QStringLiteral("arguments"));
    m_arguments->setTabChangesFocus(true);
    connect(m_arguments, &QPlainTextEdit::textChanged, this, &ApplicationsPage::takeFields);
    auto *form = new QFormLayout;
    form->addRow(tr("A&pplication:"), m_choice);
    form->addRow(tr("P&rogram:"), buildProgramRow());
    qobject_cast<QLabel *>(form->labelForField(form->itemAt(1, QFormLayout::FieldRole)->layout()))
        ->setBuddy(m_program);
    form->addRow(tr("Ar&guments, one a line:"), m_arguments);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(form);
    addHint(layout,
        tr("In the arguments stand for what is selected: {files} its files, one argument each; {fileList} a "
           "text "
           "file with a path a line; {studyUID}, {seriesUID}, {patientID}; and {index} for the index file. "
           "{workstation} is this program. An empty program means none. Takes effect at the next start of "
           "the "
           "application."));
    layout->addStretch();
}

QLayout *ApplicationsPage::buildProgramRow()
{
    m_program = new QLineEdit(this);
    m_program->setObjectName(QStringLiteral("program"));
    m_program->setAccessibleName(tr("Program"));
    connect(m_program, &QLineEdit::textEdited, this, &ApplicationsPage::takeFields);
    auto *browseButton = new QPushButton(tr("Bro&wse…"), this);
    browseButton->setObjectName(QStringLiteral("browse"));
    connect(browseButton, &QPushButton::clicked, this, &ApplicationsPage::browse);
    auto *row = new QHBoxLayout;
    row->addWidget(m_program, 1);
    row->addWidget(browseButton);
    return row;
}

void ApplicationsPage::read()
{
    m_launchers.clear();
    const QVector<LauncherId> all = LauncherSettings::all();
    for (const LauncherId id : all) {
        m_launchers.append(LauncherSettings::read(id));
    }
    showChosen();
}

void ApplicationsPage::showChosen()
{
    const Launcher shown = m_launchers.value(m_choice->currentIndex());
    m_showing = true;
    m_program->setText(shown.program);
    m_arguments->setPlainText(shown.arguments.join(QLatin1Char('\n')));
    m_showing = false;
}

void ApplicationsPage::takeFields()
{
    if (m_showing || m_choice->currentIndex() >= m_launchers.size()) {
        return;
    }
    m_launchers[m_choice->currentIndex()] = {
        m_program->text().trimmed(), m_arguments->toPlainText().split(QLatin1Char('\n'), Qt::SkipEmptyParts)};
}

void ApplicationsPage::browse()
{
    const QString path =
        FileChooser::toOpen(this, {tr("Choose the Program"), m_program->text(), tr("All files (*)")});
    if (!path.isEmpty()) {
        m_program->setText(path);
        takeFields();
    }
}

QStringList ApplicationsPage::write()
{
    QStringList failed;
    const QVector<LauncherId> all = LauncherSettings::all();
    for (int i = 0; i < all.size(); ++i) {
        if (!LauncherSettings::write(all[i], m_launchers[i])) {
            failed.append(LauncherSettings::writtenFile());
        }
    }
    return failed;
}
