#include "tools/sample_disk/contents.h"

#include <string>

namespace SampleDisk {

namespace {

std::string expand(std::string_view path, int number, Random& random, std::string_view name) {
    std::string text;
    for (std::size_t i = 0; i < path.size(); ++i) {
        if (path[i] != '%') {
            text += path[i];
            continue;
        }
        switch (path[++i]) {
        case 'U':
            text += random.uuid();
            break;
        case 'H':
            text += random.hex(8);
            break;
        case 'N':
            text += std::to_string(number);
            break;
        case 'A':
            text += name;
            break;
        }
    }
    return text;
}

} // namespace

void fill(Folder& folder, Filling filling, std::int64_t bytes, Random& random, std::string_view name) {
    int weightLeft = 0;
    for (const Piece& piece : filling)
        weightLeft += piece.weight;
    for (const Piece& piece : filling) {
        // Shares are taken of what is left, so that the last file gets the rest and the sum is exact.
        std::int64_t share = piece.weight == 0 ? 0 : bytes * piece.weight / weightLeft;
        bytes -= share;
        weightLeft -= piece.weight;
        for (int number = 1; number <= piece.count; ++number) {
            const int left = piece.count - number + 1;
            const std::int64_t size = left == 1 ? share : share * random.between(30, 170) / (100 * left);
            share -= size;
            folder.file(expand(piece.path, number, random, name), size,
                        folder.ageDays() + random.between(0, 40));
        }
    }
}

void make(Folder& folder, std::span<const Row> rows, Random& random) {
    for (const Row& row : rows) {
        if (!row.path.ends_with('/')) {
            folder.file(row.path, row.bytes, row.ageDays);
            continue;
        }
        const std::string_view path = row.path.substr(0, row.path.size() - 1);
        Folder made = folder.folder(path, row.ageDays);
        fill(made, row.filling, row.bytes, random, path.substr(path.rfind('/') + 1));
    }
}

} // namespace SampleDisk
