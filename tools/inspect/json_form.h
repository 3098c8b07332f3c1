#pragma once

#include "core/photos/duplicate_photo_group.h"
#include "core/scan/deletion.h"
#include "core/scan/health_score.h"
#include "core/scan/scan_item.h"
#include "core/scan/scan_result.h"
#include "core/scan/storage_entry.h"
#include "core/scan/trash_report.h"
#include "core/startup/startup_item.h"
#include "core/uninstall/installed_app.h"
#include "platform/error.h"
#include "platform/property_list.h"
#include "tools/inspect/json_text.h"

#include <optional>
#include <vector>

/// The records of the core as JSON: members by the fields' names, dates in seconds since 1970, null for what
/// is absent.
namespace inspect {

Json form(const ScanItem& item);
Json form(const ScanResult& result);
Json form(const InstalledApp& app);
Json form(const StartupItem& item);
Json form(const DuplicatePhotoItem& item);
Json form(const DuplicatePhotoGroup& group);
Json form(const StorageEntry& entry);
Json form(const HealthScore& health);
Json form(const DeletionFailure& failure);
Json form(const DeletionOutcome& outcome);
Json form(const TrashFailure& failure);
Json form(const TrashReport& report);
Json form(const platform::Error& error);
Json form(const platform::PropertyList& list);

template <class Value>
Json form(const std::optional<Value>& value) {
    return value ? Json(*value) : Json(nullptr);
}

template <class Record>
Json form(const std::vector<Record>& records) {
    Json list = Json::array();
    for (const Record& record : records)
        list.push_back(form(record));
    return list;
}

} // namespace inspect
