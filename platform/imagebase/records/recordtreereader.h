#pragma once

#include "inquiryfilter.h"
#include "rowreader.h"

#include <QList>
#include <QSqlError>

#include <array>

class QPatient;
class QSeries;
class QStudy;

/**
 * Reads the patients, studies and series that a filter finds, with one query a level, and joins them in
 * memory.
 *
 * The lowest level with conditions is read first, by its own conditions and those above it. From there the
 * levels above are the parents of what was found, and those below all its children: so every condition is
 * evaluated once, a parent comes only with a child that satisfies the lower conditions, and only such
 * children come with it.
 */
class RecordTreeReader
{
public:
    /// @param columns what to read of each of the three levels; what the order of records needs is read
    /// anyway
    RecordTreeReader(
        const QSqlDatabase &db, const InquiryFilter &filter, const std::array<QVector<int>, 3> &columns);

    /// Reads from one snapshot. @return the patients, with all below them, to be owned by the caller; none
    /// where error() is set
    QList<QPatient *> read();
    const QSqlError &error() const { return m_error; }

private:
    struct Row
    {
        qint64 key;
        qint64 parent;
        RecordRow values;
    };
    using Rows = std::vector<Row>;

    RecordLevel lowestConditionedLevel() const;
    SqlCondition conditionsDownTo(RecordLevel level) const;
    SqlCondition childrenOf(RecordLevel level) const;
    SqlCondition parentsOfRows(RecordLevel level) const;
    bool readLevel(RecordLevel level, const SqlCondition &where);
    bool readLevels();
    bool coversMost(RecordLevel level, int keys) const;
    QList<QPatient *> joined();

    const QSqlDatabase m_db;
    const InquiryFilter &m_filter;
    std::array<QVector<int>, 3> m_columns;
    std::array<Rows, 3> m_rows;
    QSqlError m_error;
};
