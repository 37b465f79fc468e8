#pragma once

#include "workstationwindow.h"

#include <QJsonObject>

#include <functional>
#include <vector>

/**
 * The workstation's window at work while another program writes to its index all the time: patients and
 * series are clicked, rows come in. Needs the default connection on a filled index.
 */
class WriterBench
{
public:
    WriterBench();

    /// @param perSecond inserts of the other program
    QJsonObject run(const QString &databasePath, int perSecond, int seconds);

private:
    void work(int step);
    void read(int step);
    void turn(const std::function<void()> &action);

    WorkstationWindow m_window;
    double m_longestTurn = 0; ///< milliseconds in which the GUI answered nothing else
    std::vector<double> m_clicks; ///< milliseconds from a click to the painted rows below
    std::vector<double> m_reads; ///< milliseconds of a read by key
};
