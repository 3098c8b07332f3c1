#include <sys/attr.h>
#include <sys/vnode.h>

#include <cerrno>
#include <cstring>
#include <numeric>
#include <string>
#include <string_view>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

// A double of the Mac's system call on Linux's own calls. It packs entries as the kernel's vfs_attrlist.c
// does.

namespace {

constexpr attrgroup_t needReadOnly =
    ATTR_CMN_RETURNED_ATTRS | ATTR_CMN_ERROR | ATTR_CMN_NAME | ATTR_CMN_OBJTYPE;

vtype typeOf(unsigned char type) {
    return type == DT_REG ? VREG : type == DT_DIR ? VDIR : type == DT_LNK ? VLNK : VFIFO;
}

/// Packs one entry: the fixed parts in the order of the bits, then the name.
class Packer {
public:
    Packer(const attrlist& request, std::uint64_t options, std::string_view name, unsigned char type)
        : m_request(request),
          m_packsInvalid((options & FSOPT_PACK_INVAL_ATTRS) != 0),
          m_name(name),
          m_type(type) {}

    /// Some entries lack attributes, as on file systems that don't report them, or fail to be read. The names
    /// decide which, so that each folder has some and the caller's result must not depend on them.
    std::string pack(const struct stat& status) {
        const int sum = std::accumulate(m_name.begin(), m_name.end(), 0) & 7;
        const bool fails = sum == 1;
        const bool isFolder = m_type == DT_DIR;
        if (m_packsInvalid || fails)
            add(ATTR_CMN_ERROR, std::uint32_t{fails ? EIO : 0U}, true);
        const std::size_t reference = m_fixed.size();
        add(ATTR_CMN_NAME, attrreference_t{0, static_cast<std::uint32_t>(m_name.size() + 1)}, true);
        add(ATTR_CMN_OBJTYPE, std::uint32_t{typeOf(m_type)}, !fails && sum != 2);
        add(ATTR_CMN_MODTIME, status.st_mtim, !fails && sum != 3);
        // Linux has no hidden flag: the sticky bit, which has no effect on files and their own folders,
        // stands for it.
        add(ATTR_CMN_FLAGS, std::uint32_t{(status.st_mode & S_ISVTX) != 0 ? UF_HIDDEN : 0}, !fails);
        if (!isFolder && (m_request.fileattr & ATTR_FILE_DATALENGTH) != 0) {
            const bool isValid = !fails && sum != 4;
            append(status.st_size, isValid);
            m_returned.fileattr |= isValid ? ATTR_FILE_DATALENGTH : 0;
        }
        return record(reference);
    }

private:
    template <class Value>
    void add(attrgroup_t attribute, const Value& value, bool isValid) {
        if ((m_request.commonattr & attribute) == 0)
            return;
        append(value, isValid);
        m_returned.commonattr |= isValid ? attribute : 0;
    }

    template <class Value>
    void append(const Value& value, bool isValid) {
        if (isValid)
            m_fixed.append(reinterpret_cast<const char*>(&value), sizeof value);
        else if (m_packsInvalid)
            m_fixed.append(sizeof value, '\0');
    }

    std::string record(std::size_t reference) {
        constexpr std::size_t head = sizeof(std::uint32_t) + sizeof m_returned;
        const auto offset = static_cast<std::int32_t>(m_fixed.size() - reference);
        std::memcpy(m_fixed.data() + reference, &offset, sizeof offset);
        std::string record(head, '\0');
        record.append(m_fixed).append(m_name).push_back('\0');
        record.resize((record.size() + 7) / 8 * 8);
        const auto length = static_cast<std::uint32_t>(record.size());
        m_returned.commonattr |= ATTR_CMN_RETURNED_ATTRS;
        std::memcpy(record.data(), &length, sizeof length);
        std::memcpy(record.data() + sizeof length, &m_returned, sizeof m_returned);
        return record;
    }

    const attrlist& m_request;
    const bool m_packsInvalid;
    const std::string_view m_name;
    const unsigned char m_type;
    attribute_set_t m_returned = {};
    std::string m_fixed; ///< after the length and the returned attributes
};

} // namespace

int getattrlistbulk(int folder, void* requested, void* buffer, std::size_t size, std::uint64_t options) {
    const attrlist& request = *static_cast<const attrlist*>(requested);
    struct stat status {};
    const bool readsNamesOnly = (request.commonattr & ~needReadOnly) == 0 && request.fileattr == 0;
    // Looking up "." needs search permission.
    if (!readsNamesOnly && fstatat(folder, ".", &status, 0) != 0)
        return -1;
    int count = 0;
    char* end = static_cast<char*>(buffer);
    // A directory entry of Linux grows to less than four times its length, so that all of them fit.
    std::vector<char> listed(size / 4);
    while (count == 0) {
        const ssize_t length = getdents64(folder, listed.data(), listed.size());
        if (length <= 0)
            return static_cast<int>(length);
        for (ssize_t at = 0; at < length;) {
            const auto* entry = reinterpret_cast<const dirent64*>(listed.data() + at);
            at += entry->d_reclen;
            const std::string_view name = entry->d_name;
            if (name == "." || name == "..")
                continue;
            if (!readsNamesOnly && fstatat(folder, entry->d_name, &status, AT_SYMLINK_NOFOLLOW) != 0)
                continue; // removed since
            const std::string record = Packer(request, options, name, entry->d_type).pack(status);
            end = record.copy(end, record.size()) + end;
            ++count;
        }
    }
    return count;
}
