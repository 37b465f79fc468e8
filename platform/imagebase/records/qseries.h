#pragma once

#include "indexrecord.h"
#include "recordcolumns.h"
#include "recordfamily.h"

#include <QList>

class QInstance;
class QStudy;

/// One series of the index with the images that were read of it, which it owns. Belongs to its study.
class IMAGEBASE_EXPORT QSeries : public IndexRecord
{
    Q_OBJECT
    PM_SERIES_COLUMNS(PM_RECORD_PROPERTY)

public:
    enum class Column { PM_SERIES_COLUMNS(PM_RECORD_COLUMN) };

    explicit QSeries(qint64 pk, QObject *parent = nullptr);
    explicit QSeries(QObject *parent = nullptr);
    ~QSeries() override;

    /// Null until a study has taken it over.
    QStudy *getStudy() const { return m_study; }
    QString getSeriesUID() const;
    /// In the order of their numbers.
    QList<QInstance *> getInstances() const { return m_instances; }

    /// Reads the record's own row. @return whether there is one
    bool searchSeriesInfo();
    /// Reads all images of the series in the place of those it has.
    bool searchInstance();

private:
    friend class QStudy;
    friend class QInstance;
    friend class RecordTreeReader;
    static RecordFamily<QSeries, QInstance> family();
    QSeries(qint64 pk, const RecordRow &row);
    static bool isBefore(const QSeries *a, const QSeries *b);

    QStudy *m_study = nullptr;
    QList<QInstance *> m_instances;
};
