#include "launchcommand.h"

#include "launchersettings.h"

#include <QHash>
#include <QRegularExpression>

#include <algorithm>

namespace {

using Texts = QHash<QString, QString>;

Texts textsOf(const LaunchValues &values)
{
    return {{QLatin1String(LauncherPlaceholder::fileList), values.fileList},
        {QLatin1String(LauncherPlaceholder::studyUid), values.studyUid},
        {QLatin1String(LauncherPlaceholder::seriesUid), values.seriesUid},
        {QLatin1String(LauncherPlaceholder::patientId), values.patientId},
        {QLatin1String(LauncherPlaceholder::index), values.index},
        {QLatin1String(LauncherPlaceholder::workstation), values.workstation}};
}

QString filledIn(const QString &text, const Texts &texts)
{
    static const QRegularExpression word(QStringLiteral("\\{\\w+\\}"));
    QString filled;
    int end = 0;
    QRegularExpressionMatchIterator matches = word.globalMatch(text);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        filled += text.mid(end, match.capturedStart() - end);
        filled += texts.value(match.captured(), match.captured());
        end = match.capturedEnd();
    }
    return filled + text.mid(end);
}

} // namespace

QString LaunchCommand::program(const QString &configured, const LaunchValues &values)
{
    return configured == QLatin1String(LauncherPlaceholder::workstation) ? values.workstation : configured;
}

QStringList LaunchCommand::arguments(const QStringList &configured, const LaunchValues &values)
{
    Texts texts = textsOf(values);
    QStringList filled;
    for (const QString &argument : configured) {
        if (!argument.contains(QLatin1String(LauncherPlaceholder::files))) {
            filled.append(filledIn(argument, texts));
            continue;
        }
        for (const QString &file : values.files) {
            texts.insert(QLatin1String(LauncherPlaceholder::files), file);
            filled.append(filledIn(argument, texts));
        }
    }
    return filled;
}

bool LaunchCommand::uses(const QStringList &configured, const char *placeholder)
{
    return std::any_of(configured.begin(), configured.end(),
        [placeholder](const QString &argument) { return argument.contains(QLatin1String(placeholder)); });
}

QString LaunchCommand::strayOption(const QStringList &configured, const LaunchValues &values)
{
    const QLatin1Char sign('-');
    for (const QString &argument : configured) {
        const QStringList filled = argument.startsWith(sign) ? QStringList() : arguments({argument}, values);
        for (const QString &text : filled) {
            if (text.startsWith(sign)) {
                return text;
            }
        }
    }
    return {};
}

bool LaunchCommand::needsSelection(const QStringList &configured)
{
    const QStringList always{
        QLatin1String(LauncherPlaceholder::index), QLatin1String(LauncherPlaceholder::workstation)};
    const QString all = configured.join(QLatin1Char('\n'));
    const QStringList placeholders = LauncherSettings::placeholders();
    return std::any_of(placeholders.begin(), placeholders.end(), [&](const QString &placeholder) {
        return !always.contains(placeholder) && all.contains(placeholder);
    });
}
