#include "platform/files/folder_reader.h"

#include <cerrno>
#include <cstring>

#include <dirent.h>
#include <unistd.h>

namespace platform {

namespace {

EntryType entryType(unsigned char type) {
    switch (type) {
    case DT_DIR:
        return EntryType::folder;
    case DT_REG:
        return EntryType::file;
    case DT_LNK:
        return EntryType::link;
    default:
        return EntryType::other;
    }
}

} // namespace

FolderReader::FolderReader() : m_buffer(std::make_unique_for_overwrite<char[]>(bufferSize)) {}
FolderReader::~FolderReader() = default;

void FolderReader::start(int folder) {
    m_folder = folder;
    m_position = m_end = 0;
    m_failure = 0;
}

const FolderEntry* FolderReader::next() {
    for (;;) {
        if (m_position == m_end) {
            // readdir() would need a stream, which costs three more system calls per folder.
            const ssize_t length = getdents64(m_folder, m_buffer.get(), bufferSize);
            if (length <= 0) {
                m_failure = length < 0 ? errno : 0;
                return nullptr;
            }
            m_position = 0;
            m_end = static_cast<std::size_t>(length);
        }
        const char* record = m_buffer.get() + m_position;
        unsigned short recordLength = 0;
        std::memcpy(&recordLength, record + offsetof(dirent64, d_reclen), sizeof recordLength);
        m_position += recordLength;
        const char* name = record + offsetof(dirent64, d_name);
        if (name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0')))
            continue;
        const auto type = static_cast<unsigned char>(record[offsetof(dirent64, d_type)]);
        m_entry = {name, type != DT_UNKNOWN, entryType(type), name[0] == '.'};
        return &m_entry;
    }
}

} // namespace platform
