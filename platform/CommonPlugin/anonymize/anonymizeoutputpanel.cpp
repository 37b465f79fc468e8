#include "anonymizeoutputpanel.h"

#include "filechooser.h"

#include <QFileInfo>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

AnonymizeOutputPanel::AnonymizeOutputPanel(QWidget *parent)
    : QWidget(parent)
{
    auto *group = new QGroupBox(tr("Where the copies go"), this);
    auto *layout = new QVBoxLayout(group);
    m_toFolder = addOutput(layout, tr("Into a &folder"), QStringLiteral("toFolder"));
    layout->addLayout(buildFolder());
    m_toIndex = addOutput(layout, tr("Into the inde&x, as new patients"), QStringLiteral("toIndex"));
    m_toSend = addOutput(layout, tr("Send to a DI&COM node"), QStringLiteral("toSend"));
    addOutput(layout, tr("&Upload to the cloud"), QStringLiteral("toUpload"));
    m_toFolder->setChecked(true);
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(group);
}

QRadioButton *AnonymizeOutputPanel::addOutput(QLayout *layout, const QString &text, const QString &name)
{
    auto *button = new QRadioButton(text, this);
    button->setObjectName(name);
    connect(button, &QRadioButton::toggled, this, &AnonymizeOutputPanel::changed);
    layout->addWidget(button);
    return button;
}

QLayout *AnonymizeOutputPanel::buildFolder()
{
    m_folder = new QLineEdit(this);
    m_folder->setObjectName(QStringLiteral("folder"));
    m_folder->setAccessibleName(tr("Folder"));
    m_folder->setPlaceholderText(tr("A new folder is made in it"));
    connect(m_folder, &QLineEdit::textChanged, this, &AnonymizeOutputPanel::changed);
    auto *browse = new QPushButton(tr("&Browse…"), this);
    browse->setObjectName(QStringLiteral("browse"));
    connect(browse, &QPushButton::clicked, this, &AnonymizeOutputPanel::chooseFolder);
    auto *row = new QHBoxLayout;
    row->addWidget(m_folder, 1);
    row->addWidget(browse);
    return row;
}

void AnonymizeOutputPanel::chooseFolder()
{
    const QString folder = FileChooser::toFolder(this, {tr("Folder for the Copies"), m_folder->text(), {}});
    if (!folder.isEmpty()) {
        m_folder->setText(folder);
        m_toFolder->setChecked(true);
    }
}

AnonymizeOutput AnonymizeOutputPanel::output() const
{
    return m_toFolder->isChecked() ? AnonymizeOutput::Folder
        : m_toIndex->isChecked()   ? AnonymizeOutput::Index
        : m_toSend->isChecked()    ? AnonymizeOutput::Send
                                   : AnonymizeOutput::Upload;
}

QString AnonymizeOutputPanel::folder() const
{
    return m_folder->text().trimmed();
}

QString AnonymizeOutputPanel::obstacle() const
{
    if (output() != AnonymizeOutput::Folder) {
        return {};
    }
    const QFileInfo target(folder());
    return folder().isEmpty()  ? tr("Choose a folder for the copies.")
        : !target.isDir()      ? tr("There is no such folder.")
        : !target.isWritable() ? tr("The folder cannot be written to.")
                               : QString();
}
