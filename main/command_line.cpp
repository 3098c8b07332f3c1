#include "main/command_line.h"

#include "app/identity.h"
#include "main/desktop.h"
#include "platform/files/mac_disks.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace {

constexpr std::string_view usage =
    "Usage: lumvale [DISK [HOME]]\n"
    "\n"
    "  DISK       folder on which a Mac's disk is mounted; without it, Lumvale asks\n"
    "  HOME       a home on the disk, such as /Users/camille; not required if there is only one\n"
    "  --help     print this text\n"
    "  --version  print the version\n";

CommandLine::Exit refusal(const std::string& reason) {
    return {2, "lumvale: " + reason + '\n'};
}

CommandLine::Exit refusalOf(const std::string& root) {
    return refusal(root + " is not a Mac's disk: it has no home in a folder called Users");
}

CommandLine::Start diskOfEnvironment() {
    platform::Result<platform::Disk> disk = platform::Disk::ofEnvironment();
    if (!disk)
        return refusal(disk.error().description);
    if (!platform::macHomes(disk->hostRoot()))
        return refusalOf(disk->hostRoot());
    return std::optional(std::move(*disk));
}

CommandLine::Start diskAt(const std::string& root, const std::string& home) {
    const auto homes = platform::macHomes(root);
    if (!homes)
        return refusalOf(root);
    if (home.empty() && homes->size() > 1) {
        std::string list;
        for (const std::string& each : *homes)
            list += ' ' + each;
        return refusal("which home? Use lumvale " + root + " HOME, where HOME is one of" + list);
    }
    platform::Result<platform::Disk> disk = platform::openMacDisk(root, home);
    if (!disk)
        return refusal("no home " + home + " on " + root + ": " + disk.error().description);
    return std::optional(std::move(*disk));
}

} // namespace

CommandLine::Start CommandLine::start(int argc, const char* const* argv) {
    const std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    const auto isOption = [](const std::string& argument) {
        return argument.starts_with('-');
    };
    const auto option = std::find_if(arguments.begin(), arguments.end(), isOption);
    if (option != arguments.end() && *option == "--help")
        return Exit{0, std::string(usage)};
    if (option != arguments.end() && *option == "--version")
        return Exit{0, (Identity::name() + u' ' + Identity::version() + u'\n').toStdString()};

    const std::vector<std::string> paths(arguments.begin(), option);
    if (paths.size() > 2 || (option != arguments.end() && option->starts_with("--")))
        return Exit{2, std::string(usage)};
    if (!paths.empty())
        return diskAt(paths[0], paths.size() == 2 ? paths[1] : std::string());
    const char* const named = std::getenv("LUMVALE_DISK");
    if (Desktop::isMac() || (named != nullptr && *named != '\0'))
        return diskOfEnvironment();
    return std::optional<platform::Disk>();
}
