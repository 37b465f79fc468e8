#pragma once

#include "exporttally.h"
#include "exportwriter.h"

#include <QVector>

/**
 * The steps of one export: list, write into the stage, read back, bring to its place. What goes wrong with a
 * file stands in the report; what ends the export is told by end(). One thread.
 */
class ExportRun
{
public:
    /// All outlive the run.
    ExportRun(const ExportRequest &request, const std::atomic<bool> &cancelled, ExportTally &tally);

    ExportReport run();

private:
    using Phase = ExportProgress::Phase;

    void work();
    bool list();
    bool hasRoom();
    bool hasPlace();
    void writeAll(const ExportStage &stage);
    bool writePass(ExportWriter &writer);
    ExportWriter::Outcome writeOne(ExportWriter &writer, const ExportItem &item);
    void finish(ExportWriter &writer, const ExportStage &stage);
    void checkAll(ExportWriter &writer);
    void placeAll(const QStringList &pieces, const ExportStage &stage);
    void placeFiles(const ExportStage &stage);
    void noteFolder(const QString &name);
    bool end(ExportEnd how, const QString &detail = {});
    void begin(Phase phase);
    void fail(const ExportItem &item, const ExportWriter::Outcome &outcome);

    const ExportRequest &m_request;
    const std::atomic<bool> &m_cancelled;
    ExportTally &m_tally;
    ExportReport m_report;
    QVector<ExportItem> m_items; ///< that are still to be brought to their places
};
