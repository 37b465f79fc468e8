#pragma once

#include "deidentifyreport.h"

#include <QList>
#include <QWidget>

class AnonymizeOptionsPanel;
class AnonymizeOutputPanel;
class RecordPicker;
enum class AnonymizeOutput : quint8;

/// Asks which records become anonymous copies, how, and where these go. GUI thread.
class AnonymizeSetupPage : public QWidget
{
    Q_OBJECT

public:
    explicit AnonymizeSetupPage(QWidget *parent = nullptr);

    /// Ticks the studies of records in place of those that are ticked. @param tableName as hosts call it
    void choose(const QString &tableName, const QList<qlonglong> &keys);
    /// Lists anew what the index has.
    void reload();
    /// The keys of the ticked studies, ascending.
    QList<qlonglong> studies() const;
    bool hasStudies() const;
    AnonymizeOutput output() const;
    /// What is asked for, but for the files and the key.
    DeidentifyRequest request() const;
    /// Why these settings cannot be used; empty where they can.
    QString obstacle() const;
    /// What the user should know, and may want all the same.
    QString caution() const;

signals:
    void changed();

private:
    QWidget *buildLeft();
    QWidget *buildRight();

    RecordPicker *m_picker = nullptr;
    AnonymizeOptionsPanel *m_options = nullptr;
    AnonymizeOutputPanel *m_outputs = nullptr;
};
