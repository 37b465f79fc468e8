#include "indexrecord.h"

#include "rowreader.h"

IndexRecord::IndexRecord(RecordLevel level, qint64 pk, QObject *parent)
    : QObject(parent)
    , m_level(level)
    , m_pk(pk)
{ }

IndexRecord::IndexRecord(RecordLevel level, qint64 pk, const RecordRow &row)
    : m_level(level)
    , m_pk(pk)
    , m_row(row)
{ }

void IndexRecord::setPk(qint64 pk)
{
    if (pk != m_pk) {
        m_row = RecordRow();
    }
    m_pk = pk;
}

QVariant IndexRecord::known(int column) const
{
    QVariant read = value(column);
    if (read.isValid() || m_pk == 0) {
        return read;
    }
    RowReader reader(
        QSqlDatabase::database(), m_level, {column}, RowReader::keyIs(QStringLiteral("pk"), m_pk));
    return reader.next() ? reader.row().value(column) : QVariant();
}

bool IndexRecord::readRow()
{
    RowReader reader(QSqlDatabase::database(), m_level, RowReader::keyIs(QStringLiteral("pk"), m_pk));
    const bool found = reader.next();
    m_row = found ? reader.row() : RecordRow();
    return found;
}
