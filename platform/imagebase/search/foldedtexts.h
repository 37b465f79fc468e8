#pragma once

#include <QtGlobal>

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

/**
 * The folded texts of many records in one buffer, to be scanned for a word.
 *
 * Filled once, in rising order of keys; read by any number of threads after that. Two fields of a record
 * stand apart by a separator that no word has. Of a field, the first fieldLimit bytes count.
 */
class FoldedTexts
{
public:
    /// @param previous an older state of the same records, or null: what has not changed is taken from it
    /// unfolded. Used by add() alone.
    explicit FoldedTexts(const FoldedTexts *previous);

    /// Appends a record. @param fields UTF-8 as stored
    void add(qint64 key, std::initializer_list<std::string_view> fields);
    /// Ends the filling: gives back spare memory and forgets the previous state.
    void close();

    int size() const { return int(m_records.size()); }
    qint64 key(int record) const { return m_records[std::size_t(record)].key; }
    /// -1 where there is none with the key.
    int recordOf(qint64 key) const;
    std::size_t bytes() const;

    /// Calls visit(record) for each record, in order, one of whose fields contains the word (folded UTF-8).
    template <typename Visit>
    void eachWith(std::string_view word, Visit visit) const
    {
        for (int record = firstWith(word, 0); record < size(); record = firstWith(word, record + 1)) {
            visit(record);
        }
    }

    static constexpr std::size_t fieldLimit = 4096;

private:
    struct Record
    {
        qint64 key;
        std::size_t fingerprint; ///< of the fields before they were folded
        std::size_t end; ///< in the buffer
    };

    std::size_t begin(int record) const { return record == 0 ? 0 : m_records[std::size_t(record) - 1].end; }
    /// The first record from `from` on that contains the word; size() where there is none.
    int firstWith(std::string_view word, int from) const;
    int recordAt(std::size_t offset, int from) const;
    bool takePrevious(qint64 key, std::size_t fingerprint);
    void appendFolded(std::string_view field);

    std::string m_buffer;
    std::vector<Record> m_records;
    const FoldedTexts *m_previous;
    int m_previousRecord = 0; ///< the first that may still be taken
};
