#include "platform/files/folder_reader.h"

#include <cerrno>
#include <cstddef>
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

struct FolderReader::State {
    int folder = -1;
    int failure = 0;
    std::size_t position = 0; ///< in the buffer, of the next entry
    std::size_t end = 0;
    FolderEntry entry = {};
    char buffer[std::size_t{64} * 1024];
};

FolderReader::FolderReader() : m_state(new State) {}
FolderReader::~FolderReader() = default;

int FolderReader::failure() const {
    return m_state->failure;
}

void FolderReader::start(int folder) {
    m_state->folder = folder;
    m_state->failure = 0;
    m_state->position = m_state->end = 0;
}

const FolderEntry* FolderReader::next() {
    State& state = *m_state;
    for (;;) {
        if (state.position == state.end) {
            // readdir() would need a stream, which costs three more system calls per folder.
            const ssize_t length = getdents64(state.folder, state.buffer, sizeof state.buffer);
            if (length <= 0) {
                state.failure = length < 0 ? errno : 0;
                return nullptr;
            }
            state.position = 0;
            state.end = static_cast<std::size_t>(length);
        }
        const char* record = state.buffer + state.position;
        unsigned short recordLength = 0;
        std::memcpy(&recordLength, record + offsetof(dirent64, d_reclen), sizeof recordLength);
        state.position += recordLength;
        const char* name = record + offsetof(dirent64, d_name);
        if (name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0')))
            continue;
        const auto type = static_cast<unsigned char>(record[offsetof(dirent64, d_type)]);
        state.entry = {name, type != DT_UNKNOWN, entryType(type), name[0] == '.'};
        return &state.entry;
    }
}

} // namespace platform
