#pragma once

#include "fieldconfiguration.h"

#include <QWidget>

class QLayout;
class QLineEdit;
class QPushButton;
class QTreeWidget;

/// The columns of one record table, each with a check box that says whether the table shows it. Writes every
/// change at once. Belongs to selectHideForm.
class FieldPage : public QWidget
{
    Q_OBJECT

public:
    /// @param table a record table, such as "patient"
    explicit FieldPage(const QString &table, QWidget *parent = nullptr);

signals:
    /// The configuration was written.
    void changed();

private:
    using Flags = FieldConfiguration::Flags;

    void build();
    QLayout *buildButtons();
    QPushButton *addButton(QLayout *layout, const QString &text, const QString &name);
    void fill(const QString &table);
    Flags shownFlags() const;
    void check(const Flags &flags);
    void apply(const Flags &flags);
    void filter(const QString &text);

    FieldConfiguration m_configuration;
    QLineEdit *m_filter = nullptr;
    QTreeWidget *m_list = nullptr;
};
