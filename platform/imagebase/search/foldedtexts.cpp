#include "foldedtexts.h"

#include "textfold.h"

#include <QByteArray>

#include <algorithm>
#include <cstring>
#include <functional>

namespace {

/// Words have no blanks, so none reaches from one field into the next.
constexpr char separator = '\n';
constexpr std::size_t spread = 0x9e3779b97f4a7c15; // bits without a pattern

bool isPlain(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return uchar(c) < 0x80; });
}

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c;
}

std::size_t fingerprintOf(std::initializer_list<std::string_view> fields)
{
    std::size_t print = fields.size();
    for (const std::string_view field : fields) {
        print = (print ^ std::hash<std::string_view>()(field)) * spread;
    }
    return print;
}

} // namespace

FoldedTexts::FoldedTexts(const FoldedTexts *previous)
    : m_previous(previous)
{
    if (previous) {
        m_buffer.reserve(previous->m_buffer.size());
        m_records.reserve(previous->m_records.size());
    }
}

void FoldedTexts::add(qint64 key, std::initializer_list<std::string_view> fields)
{
    const std::size_t fingerprint = fingerprintOf(fields);
    if (!takePrevious(key, fingerprint)) {
        for (const std::string_view field : fields) {
            appendFolded(field.substr(0, fieldLimit));
            m_buffer += separator;
        }
    }
    m_records.push_back({key, fingerprint, m_buffer.size()});
}

bool FoldedTexts::takePrevious(qint64 key, std::size_t fingerprint)
{
    if (!m_previous) {
        return false;
    }
    int &record = m_previousRecord;
    while (record < m_previous->size() && m_previous->key(record) < key) {
        ++record;
    }
    if (record == m_previous->size() || m_previous->key(record) != key
        || m_previous->m_records[std::size_t(record)].fingerprint != fingerprint) {
        return false;
    }
    const std::size_t from = m_previous->begin(record);
    m_buffer.append(m_previous->m_buffer, from, m_previous->m_records[std::size_t(record)].end - from);
    return true;
}

/// The plain texts, nearly all of an index, never leave their bytes.
void FoldedTexts::appendFolded(std::string_view field)
{
    if (isPlain(field)) {
        const std::size_t start = m_buffer.size();
        m_buffer.append(field);
        std::transform(m_buffer.begin() + std::ptrdiff_t(start), m_buffer.end(),
            m_buffer.begin() + std::ptrdiff_t(start), lower);
    } else {
        const QByteArray folded = foldedText(QString::fromUtf8(field.data(), int(field.size()))).toUtf8();
        m_buffer.append(folded.constData(), std::size_t(folded.size()));
    }
}

void FoldedTexts::close()
{
    m_buffer.shrink_to_fit();
    m_records.shrink_to_fit();
    m_previous = nullptr;
}

int FoldedTexts::recordOf(qint64 key) const
{
    const auto isBelow = [](const Record &record, qint64 wanted) { return record.key < wanted; };
    const auto place = std::lower_bound(m_records.begin(), m_records.end(), key, isBelow);
    return place != m_records.end() && place->key == key ? int(place - m_records.begin()) : -1;
}

std::size_t FoldedTexts::bytes() const
{
    return m_buffer.capacity() + m_records.capacity() * sizeof(Record);
}

int FoldedTexts::firstWith(std::string_view word, int from) const
{
    if (from >= size()) {
        return size();
    }
    const char *start = m_buffer.data() + begin(from);
    const void *hit = memmem(start, m_buffer.size() - begin(from), word.data(), word.size());
    return hit ? recordAt(std::size_t(static_cast<const char *>(hit) - m_buffer.data()), from) : size();
}

/// Looks near `from` first, in growing steps: hits of a short word lie close together.
int FoldedTexts::recordAt(std::size_t offset, int from) const
{
    const auto endsBefore = [](std::size_t place, const Record &record) { return place < record.end; };
    auto low = m_records.begin() + from;
    auto high = low;
    for (std::ptrdiff_t step = 1; high != m_records.end() && high->end <= offset; step *= 2) {
        low = high;
        high += std::min(step, m_records.end() - high);
    }
    const auto limit = high == m_records.end() ? high : high + 1;
    return int(std::upper_bound(low, limit, offset, endsBefore) - m_records.begin());
}
