#include "archive.h"

#include "dicomdestination.h"
#include "receivesettings.h"

#include <QSettings>

namespace {

constexpr char methodKey[] = "RetrieveMethod";

RetrieveMethod methodOf(const QString &word)
{
    if (word.compare(QLatin1String("get"), Qt::CaseInsensitive) == 0) {
        return RetrieveMethod::Get;
    }
    return word.compare(QLatin1String("move"), Qt::CaseInsensitive) == 0 ? RetrieveMethod::Move
                                                                         : RetrieveMethod::Auto;
}

} // namespace

QVector<Archive> Archive::readAll()
{
    QVector<Archive> archives;
    const QSettings file(DestinationSettings::file(), QSettings::IniFormat);
    for (const DicomDestination &destination : DestinationSettings::read()) {
        const QString key = destination.name + QLatin1Char('/') + QLatin1String(methodKey);
        archives.append({destination.name, {destination.aeTitle, destination.ip, destination.port},
            methodOf(file.value(key).toString().trimmed())});
    }
    return archives;
}

ScuOptions Archive::ownOptions()
{
    ScuOptions options;
    options.ownAeTitle = ReceiveSettings::ownAeTitle();
    return options;
}
