#pragma once

#include <QCoreApplication>
#include <QStringList>

/// Joins what a window says in one line, as the application's language does. Any thread.
class Sentences
{
    Q_DECLARE_TR_FUNCTIONS(Sentences)

public:
    /// Two sentences with their stops.
    static QString followed(const QString &first, const QString &second)
    {
        return tr("%1 %2", "two sentences with their stops").arg(first, second);
    }
    /// Remarks that are no sentences.
    static QString remarks(const QStringList &parts) { return parts.join(tr("; ", "between two remarks")); }
};
