#pragma once

#include "core/health/health_score.h"
#include "core/items/scan_item.h"
#include "core/photos/duplicate_photo_group.h"
#include "core/removal/deletion.h"
#include "core/removal/trash.h"
#include "core/scan/scan_result.h"
#include "core/startup/startup_item.h"
#include "core/storage/storage_entry.h"
#include "core/uninstall/installed_app.h"
#include "platform/base/error.h"
#include "platform/property_lists/property_list.h"
#include "tools/inspect/json_text.h"

#include <optional>
#include <vector>

/// Conversions of the core's records to JSON objects: members have the fields' names, dates are seconds since
/// 1970, absent values are null.
namespace inspect {

Json form(const core::ScanItem& item);
Json form(const core::ScanResult& result);
Json form(const core::InstalledApp& app);
Json form(const core::StartupItem& item);
Json form(const core::DuplicatePhotoItem& item);
Json form(const core::DuplicatePhotoGroup& group);
Json form(const core::StorageEntry& entry);
Json form(const core::HealthScore& health);
Json form(const core::DeletionFailure& failure);
Json form(const core::DeletionOutcome& outcome);
Json form(const core::TrashFailure& failure);
Json form(const core::TrashReport& report);
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
