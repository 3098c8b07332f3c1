#pragma once

/// Integration with the desktop: program icon, title bar, menus and bringing the window to the front.
namespace Desktop {

/// Sets up the icon, the title bar and the menus. Requires the application object.
void setUp();

/// Brings the program to the front where activating its window doesn't.
void bringToFront();

} // namespace Desktop
