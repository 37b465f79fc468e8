#pragma once

#include "imagebase_export.h"
#include "patientquestion.h"

#include <QSqlDatabase>

#include <atomic>
#include <cstddef>
#include <memory>
#include <vector>

/**
 * All patients of an index as they stood at one moment, held in memory to be searched at every keystroke.
 *
 * Never changes once it is read: any thread may ask it, while another reads the next one.
 */
class IMAGEBASE_EXPORT PatientSearch
{
public:
    ~PatientSearch();
    PatientSearch(const PatientSearch &) = delete;
    PatientSearch &operator=(const PatientSearch &) = delete;

    /**
     * Reads an index from one snapshot.
     * @param previous an older state of it, or null: makes the reading cheaper
     * @param stop looked at now and then; once it is true the reading ends
     * @return null where it was stopped or the index could not be read
     */
    static std::shared_ptr<const PatientSearch> read(
        const QSqlDatabase &db, const PatientSearch *previous, const std::atomic<bool> &stop);

    int patients() const;
    /// Memory that it takes.
    std::size_t bytes() const;
    /// The keys of the patients that match, in rising order.
    std::vector<qint64> find(const PatientQuestion &question) const;

private:
    struct Content;
    explicit PatientSearch(std::unique_ptr<const Content> content);

    const std::unique_ptr<const Content> m_content;
};
