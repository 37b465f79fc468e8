#include "choicepage.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QRadioButton>
#include <QVBoxLayout>

ChoicePage::ChoicePage(const QString &title, QWidget *parent)
    : SettingsPage(title, parent)
    , m_layout(new QVBoxLayout(this))
{ }

ChoicePage *ChoicePage::imports(QWidget *parent)
{
    auto *page = new ChoicePage(tr("Imports"), parent);
    page->add(MainSetting::importMode(), tr("What an import does with the files"),
        tr("Takes effect with the next main window: at the next start, or after a change of language or "
           "index."),
        {tr("Reference files where they are"), tr("Copy files into the store"), tr("Ask at each import")});
    page->add(MainSetting::duplicatePolicy(), tr("Other content under a known identifier"),
        tr("When an import brings other bytes for an image of the index. Takes effect at the next import."),
        {tr("Keep the indexed file"), tr("Take the new file")});
    page->m_layout->addStretch();
    return page;
}

ChoicePage *ChoicePage::deletion(QWidget *parent)
{
    auto *page = new ChoicePage(tr("Deletion"), parent);
    page->add(MainSetting::deleteMode(), tr("What happens to the files of records that are deleted"),
        tr("Read at each deletion: takes effect at once."),
        {tr("Remove copied files only"), tr("Remove referenced files too")});
    page->m_layout->addStretch();
    return page;
}

void ChoicePage::add(
    const MainSetting &setting, const QString &caption, const QString &hint, const QStringList &choices)
{
    auto *box = new QGroupBox(caption, this);
    auto *lines = new QVBoxLayout(box);
    auto *group = new QButtonGroup(box);
    group->setObjectName(setting.key());
    for (int i = 0; i < choices.size(); ++i) {
        auto *choice = new QRadioButton(choices.at(i), box);
        choice->setToolTip(hint);
        group->addButton(choice, i);
        lines->addWidget(choice);
    }
    addHint(lines, hint);
    m_layout->addWidget(box);
    m_choices.append({setting, group});
}

void ChoicePage::read()
{
    for (const Choice &choice : qAsConst(m_choices)) {
        const int value = choice.setting.value().toInt();
        choice.group->setExclusive(false); // so that a value of none of the choices checks none
        const QList<QAbstractButton *> buttons = choice.group->buttons();
        for (QAbstractButton *button : buttons) {
            button->setChecked(choice.group->id(button) == value);
        }
        choice.group->setExclusive(true);
    }
}

QStringList ChoicePage::write()
{
    QStringList failed;
    for (const Choice &choice : qAsConst(m_choices)) {
        const int value = choice.group->checkedId();
        // A value that is none of the choices, or the default of a key that is not there, is left alone.
        if (value >= 0 && value != choice.setting.value().toInt() && !choice.setting.write(value)) {
            failed.append(choice.setting.file());
        }
    }
    return failed;
}
