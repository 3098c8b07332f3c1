#include "ui/shell/digit_row.h"

#include <QKeyEvent>

int DigitRow::digitAt(const QKeyEvent& key) {
    // X11 and Wayland add 8 to the codes of linux/input-event-codes.h, where KEY_1 to KEY_9 are 2 to 10.
    constexpr quint32 beforeFirst = 9;
    const quint32 code = key.nativeScanCode();
    if (key.key() >= Qt::Key_A && key.key() <= Qt::Key_Z)
        return 0; // an X server with other codes
    return code > beforeFirst && code <= beforeFirst + 9 ? int(code - beforeFirst) : 0;
}
