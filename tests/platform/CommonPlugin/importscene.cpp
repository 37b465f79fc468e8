#include "importscene.h"

#include "configlocation.h"
#include "dicomfilebuilder.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QVariant>

ImportScene::ImportScene()
    : m_workingDirectory(QDir::currentPath())
{
    const QDir program(m_program.path());
    program.mkpath(QStringLiteral("bin"));
    program.mkpath(QStringLiteral("config"));
    QDir::setCurrent(program.path());
    ConfigLocation::setBase(program.filePath(QStringLiteral("bin")));
}

ImportScene::~ImportScene()
{
    ConfigLocation::setBase(QString());
    QDir::setCurrent(m_workingDirectory);
}

QString ImportScene::imagePath(int instance) const
{
    return m_files.filePath(QStringLiteral("%1.dcm").arg(instance));
}

void ImportScene::addImage(int instance) const
{
    DicomFileBuilder()
        .uids(QStringLiteral("1.2.3"), QStringLiteral("1.2.3.4"), QStringLiteral("1.2.3.4.%1").arg(instance))
        .instanceNumber(instance)
        .write(imagePath(instance));
}

QString ImportScene::addBrokenImage(int instance) const
{
    addImage(instance);
    QFile file(imagePath(instance));
    file.resize(200);
    return file.fileName();
}

QString ImportScene::mainIni() const
{
    return m_program.filePath(QStringLiteral("config/main.ini"));
}

void ImportScene::configure(const char *key, int value) const
{
    QSettings(mainIni(), QSettings::IniFormat).setValue(QLatin1String(key), value);
}

int ImportScene::imageCount() const
{
    return index.count("imageformat");
}

void ImportScene::lock() const
{
    index.query(QStringLiteral("BEGIN IMMEDIATE"));
}

void ImportScene::unlock() const
{
    index.query(QStringLiteral("ROLLBACK"));
}
