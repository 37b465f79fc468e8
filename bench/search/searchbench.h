#pragma once

#include "workstationwindow.h"

#include <QElapsedTimer>
#include <QJsonObject>
#include <QStringList>

#include <functional>
#include <vector>

class QLineEdit;
class ShownPatients;

/**
 * The search bar in the workstation's own frame, typed into letter by letter. The time of a key ends when the
 * rows that answer it are painted. Needs the default connection on a filled index.
 */
class SearchBench
{
public:
    SearchBench();

    /// @param importFolder imported into the index while typing goes on; none where empty
    QJsonObject type(const QString &importFolder);

private:
    void typeAll();
    void key(const std::function<void()> &press);
    void turn(const std::function<void()> &action);
    void beginTurn();
    void endTurn();

    WorkstationWindow m_window;
    ShownPatients *m_shown;
    QLineEdit *m_text;
    std::vector<double> m_keys; ///< milliseconds from each key to its painted answer
    QElapsedTimer m_sinceWait;
    double m_longestTurn = 0; ///< milliseconds in which the GUI answered nothing else
    double m_processorBefore = 0;
    double m_longestWork = 0; ///< milliseconds of processor time of the GUI in one turn
};
