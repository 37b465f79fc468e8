#pragma once

#include "imagebase_export.h"
#include "imageinfo.h"
#include "pixelproblem.h"

#include <memory>

struct PixelFrame;

/**
 * A DICOM file opened for its pictures. Reads what stands before the pixels at open(), and later only the
 * frame that is asked for, never a whole file.
 *
 * Input is hostile: a frame's size is held against a limit and against the bytes that are there before
 * anything is allocated. Keeps the file open; instances share nothing, and one belongs to one thread at a
 * time.
 */
class IMAGEBASE_EXPORT ImageFile
{
public:
    /// No frame takes more; a mammogram takes two thirds of it. Decoding takes several times as much memory,
    /// of which all instances together take a bounded share: who would take more waits for the others.
    static constexpr qint64 maximumFrameBytes = qint64(64) * 1024 * 1024;
    static constexpr int maximumFrames = 100 * 1000;

    ImageFile();
    ~ImageFile();
    ImageFile(const ImageFile &) = delete;
    ImageFile &operator=(const ImageFile &) = delete;

    /// @return why the file has no picture; info() then holds what could be read all the same
    PixelProblem open(const QString &path);
    const ImageInfo &info() const;
    /// Of memory, between two frames.
    qint64 heldBytes() const;
    /// Decodes one frame, counted from 0. The frame is left alone where there is a problem.
    PixelProblem readFrame(int number, PixelFrame &frame);

private:
    struct Private;
    const std::unique_ptr<Private> d;
};
