#include "core/uninstall/virtual_machines.h"

#include "platform/files/attributes.h"
#include "platform/files/folder.h"
#include "platform/files/path.h"
#include "platform/text/text.h"

#include <array>

namespace core::LumvaleUninstaller {

namespace {

/// A product's default folder for virtual machines.
struct Search {
    std::string_view folder;      ///< relative to the home folder
    std::string_view extension;   ///< of the machines; if empty, every subfolder is a machine
    std::string_view explanation; ///< translation key
};

constexpr std::array<Search, 3> searches{{
    {"Parallels", "pvm", "exp_vm_parallels"},
    {"VirtualBox VMs", "", "exp_vm_virtualbox"},
    {"Documents/Virtual Machines.localized", "vmwarevm", "exp_vm_vmware"},
}};

/// Settings, caches and logs of those products.
constexpr std::array<std::string_view, 10> residues{
    "Library/Application Support/Parallels",
    "Library/Preferences/Parallels",
    "Library/Caches/com.parallels.desktop.console",
    "Library/Logs/parallels",
    "Applications (Parallels)",
    "Library/VirtualBox",
    "Library/Application Support/VirtualBox",
    "Library/Logs/VirtualBox",
    "Library/Application Support/VMware Fusion",
    "Library/Preferences/VMware Fusion",
};

bool isMachine(const platform::Disk& disk, const std::string& path, const Search& search) {
    if (search.extension.empty())
        return platform::kindOf(disk, path) == platform::Kind::folder;
    return platform::lowercased(platform::extension(path)) == search.extension;
}

} // namespace

std::vector<Candidate> virtualMachineCandidates(const platform::Disk& disk, platform::Progress* progress) {
    // Paths that do not exist are dropped when measured, since their size is 0.
    std::vector<Candidate> candidates;
    const auto add = [&](std::string path, std::string_view explanation) {
        candidates.push_back({std::move(path), ScanCategory::virtualMachines, explanation, false});
    };
    for (const Search& search : searches) {
        const std::string folder = disk.inHome(search.folder);
        const auto names = platform::listFolder(disk, folder, platform::Hidden::include, progress);
        if (!names)
            continue;
        for (const std::string& name : *names) {
            if (std::string path = platform::joined(folder, name); isMachine(disk, path, search))
                add(std::move(path), search.explanation);
        }
    }
    for (const std::string_view residue : residues)
        add(disk.inHome(residue), "exp_vm_residue");
    return candidates;
}

std::vector<ScanItem> virtualMachineItems(const platform::Disk& disk) {
    return measureCandidates(disk, virtualMachineCandidates(disk));
}

} // namespace core::LumvaleUninstaller
