#include "tools/sample_disk/sample_disk.h"

#include "tools/sample_disk/applications.h"
#include "tools/sample_disk/files.h"
#include "tools/sample_disk/launch_agents.h"
#include "tools/sample_disk/photo_library.h"
#include "tools/sample_disk/target_folder.h"

#include <cstdio>
#include <exception>
#include <optional>

namespace sample_disk {

Outcome build(const std::string& hostFolder, const Options& options) {
    try {
        if (const std::optional<std::string> refusal = clearTargetFolder(hostFolder))
            return {Outcome::Kind::refused, 0, *refusal};
        DiskWriter disk(hostFolder, options.today);
        constexpr struct {
            std::string_view name;
            void (*make)(DiskWriter&, Random&);
        } parts[] = {{"files", makeFiles},
                     {"applications", makeApplications},
                     {"agents", makeLaunchAgents},
                     {"photos", makePhotoLibrary}};
        for (const auto& [name, make] : parts) {
            // Each part has its own stream, so that a change to one leaves the others as they are.
            Random random(options.seed, name);
            make(disk, random);
        }
        if (options.addMore)
            options.addMore(disk);
        disk.finish();
        return {Outcome::Kind::made, disk.entryCount() + 1, {}}; // with the marker of the target folder
    } catch (const std::exception& error) {
        return {Outcome::Kind::failed, 0, error.what()};
    }
}

int report(const Outcome& outcome) {
    if (outcome.kind == Outcome::Kind::made) {
        std::printf("%zu entries\n", outcome.entryCount);
        return 0;
    }
    std::fprintf(stderr, "%s\n", outcome.message.c_str());
    return outcome.kind == Outcome::Kind::refused ? 2 : 1;
}

} // namespace sample_disk
