#pragma once

#include <QIcon>
#include <QImage>

/// Renders the application icon as a square of `side` pixels with a transparent background. Up to 32 pixels
/// it uses a simplified drawing. Needs neither a screen nor an application object.
QImage programImage(int side);

/// Returns the application icon in the sizes that title bars, task bars and window switchers use.
QIcon programIcon();
