#include "tools/inspect/operations.h"
#include "core/health/health_score.h"
#include "core/removal/deletion_guard.h"
#include "core/removal/trash.h"
#include "core/scan/scanner.h"
#include "core/storage/storage_breakdown.h"
#include "core/uninstall/installed_apps.h"
#include "core/uninstall/orphaned_leftovers.h"
#include "core/uninstall/related_files.h"
#include "core/uninstall/uninstaller.h"
#include "core/uninstall/virtual_machines.h"

#include "core/photos/photo_duplicates.h"
#include "core/removal/permissions.h"
#include "core/scan/large_files.h"
#include "core/startup/startup_items.h"
#include "core/treemap/treemap.h"
#include "platform/files/folder.h"
#include "platform/files/path.h"
#include "platform/photos/photo_library.h"
#include "platform/removal/trash.h"
#include "platform/text/format.h"
#include "platform/text/text.h"
#include "platform/walk/walk.h"
#include "tools/inspect/json_form.h"
#include "tools/inspect/translate.h"
#include "tools/inspect/update.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace inspect {

namespace {

using Texts = std::vector<std::string>;

Texts allButFirst(const Texts& arguments) {
    return {arguments.begin() + 1, arguments.end()};
}

/// Returns a list with the result of `one` for each argument.
template <class Function>
Json each(const Texts& arguments, Function one) {
    Json list = Json::array();
    for (const std::string& argument : arguments)
        list.push_back(one(argument));
    return list;
}

/// Returns an executor that runs jobs synchronously on the calling thread.
const platform::Executor& here() {
    const auto run = [](platform::Executor::Job job) {
        job();
    };
    static const platform::Executor executor{run, run};
    return executor;
}

/// Returns the photo library of the request's disk with access granted. The program's own permission is
/// neither read nor changed.
platform::PhotoLibrary photoLibrary(const Request& request) {
    const auto authorized = [](const platform::Disk&) {
        return platform::PhotoAuthorization::authorized;
    };
    return {request.disk(), {authorized, authorized}};
}

// Looking at the disk

Json scan(const Request& request) {
    return form(core::LumvaleScanner::scan(request.disk()));
}

Json largeFiles(const Request& request) {
    const std::int64_t minimumBytes = integer(request.arguments[0]);
    const std::uint64_t maxResults = count(request.arguments[1]);
    return form(core::LumvaleScanner::scanLargeFiles(request.disk(), request.disk().home(), minimumBytes,
                                                     maxResults));
}

Json apps(const Request& request) {
    return form(core::LumvaleUninstaller::scanInstalledApps(request.disk()));
}

Json related(const Request& request) {
    const std::string path = platform::standardized(request.arguments[0]);
    const std::vector<core::InstalledApp> apps = core::LumvaleUninstaller::discoverApps(request.disk());
    const auto app = std::find_if(apps.begin(), apps.end(), [&](const core::InstalledApp& installed) {
        return installed.path == path;
    });
    if (app == apps.end())
        throw WrongUsage{"no such application: " + request.arguments[0]};
    return form(core::LumvaleUninstaller::relatedFiles(*app, request.disk()));
}

Json orphans(const Request& request) {
    return form(core::LumvaleUninstaller::orphanedLeftovers(request.disk()));
}

Json virtualMachines(const Request& request) {
    return form(core::LumvaleUninstaller::virtualMachineItems(request.disk()));
}

Json startup(const Request& request) {
    return form(core::LumvaleStartupItems::scan(request.disk()));
}

Json duplicates(const Request& request) {
    Json list;
    core::LumvalePhotoDuplicates::findExactDuplicates(
        [&](const auto& groups) { list = form(groups.value_or(std::vector<core::DuplicatePhotoGroup>())); },
        here(), photoLibrary(request));
    return list;
}

Json health(const Request& request) {
    return form(core::LumvaleScanner::healthScore(request.disk()));
}

Json storage(const Request& request) {
    return form(core::LumvaleScanner::storageBreakdown(request.disk()));
}

Json access(const Request& request) {
    return {{"hasFullDiskAccess", core::LumvalePermissions::hasFullDiskAccess(request.disk())}};
}

Json allowed(const Request& request) {
    return each(request.arguments, [&](const std::string& path) -> Json {
        return {{"path", path}, {"allowed", core::LumvaleScanner::isDeletionAllowed(path, request.disk())}};
    });
}

Json size(const Request& request) {
    const std::vector<std::int64_t> sizes = platform::measure(request.disk(), request.arguments);
    Json list = Json::array();
    for (std::size_t i = 0; i < sizes.size(); ++i)
        list.push_back({{"path", request.arguments[i]}, {"sizeBytes", sizes[i]}});
    return list;
}

// Changing it

Json remove(const Request& request) {
    if (!request.really)
        return {{"would", request.arguments}};
    return form(core::LumvaleScanner::deletePaths(request.arguments, request.disk()));
}

Json uninstall(const Request& request) {
    // Only the application's path is used.
    const core::InstalledApp app({}, {}, request.arguments[0], 0);
    Texts related = allButFirst(request.arguments);
    if (request.really)
        return form(core::LumvaleUninstaller::uninstall(app, std::move(related), request.disk()));
    related.push_back(app.path);
    return {{"would", related}};
}

Json emptyTrash(const Request& request) {
    if (request.really)
        return form(core::LumvaleScanner::emptyTrash(request.disk()));
    Json would = Json::array();
    const std::string trash = platform::trashFolder(request.disk());
    if (const auto names = platform::listTrash(request.disk())) {
        for (const std::string& name : *names)
            would.push_back(platform::joined(trash, name));
    }
    return {{"would", would}};
}

Json disable(const Request& request) {
    const std::string& label = request.arguments[0];
    if (!request.really)
        return {{"would", {label}}};
    const std::vector<core::StartupItem> items = core::LumvaleStartupItems::scan(request.disk());
    const auto item = std::find_if(items.begin(), items.end(), [&](const core::StartupItem& candidate) {
        return candidate.label == label;
    });
    return {
        {"disabled", item != items.end() && bool(core::LumvaleStartupItems::disable(*item, request.disk()))}};
}

Json deletePhotos(const Request& request) {
    if (!request.really)
        return {{"would", request.arguments}};
    // Only the items' identifiers are used.
    std::vector<core::DuplicatePhotoItem> items;
    for (const std::string& id : request.arguments)
        items.push_back({id, {}, 0, {}, false, false});
    platform::PhotoDeletion outcome = platform::PhotoDeletion::failed;
    core::LumvalePhotoDuplicates::deleteItems(
        items, [&](platform::PhotoDeletion result) { outcome = result; }, here(), photoLibrary(request));
    return {{"succeeded", outcome == platform::PhotoDeletion::done}};
}

// Text

Json capitalize(const Request& request) {
    return each(request.arguments, platform::capitalized);
}

Json formatBytes(const Request& request) {
    return each(allButFirst(request.arguments), [&](const std::string& bytes) {
        return platform::formatByteCount(integer(bytes), request.arguments[0]);
    });
}

Json formatDate(const Request& request) {
    return each(allButFirst(request.arguments), [&](const std::string& seconds) {
        const platform::Date date(platform::Date::duration(real(seconds)));
        return platform::formatMediumDate(date, request.arguments[0], platform::TimeZone::utc);
    });
}

Json sort(const Request& request) {
    const platform::NameOrder order(request.arguments[0]);
    Texts names = allButFirst(request.arguments);
    std::stable_sort(names.begin(), names.end(),
                     [&](const std::string& a, const std::string& b) { return order.before(a, b); });
    return names;
}

Json path(const Request& request) {
    return each(request.arguments, [](const std::string& text) -> Json {
        return {{"extension", platform::extension(text)},
                {"stem", platform::stem(text)},
                {"lastComponent", platform::lastComponent(text)},
                {"standardized", platform::standardized(text)}};
    });
}

Json propertyList(const Request& request) {
    const auto host = platform::Disk::open("/", "/");
    if (!host)
        throw WrongUsage{host.error().description};
    return each(request.arguments, [&](const std::string& file) -> Json {
        std::error_code none;
        const std::filesystem::path path = std::filesystem::absolute(file, none);
        if (none)
            throw WrongUsage{"no such file: " + file};
        const auto list = platform::PropertyList::read(*host, path.string());
        return list ? form(*list) : Json{{"error", form(list.error())}};
    });
}

// Geometry

Json treemap(const Request& request) {
    const core::Treemap::Rectangle in{0, 0, real(request.arguments[0]), real(request.arguments[1])};
    std::vector<core::TreemapItem> items;
    for (std::size_t i = 2; i < request.arguments.size(); ++i)
        items.push_back({i - 2, real(request.arguments[i])});
    Json list = Json::array();
    for (const auto& [id, tile] : core::Treemap::squarify(items, in))
        list.push_back(
            {{"id", id}, {"x", tile.x}, {"y", tile.y}, {"width", tile.width}, {"height", tile.height}});
    return list;
}

constexpr Operation operations[] = {
    {"scan", "", 0, 0, DiskUse::reads, scan},
    {"large-files", "MIN MAX", 2, 2, DiskUse::reads, largeFiles},
    {"apps", "", 0, 0, DiskUse::reads, apps},
    {"related", "APP_PATH", 1, 1, DiskUse::reads, related},
    {"orphans", "", 0, 0, DiskUse::reads, orphans},
    {"vms", "", 0, 0, DiskUse::reads, virtualMachines},
    {"startup", "", 0, 0, DiskUse::reads, startup},
    {"duplicates", "", 0, 0, DiskUse::reads, duplicates},
    {"health", "", 0, 0, DiskUse::reads, health},
    {"storage", "", 0, 0, DiskUse::reads, storage},
    {"access", "", 0, 0, DiskUse::reads, access},
    {"allowed", "PATH...", 1, anyNumber, DiskUse::reads, allowed},
    {"size", "PATH...", 1, anyNumber, DiskUse::reads, size},
    {"delete", "PATH... [--really]", 1, anyNumber, DiskUse::changes, remove},
    {"uninstall", "APP_PATH [RELATED...] [--really]", 1, anyNumber, DiskUse::changes, uninstall},
    {"empty-trash", "[--really]", 0, 0, DiskUse::changes, emptyTrash},
    {"disable", "LABEL [--really]", 1, 1, DiskUse::changes, disable},
    {"delete-photos", "ID... [--really]", 1, anyNumber, DiskUse::changes, deletePhotos},
#ifdef LUMVALE_INSPECT_APP
    {"tr", "LANGUAGE KEY...", 2, anyNumber, DiskUse::none, translate},
    {"newer", "VERSION THAN", 2, 2, DiskUse::none, newer},
    {"acceptable-page", "DOMAIN URL...", 2, anyNumber, DiskUse::none, acceptablePage},
#endif
    {"format-bytes", "LOCALE N...", 2, anyNumber, DiskUse::none, formatBytes},
    {"format-date", "LOCALE SECONDS...", 2, anyNumber, DiskUse::none, formatDate},
    {"sort", "LOCALE NAME...", 2, anyNumber, DiskUse::none, sort},
    {"capitalize", "TEXT...", 1, anyNumber, DiskUse::none, capitalize},
    {"path", "TEXT...", 1, anyNumber, DiskUse::none, path},
    {"treemap", "WIDTH HEIGHT VALUE...", 2, anyNumber, DiskUse::none, treemap},
    {"plist", "HOST_FILE...", 1, anyNumber, DiskUse::none, propertyList},
};

} // namespace

const Operation* operation(std::string_view name) {
    const auto* found = std::find_if(std::begin(operations), std::end(operations),
                                     [&](const Operation& operation) { return operation.name == name; });
    return found == std::end(operations) ? nullptr : found;
}

} // namespace inspect
