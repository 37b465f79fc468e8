#pragma once

#include "folderwriter.h"

#include <memory>

/// A DICOM file set: the files in folders, and the DICOMDIR that lists them. A file that cannot be listed is
/// there all the same.
class MediaWriter : public FolderWriter
{
public:
    /// The directory, and the folder of all files, in the folder of the file set.
    static constexpr char directoryName[] = "DICOMDIR";
    static constexpr char filesFolder[] = "DICOM";

    MediaWriter(const ExportStage &stage, const std::atomic<bool> &cancelled);
    ~MediaWriter() override;

    Outcome write(const ExportItem &item) override;
    std::optional<Outcome> finish() override;
    /// The directory comes last: until then the files are just files.
    QStringList pieces() const override;

private:
    struct Directory;
    const std::unique_ptr<Directory> m_directory;
};
