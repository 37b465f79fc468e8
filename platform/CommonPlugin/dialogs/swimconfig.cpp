#include "swimconfig.h"

#include "configlocation.h"
#include "sharedwindow.h"

#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QShortcut>
#include <QVBoxLayout>

namespace {

QString mainIni()
{
    return QLatin1String(ConfigKey::mainIni);
}

QString checkedFile()
{
    return ConfigLocation::checked(mainIni());
}

QString fileBesideProgram()
{
    return ConfigLocation::besideProgram(mainIni());
}

QString windowFile()
{
    return ConfigLocation::checkedFromWorkingDirectory(mainIni());
}

/// The main window never looks beside the program.
QString fileAboveProgram()
{
    return ConfigLocation::aboveProgram(mainIni());
}

int valueIn(const QString &file, const char *key)
{
    return file.isEmpty() ? 0 : QSettings(file, QSettings::IniFormat).value(QLatin1String(key), 0).toInt();
}

bool writeValue(const QString &file, const char *key, int value)
{
    QDir().mkpath(QFileInfo(file).path());
    QSettings settings(file, QSettings::IniFormat);
    settings.setValue(QLatin1String(key), value);
    settings.sync();
    return settings.status() == QSettings::NoError;
}

} // namespace

swimconfig *swimconfig::instance()
{
    return sharedWindow<swimconfig>([] { return new swimconfig; });
}

swimconfig::swimconfig(QWidget *parent)
    : QWidget(parent, Qt::Window)
{
    build();
}

QList<swimconfig::Setting> swimconfig::settings()
{
    return {
        {ConfigKey::importMode, tr("Import"), tr("Takes effect at the next start of the program."),
            {tr("Reference files where they are"), tr("Copy files into the store"), tr("Ask at each import")},
            windowFile, fileAboveProgram},
        {ConfigKey::deleteMode, tr("Deletion"), tr("What happens to the files of records that are deleted."),
            {tr("Remove copied files only"), tr("Remove referenced files too")}, checkedFile,
            fileBesideProgram},
        {ConfigKey::duplicatePolicy, tr("Other content under a known identifier"),
            tr("When an import brings other bytes for an image of the index."),
            {tr("Keep the indexed file"), tr("Take the new file")}, checkedFile, fileBesideProgram}};
}

void swimconfig::build()
{
    setWindowTitle(tr("Settings"));
    auto *layout = new QVBoxLayout(this);
    const QList<Setting> all = settings();
    for (const Setting &setting : all) {
        addSetting(layout, setting);
    }
    m_failure = new QLabel(this);
    m_failure->setObjectName(QStringLiteral("failure"));
    m_failure->setWordWrap(true);
    m_failure->setTextFormat(Qt::PlainText);
    m_failure->hide();
    layout->addWidget(m_failure);
    layout->addStretch();
    auto *buttons = new QDialogButtonBox(this);
    QPushButton *ok = buttons->addButton(QDialogButtonBox::Ok);
    ok->setText(tr("OK"));
    ok->setObjectName(QStringLiteral("ok"));
    ok->setDefault(true);
    buttons->addButton(QDialogButtonBox::Cancel)->setText(tr("Cancel"));
    connect(buttons, &QDialogButtonBox::accepted, this, &swimconfig::save);
    connect(buttons, &QDialogButtonBox::rejected, this, &QWidget::close);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
    layout->addWidget(buttons);
}

void swimconfig::addSetting(QVBoxLayout *layout, const Setting &setting)
{
    auto *box = new QGroupBox(setting.caption, this);
    auto *lines = new QVBoxLayout(box);
    auto *group = new QButtonGroup(box);
    group->setObjectName(QLatin1String(setting.key));
    for (int i = 0; i < setting.choices.size(); ++i) {
        auto *choice = new QRadioButton(setting.choices.at(i), box);
        choice->setToolTip(setting.hint);
        group->addButton(choice, i);
        lines->addWidget(choice);
    }
    lines->addWidget(new QLabel(setting.hint, box));
    layout->addWidget(box);
    m_groups.append(group);
}

void swimconfig::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_failure->hide();
    read();
}

void swimconfig::read()
{
    const QList<Setting> all = settings();
    for (int i = 0; i < all.size(); ++i) {
        const int value = valueIn(all.at(i).find(), all.at(i).key);
        QButtonGroup *group = m_groups.at(i);
        group->setExclusive(false); // so that a value of none of the choices checks none
        const QList<QAbstractButton *> choices = group->buttons();
        for (QAbstractButton *choice : choices) {
            choice->setChecked(group->id(choice) == value);
        }
        group->setExclusive(true);
    }
}

void swimconfig::save()
{
    QStringList failed;
    const QList<Setting> all = settings();
    for (int i = 0; i < all.size(); ++i) {
        const Setting &setting = all.at(i);
        const QString found = setting.find();
        const int value = m_groups.at(i)->checkedId();
        if (value < 0 || value == valueIn(found, setting.key)) {
            continue; // as it is, or a value that is none of the choices and was left alone
        }
        const QString file = QDir::cleanPath(found.isEmpty() ? setting.fallback() : found);
        if (!writeValue(file, setting.key, value) && !failed.contains(file)) {
            failed.append(file);
        }
    }
    m_failure->setVisible(!failed.isEmpty());
    m_failure->setText(tr("These settings cannot be kept, since this file cannot be written: %1")
                           .arg(failed.join(QStringLiteral(", "))));
    if (failed.isEmpty()) {
        close();
    }
}
