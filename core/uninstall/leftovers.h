#pragma once

#include "core/scan/candidate.h"
#include "core/uninstall/installed_app.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace LumvaleUninstaller {

/// An application without its size, for those who need names and identifiers only.
std::vector<InstalledApp> discoverApps(const platform::Disk& disk);

/// The lower-case strings that mark a file as the application's: none, one or two.
std::vector<std::string> matchKeys(const InstalledApp& app);

/// Whether a name looks like an identifier in reverse domain order: three pieces or more, of letters, digits,
/// "-" and "_".
bool looksLikeAppIdentifier(std::string_view stem);

/// The folder of the user's temporary caches; none where the disk has none, or says another place than the
/// one in which the system keeps them.
std::optional<std::string> darwinUserCacheDirectory(const platform::Disk& disk);

std::vector<Candidate> orphanCandidates(const platform::Disk& disk);
std::vector<Candidate> virtualMachineCandidates(const platform::Disk& disk);

} // namespace LumvaleUninstaller
