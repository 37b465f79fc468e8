#pragma once

#include "dicomdestination.h"

#include <QHash>
#include <QWidget>

class EchoCheck;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;
struct NetworkFailure;

/// The configured destinations to choose from by check boxes, and whether they answer. GUI thread.
class DestinationList : public QWidget
{
    Q_OBJECT

public:
    explicit DestinationList(QWidget *parent = nullptr);
    ~DestinationList() override;

    /// Shows these; what was chosen stays so, by name. A single one is chosen from the start.
    void setDestinations(const QVector<DicomDestination> &destinations);
    const QVector<DicomDestination> &destinations() const { return m_destinations; }
    /// The checked ones, in their order; none of those that cannot be used.
    QVector<DicomDestination> chosen() const;
    /// Asks the checked ones, or all where none is checked, whether they are there.
    void checkConnections();

signals:
    void chosenChanged();

private:
    enum Column { NameColumn, AeTitleColumn, AddressColumn, ConnectionColumn, ColumnCount };
    void build();
    QTreeWidgetItem *makeItem(int place);
    bool isUsable(int place) const;
    void check(int place);
    void tell(const QString &node, const QString &result);

    QTreeWidget *m_list = nullptr;
    QPushButton *m_check = nullptr;
    QVector<DicomDestination> m_destinations;
    QHash<QString, QString> m_results; ///< of the checks, by nodeOf()
    QHash<QString, EchoCheck *> m_running; ///< by nodeOf()
};
