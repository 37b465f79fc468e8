#pragma once

#include "exportwriter.h"

/// Files in folders.
class FolderWriter : public ExportWriter
{
public:
    FolderWriter(const ExportStage &stage, const std::atomic<bool> &cancelled);

    Outcome write(const ExportItem &item) override;
    std::optional<Outcome> finish() override { return std::nullopt; }
    Outcome check(const ExportItem &item) override;
    QStringList pieces() const override { return {}; }

protected:
    const ExportStage &stage() const { return m_stage; }

private:
    const ExportStage &m_stage;
    const std::atomic<bool> &m_cancelled;
};
