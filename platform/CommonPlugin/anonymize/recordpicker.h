#pragma once

#include <QSet>
#include <QTimer>
#include <QWidget>

class QLabel;
class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

/**
 * A list of patients and their studies with boxes to tick, and a field that finds patients by name or number.
 *
 * Reads the default connection; what is ticked is remembered while something else is listed. GUI thread.
 */
class RecordPicker : public QWidget
{
    Q_OBJECT

public:
    explicit RecordPicker(QWidget *parent = nullptr);

    /// Ticks just these studies, and lists their patients first.
    void setTicked(const QList<qlonglong> &studies);
    /// The keys of the ticked studies, ascending.
    QList<qlonglong> ticked() const;
    /// Lists anew what the index has.
    void reload();

signals:
    void changed();

private:
    void build();
    void addPatients(const QString &condition, const QVariant &value, int most);
    void addStudies(QTreeWidgetItem *patient, qlonglong key);
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
};
