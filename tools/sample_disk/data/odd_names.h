#pragma once

#include <cstddef>
#include <string_view>

namespace SampleDisk {

/// Names that a disk may hold and a program may stumble over; the first few also show in lists of the sample.
inline constexpr std::size_t oddNamesInSight = 5;
inline constexpr std::string_view oddNames[] = {
    "first line\nsecond line.txt",
    "\"quoted\" and 'quoted'.txt",
    "\xF0\x9F\x8E\x89 party \xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x9A\x80.png",
    "r\xC3\xA9sum\xC3\xA9.pdf",   // composed
    "re\xCC\x81sume\xCC\x81.pdf", // decomposed
    "caf\xE8 menu.txt",           // not UTF-8, like the next one, which looks the same on screen
    "caf\xE9 menu.txt",
    "-rf",
    " spaces around ",
    "back\\slash and tab\t.txt",
    "100% & <b>bold %s %N.html",
    "\xE2\x80\xAEtxt.reversed",
    "trailing dot.",
    "$(touch nothing) `id` ;.sh",
};

} // namespace SampleDisk
