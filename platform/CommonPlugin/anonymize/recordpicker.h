#pragma once

#include "recordlisting.h"

#include <QPointer>
#include <QSet>
#include <QTimer>
#include <QWidget>

class IndexJob;
class QLabel;
class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

/**
 * A list of patients and their studies with boxes to tick, and a field that finds patients by name or number.
 *
 * Reads the index on a thread; what is ticked is remembered while something else is listed. GUI thread.
 */
class RecordPicker : public QWidget
{
    Q_OBJECT

public:
    explicit RecordPicker(QWidget *parent = nullptr);

    /// Ticks just the studies of these records, and lists their patients first; nothing is ticked until they
    /// are found. @param tableName as hosts call it
    void choose(const QString &tableName, const QList<qlonglong> &keys);
    bool hasTicked() const { return !m_ticked.isEmpty(); }
    /// The keys of the ticked studies, ascending.
    QList<qlonglong> ticked() const;
    /// Lists anew what the index has.
    void reload();

signals:
    /// Other studies are ticked.
    void changed();

private:
    void build();
    void read(const RecordQuestion &question);
    void show(const RecordListing &listing);
    void addPatient(const ListedPatient &patient);
    void addStudy(QTreeWidgetItem *patient, const ListedStudy &study);
    void note(const QString &text);
    void showPatient(QTreeWidgetItem *patient);
    void onItemChanged(QTreeWidgetItem *item);
    void tell();

    QLineEdit *m_search = nullptr;
    QTreeWidget *m_tree = nullptr;
    QLabel *m_note = nullptr; ///< why there is nothing, or not everything
    QLabel *m_count = nullptr;
    QTimer m_pause; ///< between typing and asking
    QSet<qlonglong> m_ticked; ///< studies
    bool m_isFilling = false;
    QPointer<IndexJob> m_job; ///< the one that somebody waits for; earlier ones end by themselves
    RecordQuestion m_chosen; ///< what choose() asked for, until it is answered
};
