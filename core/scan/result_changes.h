#pragma once

#include "core/removal/deletion.h"
#include "core/removal/put_back.h"
#include "core/removal/trash.h"
#include "core/scan/scan_result.h"

/// Update the result of a scan after a removal, so that the scan need not be repeated. Linear in the number
/// of items; any thread.
namespace core {

/// Returns the result without the deleted items. One that was deleted in part has its remaining size.
ScanResult afterDeletion(ScanResult result, const DeletionOutcome& outcome);

/// Returns the result without the items of the Trash, except those that a stop left.
ScanResult afterEmptyingTrash(ScanResult result, const TrashReport& report);

/// Returns the result with the items of an earlier one that were put back, in its order.
ScanResult afterPutBack(const ScanResult& result, const ScanResult& earlier, const PutBackOutcome& outcome);

} // namespace core
