#include "ui/shell/digit_row.h"

#include <Carbon/Carbon.h>
#include <QKeyEvent>

#include <algorithm>
#include <iterator>

int DigitRow::digitAt(const QKeyEvent& key) {
    // Qt has no scan codes on a Mac; its virtual keys stand for positions.
    constexpr quint32 row[]{kVK_ANSI_1, kVK_ANSI_2, kVK_ANSI_3, kVK_ANSI_4, kVK_ANSI_5,
                            kVK_ANSI_6, kVK_ANSI_7, kVK_ANSI_8, kVK_ANSI_9};
    const auto* const found = std::find(std::begin(row), std::end(row), key.nativeVirtualKey());
    return found == std::end(row) ? 0 : int(found - row) + 1;
}
