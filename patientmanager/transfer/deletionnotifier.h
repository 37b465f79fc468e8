#pragma once

#include "patientmanager_export.h"
#include "recorddeletion.h"

#include <QObject>

#include <functional>

/// Lets a host ask before a deletion of the main window begins, and tells it how each has ended. Owned by the
/// window; GUI thread.
class PATIENTMANAGER_EXPORT DeletionNotifier : public QObject
{
    Q_OBJECT

public:
    explicit DeletionNotifier(QObject *parent = nullptr);

    /// Who is asked last, once the user has confirmed a deletion; answers whether it may begin.
    void setGate(std::function<bool()> mayBegin) { m_mayBegin = std::move(mayBegin); }
    bool mayBegin() const { return !m_mayBegin || m_mayBegin(); }

signals:
    /// After the records are gone and the forms have read their tables again.
    void ended(const DeletionReport &report);

private:
    std::function<bool()> m_mayBegin;
};
