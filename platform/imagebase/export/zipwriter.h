#pragma once

#include "exportwriter.h"

#include <archive.h>

/// One ZIP archive; more than 4 GiB and more than 65,535 files where it must be, names in UTF-8.
class ZipWriter : public ExportWriter
{
public:
    ZipWriter(const ExportRequest &request, const ExportStage &stage, const std::atomic<bool> &cancelled);
    ~ZipWriter() override;

    Outcome write(const ExportItem &item) override;
    std::optional<Outcome> finish() override;
    Outcome check(const ExportItem &item) override;
    std::optional<Outcome> checkEnd() override;
    QStringList pieces() const override { return {m_name}; }

private:
    Outcome writeMember(int source, const ExportItem &item, qint64 size, qint64 time);
    Outcome copyBytes(int source, qint64 size);
    Outcome failed() const;
    bool isSmallerDeflated(int source) const;
    bool openForCheck();
    bool sameAs(int source);
    Outcome differs() const;

    const ExportStage &m_stage;
    const std::atomic<bool> &m_cancelled;
    const QString m_name;
    const bool m_compress;
    archive *m_writer;
    archive *m_reader = nullptr;
    QByteArray m_buffer;
};
