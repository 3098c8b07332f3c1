#pragma once

#include "platform/files/descriptor.h"
#include "platform/files/file_part.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QIODevice>

#include <optional>
#include <string_view>
#include <vector>

/// Read-only device that presents an image file to a decoder. A photo library may contain any file, so this
/// class detects the format from the content, hides data that decoders would needlessly keep in memory, and
/// reports the end of the file once the deadline has expired. Not thread-safe; usable in any one thread.
///
/// Not a QFile: some decoders map it into memory, and truncating a mapped file would crash the program.
class PictureFile : public QIODevice {
public:
    /// Presents the whole file, or this part of it.
    PictureFile(platform::Descriptor file, QDeadlineTimer deadline,
                std::optional<platform::FilePart> part = std::nullopt);

    /// Format name as used by QImageReader. Empty if the file must not be decoded: it is no image, or
    /// decoding it would take too much memory.
    const QByteArray& format() const { return m_format; }

    bool isSequential() const override { return false; }
    qint64 size() const override; ///< of the visible ranges

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    struct Range {
        qint64 begin;
        qint64 length;
    };

    qint64 readAt(qint64 offset, char* data, qint64 maxSize) const; ///< 0 on error or after the deadline
    std::string_view bytesAt(qint64 offset, qint64 count, char* buffer) const; ///< empty if fewer are left
    void addRange(qint64 begin, qint64 end);
    bool fitsMemoryLimit() const;
    bool addPngChunks();

    platform::Descriptor m_file;
    QDeadlineTimer m_deadline;
    platform::FilePart m_part;   ///< offsets are relative to it
    std::vector<Range> m_ranges; ///< ranges of the part that the decoder sees, one after the other
    QByteArray m_format;
};
