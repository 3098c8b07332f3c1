#include "tools/sample_disk/rows.h"

#include <string>

namespace sample_disk {

namespace {

std::string expanded(std::string_view path, int number, std::string_view name, Random& random) {
    std::string text;
    for (std::size_t i = 0; i < path.size(); ++i) {
        if (path[i] != '%')
            text += path[i];
        else if (const char letter = path[++i]; letter == 'U')
            text += random.uuid();
        else if (letter == 'H')
            text += random.hex(8);
        else if (letter == 'N')
            text += std::to_string(number);
        else
            text += name;
    }
    return text;
}

} // namespace

void makeFolder(DiskWriter& disk, const std::string& path, std::int64_t bytes, int ageDays, Filling filling,
                Random& random, std::string_view name) {
    disk.folder(path, ageDays);
    int weightLeft = 0;
    for (const Piece& piece : filling)
        weightLeft += piece.weight;
    for (const Piece& piece : filling) {
        // The last file of a piece, and the last piece, get the remainder, so that the total is exact.
        std::int64_t share = piece.weight == 0 ? 0 : bytes * piece.weight / weightLeft;
        bytes -= share;
        weightLeft -= piece.weight;
        for (int number = 1; number <= piece.count; ++number) {
            const int left = piece.count - number + 1;
            const std::int64_t size = left == 1 ? share : share * random.between(30, 170) / (100 * left);
            share -= size;
            disk.file(path + '/' + expanded(piece.path, number, name, random), size,
                      ageDays + random.between(0, 40));
        }
    }
}

void makeRows(DiskWriter& disk, std::string_view place, std::span<const Row> rows, Random& random) {
    for (const Row& row : rows) {
        std::string path = std::string(place).append(row.path);
        if (!path.ends_with('/')) {
            disk.file(path, row.bytes, row.ageDays);
            continue;
        }
        path.pop_back();
        const std::string name = path.substr(path.rfind('/') + 1);
        makeFolder(disk, path, row.bytes, row.ageDays, row.filling, random, name);
    }
}

} // namespace sample_disk
