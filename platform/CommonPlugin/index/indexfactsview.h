#pragma once

#include "attributes.h"

#include <QMap>
#include <QWidget>

class IndexJob;
class QFormLayout;
class QGridLayout;
class QLabel;
struct IndexFacts;

/// Where the index lies, how large it is and what it holds: records by level and by upload state, counted in
/// the background. GUI thread.
class IndexFactsView : public QWidget
{
    Q_OBJECT

public:
    explicit IndexFactsView(QWidget *parent = nullptr);

public slots:
    /// Looks at databasePath() anew.
    void refresh();

private:
    void build();
    QLayout *buildCounts();
    QLabel *addLine(QFormLayout *lines, const QString &caption, const QString &objectName);
    QLabel *addCount(QGridLayout *grid, int row, int column, const QString &name);
    void show(const IndexFacts &facts);
    void showNothing();

    QLabel *m_path = nullptr;
    QLabel *m_size = nullptr;
    QLabel *m_failure = nullptr;
    QMap<RecordLevel, QLabel *> m_records;
    QMap<RecordLevel, QMap<QString, QLabel *>> m_byState;
    IndexJob *m_count = nullptr; ///< the one that runs
};
