#pragma once

#include "attributes.h"

#include <QObject>

#include <array>

class FieldList;
class QSqlTableModel;
class QStringListModel;

/**
 * The fields that conditions can be about: for each level the columns of its field configuration but the
 * last, with their captions.
 *
 * A level is read on the default connection when it is first asked for, and again while it has no fields. The
 * patients make the table model with which the other levels are read, so they are asked for first. GUI
 * thread.
 */
class InquiryFields : public QObject
{
    Q_OBJECT

public:
    explicit InquiryFields(QObject *parent);

    /// The model of a level's list; it stays this object's.
    QStringListModel *of(RecordLevel level);

private:
    void fill(RecordLevel level);

    std::array<FieldList *, 4> m_lists{}; ///< by RecordLevel
    QSqlTableModel *m_table = nullptr;
};
