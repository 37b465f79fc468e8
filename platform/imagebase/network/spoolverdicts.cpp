#include "spoolverdicts.h"

#include "spoolnotes.h"
#include "spoolqueue.h"

#include <utility>

namespace {

SpooledObject described(const SpoolItem &item)
{
    const DicomHeader &header = item.result->header;
    return {item.path, header[Attribute::StudyInstanceUID], header[Attribute::SeriesInstanceUID],
        header[Attribute::SOPInstanceUID], false};
}

} // namespace

bool SpoolVerdicts::isStranger(const QSqlDatabase &db, const SpoolItem &item)
{
    const bool isStranger = m_follower && item.result->outcome == DicomReadResult::Outcome::Image
        && !m_follower->accepts(db, described(item));
    if (isStranger) {
        m_strangers.append(item.path);
    }
    return isStranger;
}

void SpoolVerdicts::note(const SpoolItem &item, bool isTaken)
{
    if (m_follower) {
        m_objects.append(described(item));
        m_objects.last().isTaken = isTaken;
    }
}

bool SpoolVerdicts::record(const QSqlDatabase &db) const
{
    return !m_follower || m_follower->record(db, m_objects);
}

void SpoolVerdicts::tell(const SpoolNotes &notes)
{
    for (const QByteArray &path : std::exchange(m_strangers, {})) {
        notes.keepAside(path, ReceiveProblem::OtherObject, QString());
    }
    if (m_follower) {
        m_follower->committed(std::exchange(m_objects, {}));
    }
}

void SpoolVerdicts::forget()
{
    m_objects.clear();
    m_strangers.clear();
}
