#pragma once

#include "indexrecord.h"
#include "recordcolumns.h"

class QSeries;

/// One image of the index. Belongs to its series.
class IMAGEBASE_EXPORT QInstance : public IndexRecord
{
    Q_OBJECT
    PM_INSTANCE_COLUMNS(PM_RECORD_PROPERTY)

public:
    enum class Column { PM_INSTANCE_COLUMNS(PM_RECORD_COLUMN) };

    explicit QInstance(qint64 pk, QObject *parent = nullptr);
    explicit QInstance(QObject *parent = nullptr);
    ~QInstance() override;

    QSeries *getSeries() const { return m_series; }
    QString getSOPInstanceUID() const;
    /// Absolute path of the file.
    QString getFilePath() const;

private:
    friend class QSeries;
    QInstance(qint64 pk, const RecordRow &row);
    static bool isBefore(const QInstance *a, const QInstance *b);

    QSeries *m_series = nullptr;
};
