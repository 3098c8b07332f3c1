#pragma once

#include <QString>

/// The program's identity, set by the build. On macOS the bundle's Info.plist has the same values under the
/// keys given.
namespace Identity {

QString name();       ///< "CFBundleName"
QString version();    ///< "CFBundleShortVersionString"
QString identifier(); ///< "CFBundleIdentifier": the reversed domain and the name
QString domain();     ///< the vendor's domain, from the identifier

} // namespace Identity
