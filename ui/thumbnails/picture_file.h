#pragma once

#include "platform/files/descriptor.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QIODevice>

#include <string_view>
#include <vector>

/// An open file as a decoder of pictures may see it. Anything may lie in a photo library, so this looks
/// first: it knows the format by the content, leaves out what decoders keep in memory without need, and gives
/// nothing more once the time is over. For one thread.
///
/// No QFile: some decoders map one into memory, and a file that shrinks meanwhile would end the program.
class PictureFile : public QIODevice {
public:
    PictureFile(platform::Descriptor file, QDeadlineTimer deadline);

    /// As the toolkit calls it. Empty when there is nothing to decode: no picture, or one that would take
    /// more memory or time than a small picture of it is worth.
    const QByteArray& format() const { return m_format; }

    bool isSequential() const override { return false; }
    qint64 size() const override; ///< of what is seen of it

protected:
    qint64 readData(char* data, qint64 most) override;
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    struct Piece {
        qint64 begin;
        qint64 length;
    };

    qint64 readAt(qint64 offset, char* data, qint64 most) const; ///< 0 at the end, of the time as well
    std::string_view bytesAt(qint64 offset, qint64 count, char* buffer) const; ///< all of them, or none
    void show(qint64 begin, qint64 end);
    bool fitsMemoryLimit() const;
    bool showPng();

    platform::Descriptor m_file;
    QDeadlineTimer m_deadline;
    qint64 m_fileSize = 0;
    std::vector<Piece> m_pieces; ///< of the file, what is seen of it
    QByteArray m_format;
};
