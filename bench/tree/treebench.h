#pragma once

#include "patientmanagermainwindow.h"

#include <QJsonObject>

#include <functional>
#include <vector>

class PatientTreeForm;
class QAbstractButton;
class QTreeView;

/**
 * The patient tree in its dock beside the tables, driven by clicks. Every time ends when what it shows is
 * painted, the tables that follow it too. Needs an index with the inquiries of the names below.
 */
class TreeBench
{
public:
    static constexpr char all[] = "all"; ///< matches every record
    static constexpr char few[] = "few"; ///< matches 200 patients
    static constexpr char fewFuzzy[] = "few fuzzy"; ///< the same patients by a part of their names
    static constexpr char images[] = "images"; ///< every record, and three conditions on images

    explicit TreeBench(int rounds);

    QJsonObject run();

private:
    double query(const char *name);
    double press(const char *button);
    double longestWhileScrolling();
    double longestWhileOpening();
    double seriesClick(int round);
    double timed(const std::function<void()> &action);
    void paint();

    const int m_rounds;
    PatientManagerMainWindow m_window;
    PatientTreeForm *m_panel = nullptr;
    QTreeView *m_view = nullptr;
};
