#include "platform/files/folder_reader.h"

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include <sys/attr.h>
#include <sys/stat.h>
#include <sys/vnode.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr attrgroup_t namesOnly = ATTR_CMN_RETURNED_ATTRS | ATTR_CMN_ERROR | ATTR_CMN_NAME | ATTR_CMN_OBJTYPE;

#pragma pack(push, 4)
/// An entry as getattrlistbulk(2) returns it for the attributes requested below. Fields are aligned to 4
/// bytes. FSOPT_PACK_INVAL_ATTRS keeps the place of fields that the file system doesn't report.
struct Record {
    std::uint32_t length;     ///< of the record, with the name's bytes
    attribute_set_t returned; ///< the attributes that are valid
    std::uint32_t error;
    attrreference_t name; ///< its offset counts from this member
    fsobj_type_t type;
    timespec modified; ///< this member and the next ones are absent when only names are requested
    std::uint32_t flags;
    off_t dataLength; ///< absent for folders
};
#pragma pack(pop)

EntryType entryType(fsobj_type_t type) {
    switch (type) {
    case VDIR:
        return EntryType::folder;
    case VREG:
        return EntryType::file;
    case VLNK:
        return EntryType::link;
    default:
        return EntryType::other;
    }
}

/// Returns the entry that starts at `start`. An entry that the file system failed to read has only its name.
FolderEntry entryAt(const char* start, const Record& record) {
    const attribute_set_t& valid = record.returned;
    const char* name = start + offsetof(Record, name) + record.name.attr_dataoffset;
    const bool hasFlags = (valid.commonattr & ATTR_CMN_FLAGS) != 0;
    FolderEntry entry{name, (valid.commonattr & ATTR_CMN_OBJTYPE) != 0, entryType(record.type),
                      name[0] == '.' || (hasFlags && (record.flags & UF_HIDDEN) != 0)};
    if (!entry.typeIsKnown || (valid.commonattr & ATTR_CMN_MODTIME) == 0)
        return entry;
    const bool hasSize = entry.type == EntryType::file || entry.type == EntryType::link;
    if (!hasSize || (valid.fileattr & ATTR_FILE_DATALENGTH) != 0)
        entry.attributes =
            Attributes{entry.type, hasSize ? std::int64_t{record.dataLength} : 0, date(record.modified)};
    return entry;
}

} // namespace

struct FolderReader::State {
    bool read(attrgroup_t common, attrgroup_t file) {
        attrlist request{ATTR_BIT_MAP_COUNT, 0, common, 0, 0, file, 0};
        const int count = getattrlistbulk(folder, &request, buffer, bufferSize, FSOPT_PACK_INVAL_ATTRS);
        failure = count < 0 ? errno : 0;
        left = count < 0 ? 0 : count;
        position = buffer;
        return count >= 0;
    }

    static constexpr std::size_t bufferSize = std::size_t{64} * 1024;

    int folder = -1;
    int failure = 0;
    bool readsNamesOnly = false;
    int left = 0; ///< entries in the buffer
    const char* position = nullptr;
    FolderEntry entry = {};
    alignas(8) char buffer[bufferSize + sizeof(Record)]; ///< with room to copy a whole record at its end
};

FolderReader::FolderReader() : m_state(new State) {}
FolderReader::~FolderReader() = default;

int FolderReader::failure() const {
    return m_state->failure;
}

void FolderReader::start(int folder) {
    m_state->folder = folder;
    m_state->failure = 0;
    m_state->readsNamesOnly = false;
    m_state->left = 0;
}

const FolderEntry* FolderReader::next() {
    State& state = *m_state;
    if (state.left == 0 && !state.readsNamesOnly) {
        state.read(namesOnly | ATTR_CMN_MODTIME | ATTR_CMN_FLAGS, ATTR_FILE_DATALENGTH);
        // Names and types need only read permission, the other attributes search permission as well.
        state.readsNamesOnly = state.failure == EACCES;
    }
    if (state.left == 0 && state.readsNamesOnly)
        state.read(namesOnly, 0);
    if (state.left == 0)
        return nullptr;
    Record record;
    std::memcpy(&record, state.position, sizeof record);
    state.entry = entryAt(state.position, record);
    state.position += record.length;
    --state.left;
    return &state.entry;
}

} // namespace platform
