#pragma once

#include "attributes.h"
#include "imagebase_export.h"
#include "recordrow.h"

#include <QObject>

/**
 * One record of the index as an object: its key and the values that were read of its row, each a Qt property
 * named by its column.
 *
 * A snapshot: what the index holds later does not change it. Lives on the thread of Qt's default connection,
 * on which the search... calls of the classes below work.
 */
class IMAGEBASE_EXPORT IndexRecord : public QObject
{
    Q_OBJECT

public:
    /// 0 where the record has no key.
    qint64 getPk() const { return m_pk; }
    RecordLevel level() const { return m_level; }

protected:
    IndexRecord(RecordLevel level, qint64 pk, QObject *parent);
    IndexRecord(RecordLevel level, qint64 pk, const RecordRow &row);

    QVariant value(int column) const { return m_row.value(column); }
    void setPk(qint64 pk) { m_pk = pk; }
    void clearRow() { m_row = RecordRow(); }
    /// The text of a column: what was read of it, or what the index says now.
    QString textOf(int column) const;
    /// Reads all columns of the row of the key; without such a row the values are gone. @return whether there
    /// is one
    bool readRow();

private:
    const RecordLevel m_level;
    qint64 m_pk;
    RecordRow m_row;
};
