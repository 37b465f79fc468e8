#pragma once

#include "patientmanager_export.h"
#include "recorddeletion.h"

#include <QObject>

/// Tells a host how each deletion of the main window has ended. Owned by the window; GUI thread.
class PATIENTMANAGER_EXPORT DeletionNotifier : public QObject
{
    Q_OBJECT

public:
    explicit DeletionNotifier(QObject *parent = nullptr);

signals:
    /// After the records are gone and the forms have read their tables again.
    void ended(const DeletionReport &report);
};
