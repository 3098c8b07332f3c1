#pragma once

#include <QString>

/// What the program says of itself, as the build was told; a Mac reads the same in the bundle's information.
namespace Identity {

QString name();       ///< "CFBundleName"
QString version();    ///< "CFBundleShortVersionString"
QString identifier(); ///< "CFBundleIdentifier"

} // namespace Identity
