#pragma once

#include "commonplugin_export.h"

#include <QObject>

/**
 * Tells the GUI thread how a loader's run goes. Lives there, whatever thread the loader works on, so that
 * every receiver is called there too. Shared by the loader and its progress widget, and so outlives both.
 */
class COMMONPLUGIN_EXPORT LoadNotifier : public QObject
{
    Q_OBJECT

public:
    LoadNotifier() = default;

signals:
    /// The loader's turn has come.
    void begun();
    /// Once for each run, however it ends, and once more after each "try again" of the progress widget.
    /// @param success true where the import went through, whatever it found
    void finishReadFiles(bool success);
};
