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

    /// The key is known without the row.
    QVariant value(int column) const
    {
        return column == 0 && m_pk != 0 ? QVariant(m_pk) : m_row.value(column);
    }
    /// Forgets the values of the record of another key.
    void setPk(qint64 pk);
    /// A value, where need be as the index has it now.
    QVariant known(int column) const;
    QString textOf(int column) const { return known(column).toString(); }
    /// Reads all columns of the row of the key; without such a row the values are gone. @return whether there
    /// is one
    bool readRow();

private:
    const RecordLevel m_level;
    qint64 m_pk;
    RecordRow m_row;
};
