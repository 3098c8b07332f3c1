#pragma once

#include "tools/sample_disk/disk_writer.h"
#include "tools/sample_disk/random.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace sample_disk {

constexpr std::int64_t operator""_KB(unsigned long long count) {
    return static_cast<std::int64_t>(count) * 1'000;
}
constexpr std::int64_t operator""_MB(unsigned long long count) {
    return static_cast<std::int64_t>(count) * 1'000'000;
}

/// Similar files of a folder. In the path "%U" stands for a UUID, "%H" for eight hexadecimal digits, "%N" for
/// the number of the file from 1, and "%A" for the name of the application or folder that is filled.
struct Piece {
    std::string_view path;
    int count;
    int weight; ///< the share of the folder's bytes, relative to the other pieces
};

/// The content of one kind of folder.
using Filling = std::span<const Piece>;

/// One entry of a table: a file, or, with a slash at the end of its path, a folder and its content.
struct Row {
    std::string_view path;
    std::int64_t bytes;
    int ageDays;
    Filling filling = {};
};

/// Makes a folder with the files of `filling`, which have `bytes` in total and are up to 40 days older.
void makeFolder(DiskWriter& disk, const std::string& path, std::int64_t bytes, int ageDays, Filling filling,
                Random& random, std::string_view name);

/// Makes the entries of a table below `place`, which ends with a slash or is empty.
void makeRows(DiskWriter& disk, std::string_view place, std::span<const Row> rows, Random& random);

} // namespace sample_disk
