#pragma once

#include <QIcon>
#include <QImage>

/// The program's sign, drawn anew for every size: up to 32 pixels it is a plainer drawing that stays sharp.
/// Needs no screen, and no application object.
QImage programImage(int side); ///< square, of that many pixels, transparent round the tile

/// The sign in the sizes that desktops show in title bars, task bars and switchers.
QIcon programIcon();
