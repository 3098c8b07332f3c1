#pragma once

/// Integration with the desktop: program icon, title bar, drawing, menus and bringing the window to
/// the front.
namespace Desktop {

/// Sets up the icon, the title bar, the menus, and software drawing if OpenGL is missing. Requires the
/// application object.
void setUp();

/// Returns true if the machine is a Mac, whose own disk is the one to clean.
bool isMac();

/// Brings the program to the front where activating its window doesn't.
void bringToFront();

} // namespace Desktop
