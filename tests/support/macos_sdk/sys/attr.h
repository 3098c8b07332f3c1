#pragma once

// Stand-in for the header of macOS: what the folder reader uses of it, with the numbers of the Mac's kernel.

#include <cstddef>
#include <cstdint>

using attrgroup_t = std::uint32_t;
using fsobj_type_t = std::uint32_t;

struct attrlist {
    std::uint16_t bitmapcount, reserved;
    attrgroup_t commonattr, volattr, dirattr, fileattr, forkattr;
};

struct attribute_set_t {
    attrgroup_t commonattr, volattr, dirattr, fileattr, forkattr;
};

struct attrreference_t {
    std::int32_t attr_dataoffset;
    std::uint32_t attr_length;
};

inline constexpr std::uint16_t ATTR_BIT_MAP_COUNT = 5;
inline constexpr std::uint64_t FSOPT_PACK_INVAL_ATTRS = 0x8;

inline constexpr attrgroup_t ATTR_CMN_NAME = 0x1;
inline constexpr attrgroup_t ATTR_CMN_OBJTYPE = 0x8;
inline constexpr attrgroup_t ATTR_CMN_MODTIME = 0x400;
inline constexpr attrgroup_t ATTR_CMN_FLAGS = 0x40000;
inline constexpr attrgroup_t ATTR_CMN_ERROR = 0x20000000;
inline constexpr attrgroup_t ATTR_CMN_RETURNED_ATTRS = 0x80000000;
inline constexpr attrgroup_t ATTR_FILE_DATALENGTH = 0x200;

inline constexpr std::uint32_t UF_HIDDEN = 0x8000; // in sys/stat.h on a Mac

extern "C" int getattrlistbulk(int folder, void* request, void* buffer, std::size_t size,
                               std::uint64_t options); // in unistd.h on a Mac
