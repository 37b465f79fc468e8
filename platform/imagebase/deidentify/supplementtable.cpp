#include "supplementtable.h"

#include <QFile>

#include <algorithm>

static void keepSupplement()
{
    Q_INIT_RESOURCE(imagebase);
}

namespace {

/// The lines of a resource that are no comments.
QList<QByteArray> linesOf(const QString &name)
{
    keepSupplement();
    QFile file(QStringLiteral(":/imagebase/deidentify/") + name);
    file.open(QIODevice::ReadOnly);
    QList<QByteArray> lines = file.readAll().split('\n');
    lines.erase(std::remove_if(lines.begin(), lines.end(),
                    [](const QByteArray &line) { return line.isEmpty() || line.startsWith('#'); }),
        lines.end());
    return lines;
}

SupplementTable::Action actionOf(const QByteArray &letter)
{
    using Action = SupplementTable::Action;
    return letter == "X" ? Action::Remove
        : letter == "Z"  ? Action::Empty
        : letter == "K"  ? Action::Keep
        : letter == "N"  ? Action::NeverMoved
                         : Action::None;
}

} // namespace

SupplementTable::SupplementTable()
{
    for (const QByteArray &line : linesOf(QStringLiteral("supplement.tsv"))) {
        const QList<QByteArray> columns = line.split('\t');
        bool isTag = false;
        const quint32 tag = columns.first().toUInt(&isTag, 16);
        if (isTag && columns.size() > 1) {
            m_actions.insert(tag, actionOf(columns.at(1)));
        }
    }
    for (const QByteArray &line : linesOf(QStringLiteral("terms.txt"))) {
        for (const QByteArray &term : line.split(' ')) {
            m_terms.insert(term);
        }
    }
}

const SupplementTable &SupplementTable::instance()
{
    static const SupplementTable table;
    return table;
}

bool SupplementTable::isTerm(const QByteArray &value) const
{
    if (m_terms.contains(value)) {
        return true;
    }
    const QList<QByteArray> words = value.split(' ');
    return std::all_of(
        words.cbegin(), words.cend(), [this](const QByteArray &word) { return m_terms.contains(word); });
}
