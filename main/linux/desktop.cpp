#include "main/desktop.h"

#include "app/identity.h"
#include "ui/icon/program_icon.h"

#include <QGuiApplication>

void Desktop::setUp() {
    QGuiApplication::setDesktopFileName(Identity::identifier());
    QGuiApplication::setWindowIcon(programIcon());
}

void Desktop::bringToFront() {
    // Activating a window is enough.
}
