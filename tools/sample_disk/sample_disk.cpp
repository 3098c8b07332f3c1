#include "tools/sample_disk/sample_disk.h"

#include "tools/sample_disk/areas.h"
#include "tools/sample_disk/disk_writer.h"
#include "tools/sample_disk/ground.h"

#include <optional>
#include <string_view>
#include <system_error>

namespace SampleDisk {

namespace {

using Area = void (*)(Folder& root, Folder& home, Random& random);

constexpr struct {
    std::string_view name;
    Area make;
} areas[] = {
    {"system", makeSystem},       {"applications", makeApplications},
    {"caches", makeCaches},       {"logs", makeLogs},
    {"trash", makeTrash},         {"downloads", makeDownloads},
    {"developer", makeDeveloper}, {"leftovers", makeLeftovers},
    {"machines", makeMachines},   {"agents", makeAgents},
    {"documents", makeDocuments}, {"photos", makePhotos},
};

} // namespace

Outcome build(const std::string& hostFolder, const Options& options) {
    try {
        if (std::optional<std::string> refusal = clearGround(hostFolder))
            return {Outcome::Kind::refused, 0, *refusal};
        DiskWriter writer(hostFolder, options.today);
        Folder root = writer.root();
        Folder homeFolder = root.folder(homePath.substr(1), 0);
        for (const auto& [name, make] : areas) {
            // Each area draws from its own stream, so that a change to one leaves the others as they are.
            Random random(options.seed, name);
            make(root, homeFolder, random);
        }
        Random random(options.seed, "bulk");
        makeBulk(writer, options.entries, random);
        return {Outcome::Kind::made, writer.entryCount(), {}};
    } catch (const std::system_error& error) {
        return {Outcome::Kind::failed, 0, error.what()};
    }
}

} // namespace SampleDisk
