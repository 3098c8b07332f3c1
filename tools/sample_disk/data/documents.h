#pragma once

#include "tools/sample_disk/data/fillings.h"

namespace SampleDisk {

/// The user's own files. 52,428,800 bytes is where the product begins to call a file large.
inline constexpr Row documents[] = {
    {"Documents/Letters/", 48_MB, 20, letters},
    {"Documents/Finances/2021/", 36_MB, 1'050, sheets},
    {"Documents/Finances/2022/", 41_MB, 690, sheets},
    {"Documents/Finances/2023/", 39_MB, 330, sheets},
    {"Documents/Thesis/Interviews.wav", 1'412_MB, 1'630},
    {"Documents/Thesis/Final version.pdf", 18_MB, 1'580},
    {"Documents/Backups/phone-2022-08.tar", 3'940_MB, 845},
    {"Documents/Library/Scanned books.pdf", 386_MB, 500},
    {"Documents/Archive/2014/Office/Clients/North/Projects/Site/Media/Raw/Day 1/Tape/interview.mov", 2'260_MB,
     3'650},
    {"Documents/Limits/exactly large.bin", 52'428'800, 60},
    {"Documents/Limits/one byte less.bin", 52'428'799, 60},
    {"Documents/Developer/atlas-web/", 142_MB, 5, sourceTree},
    {"Documents/Developer/harbour-api/", 61_MB, 48, sourceTree},
    {"Documents/Developer/harbour-api/dump.sql", 874_MB, 48},
    {"Desktop/Screen Recording 2023-10-02 at 09.12.40.mov", 1'036_MB, 405},
    {"Desktop/Screenshot 2023-12-01 at 11.20.03.png", 3_MB, 350},
    {"Desktop/To read.pdf", 6_MB, 2},
    {"Movies/Holiday in Brittany.mp4", 2'310_MB, 820},
    {"Movies/Birthday 2019.mov", 2'730_MB, 1'870},
    {"Movies/Conference talk.mkv", 1'190_MB, 260},
    {"Movies/TV recordings/Documentary.ts", 3'460_MB, 130},
    {"Movies/demo.band", 96_MB, 300},
    {"Music/Mixes/Live set.wav", 1'058_MB, 940},
    {"Music/Albums/First Light/", 118_MB, 1'300, songs},
    {"Music/Albums/Open Water/", 97_MB, 400, songs},
    {"Pictures/Scans/negatives-1988.tif", 612_MB, 2'100},
    {"Pictures/Summer/", 164_MB, 480, pictures},
    {"Pictures/Desktop backgrounds/", 52_MB, 900, pictures},
    {"Public/Drop Box/.localized", 0, 1'900},
    {"backup.sql.gz", 284_MB, 175},
    {".zsh_history", 44_KB, 0},
    {".gitconfig", 300, 700},
    {".npm/_cacache/content-v2/hidden-and-large.bin", 260_MB, 30},
    {".DS_Store", 14_KB, 0},
};

/// Folders that count as one thing, with large files inside that nobody should be offered one by one.
inline constexpr Row packages[] = {
    {"Movies/Wedding.fcpbundle/", 6'120_MB, 640, filmProject},
    {"Movies/Old Holiday.iMovieLibrary/", 2'040_MB, 1'400, filmProject},
    {"Music/Music/Music Library.musiclibrary/Library.musicdb", 74_MB, 2},
    {"Documents/Backups/Keys.sparsebundle/", 1'280_MB, 90, sparseBands},
    {"Documents/Tools/Portable Editor.app/Contents/Resources/model.bin", 310_MB, 270},
    {"Documents/Tools/Portable Editor.app/Contents/Info.plist", 1_KB, 270},
};

struct LinkRow {
    std::string_view path;
    std::string_view target;
};

inline constexpr LinkRow links[] = {
    {"Documents/Current project", "Developer/atlas-web"},
    {"Documents/itself", "itself"},
    {"Documents/up and round", ".."},
    {"Documents/server settings", "/etc"},
    {"Documents/outside", "../../../../../../../../../../../../tmp"},
    {"Documents/film", "../Movies/Holiday in Brittany.mp4"},
    {"Desktop/Backup disk", "/Volumes/Backup"},
    {"Library/Caches/com.example.linked", "../../Documents"},
    {".Trash/link to documents", "../Documents"},
    {"Downloads/link to film", "../Movies/Birthday 2019.mov"},
};

} // namespace SampleDisk
