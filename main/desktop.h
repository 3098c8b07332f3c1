#pragma once

/// What a desktop shows of the program outside the content of its window.
namespace Desktop {

/// Sets up the icon, the title bar and the menus. Requires the application object.
void setUp();

/// Brings the program to the front where activating its window doesn't.
void bringToFront();

} // namespace Desktop
