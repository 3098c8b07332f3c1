#include "tools/inspect/json_form.h"

namespace inspect {

namespace {

std::string_view name(platform::PropertyList::Root root) {
    using Root = platform::PropertyList::Root;
    switch (root) {
    case Root::dictionary:
        return "dictionary";
    case Root::array:
        return "array";
    case Root::string:
        return "string";
    case Root::integer:
        return "integer";
    case Root::real:
        return "real";
    case Root::boolean:
        return "boolean";
    case Root::date:
        return "date";
    case Root::data:
        return "data";
    case Root::other:
        break;
    }
    return "other";
}

} // namespace

Json form(const core::ScanItem& item) {
    return {{"id", item.id},
            {"path", item.path},
            {"name", item.name},
            {"sizeBytes", item.sizeBytes},
            {"category", rawValue(item.category)},
            {"explanation", item.explanation},
            {"safeByDefault", item.safeByDefault},
            {"modifiedDate",
             item.modifiedDate ? Json(platform::secondsSince1970(*item.modifiedDate)) : Json(nullptr)}};
}

Json form(const core::ScanResult& result) {
    return {{"items", form(result.items)}, {"totalBytes", result.totalBytes}};
}

Json form(const core::InstalledApp& app) {
    return {{"id", app.id},
            {"name", app.name},
            {"bundleIdentifier", form(app.bundleIdentifier)},
            {"path", app.path},
            {"sizeBytes", app.sizeBytes}};
}

Json form(const core::StartupItem& item) {
    return {{"id", item.id},
            {"path", item.path},
            {"label", item.label},
            {"displayName", item.displayName},
            {"explanation", item.explanation},
            {"isSystemWide", item.isSystemWide},
            {"isAlreadyDisabled", item.isAlreadyDisabled}};
}

Json form(const core::DuplicatePhotoItem& item) {
    return {{"id", item.id},
            {"filename", item.filename},
            {"sizeBytes", item.sizeBytes},
            {"creationDate",
             item.creationDate ? Json(platform::secondsSince1970(*item.creationDate)) : Json(nullptr)},
            {"isFavorite", item.isFavorite},
            {"isVideo", item.isVideo}};
}

Json form(const core::DuplicatePhotoGroup& group) {
    return {{"id", group.id}, {"items", form(group.items)}, {"totalWastedBytes", group.totalWastedBytes()}};
}

Json form(const core::StorageEntry& entry) {
    return {{"id", entry.id}, {"name", entry.name}, {"path", entry.path}, {"sizeBytes", entry.sizeBytes}};
}

Json form(const core::HealthScore& health) {
    return {{"score", health.score},
            {"freeDiskBytes", health.freeDiskBytes},
            {"totalDiskBytes", health.totalDiskBytes},
            {"batteryHealthPercent", form(health.batteryHealthPercent)},
            {"memoryPressureOK", health.memoryPressureOK},
            {"label", health.label()}};
}

Json form(const core::DeletionFailure& failure) {
    return {{"path", failure.path}, {"error", form(failure.error)}};
}

Json form(const core::TrashFailure& failure) {
    return {{"name", failure.name}, {"reasonKey", failure.reasonKey}, {"rawTechnical", failure.rawTechnical}};
}

Json form(const core::DeletionOutcome& outcome) {
    return {{"succeeded", outcome.succeeded}, {"failed", form(outcome.failed)}};
}

Json form(const core::TrashReport& report) {
    return {{"succeeded", report.succeeded},
            {"failed", report.failed},
            {"bytesFreed", report.bytesFreed},
            {"couldNotAccess", report.couldNotAccess},
            {"failedDetails", form(report.failedDetails)}};
}

Json form(const platform::Error& error) {
    return {{"domain", error.domain}, {"code", error.code}, {"description", error.description}};
}

Json form(const platform::PropertyList& list) {
    Json values = nullptr;
    if (list.root() == platform::PropertyList::Root::dictionary) {
        values = {{"Label", form(list.string("Label"))},
                  {"Disabled", form(list.boolean("Disabled"))},
                  {"CFBundleIdentifier", form(list.string("CFBundleIdentifier"))},
                  {"CFBundleDisplayName", form(list.string("CFBundleDisplayName"))},
                  {"CFBundleName", form(list.string("CFBundleName"))}};
    }
    return {{"root", name(list.root())}, {"values", values}};
}

} // namespace inspect
