#pragma once

#include "tools/sample_disk/disk_writer.h"
#include "tools/sample_disk/random.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace SampleDisk {

constexpr std::int64_t operator""_KB(unsigned long long count) {
    return static_cast<std::int64_t>(count) * 1'000;
}
constexpr std::int64_t operator""_MB(unsigned long long count) {
    return static_cast<std::int64_t>(count) * 1'000'000;
}

/// Files that lie in a folder of some kind. In the path "%U" stands for a UUID, "%H" for eight hexadecimal
/// digits, "%N" for the file's number from 1 and "%A" for the name of what the folder belongs to.
struct Piece {
    std::string_view path;
    int count;
    int weight; ///< its part of the folder's bytes, against the other pieces'
};

/// What a folder of one kind holds.
using Filling = std::span<const Piece>;

/// One entry of a table: a file, or, with a slash at the end of its path, a folder with its filling.
struct Row {
    std::string_view path;
    std::int64_t bytes;
    int ageDays;
    Filling filling = {};
};

/// Makes the files of `filling`, `bytes` long together, as old as the folder or somewhat older.
void fill(Folder& folder, Filling filling, std::int64_t bytes, Random& random, std::string_view name = {});

/// Makes the entries of a table; each folder is filled under its own name.
void make(Folder& folder, std::span<const Row> rows, Random& random);

} // namespace SampleDisk
