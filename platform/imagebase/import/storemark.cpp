#include "storemark.h"

#include <QDir>
#include <QFile>
#include <QSqlQuery>
#include <QVariant>

namespace {

constexpr char markName[] = "/.index";
constexpr char uncertainWord[] = "uncertain";
constexpr int markSize = 80; ///< always as long, so that a shorter one leaves nothing of a longer one behind

} // namespace

StoreMark::StoreMark(const QString &store)
    : m_store(store)
{ }

StoreState StoreMark::ofIndex(const QSqlDatabase &db)
{
    StoreState state;
    QSqlQuery query(db);
    if (query.exec(QStringLiteral("SELECT Identity, Changes FROM store")) && query.next()) {
        state.identity = query.value(0).toString();
        state.changes = query.value(1).toLongLong();
    }
    return state;
}

std::optional<StoreState> StoreMark::read() const
{
    QFile file(m_store + QLatin1String(markName));
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const QList<QByteArray> words = file.read(markSize).simplified().split(' ');
    StoreState state;
    state.identity = QString::fromLatin1(words.value(0));
    state.changes = words.value(1).toLongLong();
    state.isUncertain = words.value(2) == uncertainWord;
    return state;
}

void StoreMark::write(const StoreState &state) const
{
    QFile file(m_store + QLatin1String(markName));
    if (file.open(QIODevice::ReadWrite | QIODevice::Unbuffered)) {
        const QByteArray text = state.identity.toLatin1() + ' ' + QByteArray::number(state.changes) + ' '
            + (state.isUncertain ? uncertainWord : "");
        file.write(text.leftJustified(markSize - 1) + '\n');
    }
}

bool StoreMark::isEmptyStore() const
{
    QStringList entries = QDir(m_store).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    entries.removeOne(QLatin1String(markName).mid(1));
    entries.removeOne(QStringLiteral(".incoming"));
    return entries.isEmpty();
}

void StoreMark::begin(const QSqlDatabase &db)
{
    if (m_begun) {
        return;
    }
    m_begun = true;
    m_isNew = isEmptyStore();
    const StoreState own = ofIndex(db);
    std::optional<StoreState> marked = read();
    if (!m_isNew && marked && marked->identity == own.identity && marked->changes > own.changes
        && !marked->isUncertain) {
        marked->isUncertain = true;
        write(*marked);
    }
}

QSqlError StoreMark::count(const QSqlDatabase &db)
{
    QSqlQuery query(db);
    if (!query.exec(QStringLiteral("UPDATE store SET Changes = Changes + 1"))) {
        return query.lastError();
    }
    m_counted = ofIndex(db);
    return {};
}

void StoreMark::note() const
{
    const std::optional<StoreState> marked = read();
    const bool isOwn = marked && marked->identity == m_counted.identity;
    if (!isOwn && !m_isNew) {
        return;
    }
    // Another writer may have been faster since the commit.
    if (!isOwn || marked->changes < m_counted.changes) {
        StoreState now = m_counted;
        now.isUncertain = isOwn && marked->isUncertain;
        write(now);
    }
}
