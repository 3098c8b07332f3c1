#pragma once

#include "core/photos/duplicate_photo_group.h"
#include "core/photos/duplicate_photo_item.h"
#include "platform/base/executor.h"
#include "platform/base/progress.h"
#include "platform/photos/photo_library.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace core {

/// The user's permission for this program to use the photo library.
enum class PhotoAccessState { notDetermined, denied, limited, authorized };

/// Finds and deletes duplicates in the photo library. Compares the library's metadata only; no image file is
/// read. Stateless: every operation reads the library again. Operations with a
/// `completion` run in the background and call it once, on the interface thread. A
/// `platform::Disk` may be passed for the library of its home.
namespace LumvalePhotoDuplicates {

/// Returns the current permission without asking the user. Any thread.
PhotoAccessState authorizationStatus(const platform::PhotoLibrary& library = platform::Disk::current());

/// Asks the user for permission if it is not determined yet, and passes on the permission.
void requestAccess(std::function<void(PhotoAccessState)> completion,
                   const platform::Executor& executor = platform::Executor::current(),
                   const platform::PhotoLibrary& library = platform::Disk::current());

/// Finds the groups of duplicates, largest `totalWastedBytes` first, equal ones in the order of the library.
/// Passes on nullopt when the library cannot be read completely, or permission is missing or was revoked
/// during the search. Counts the assets that it reads, with the sizes of their files, in `progress`, which
/// may be null; passes on nullopt soon after that is stopped.
void findExactDuplicates(std::function<void(std::optional<std::vector<DuplicatePhotoGroup>>)> completion,
                         const platform::Executor& executor = platform::Executor::current(),
                         const platform::PhotoLibrary& library = platform::Disk::current(),
                         std::shared_ptr<platform::Progress> progress = nullptr);

/// Passes on whether deleteItems() can delete anything from the library.
void canDelete(std::function<void(bool)> completion,
               const platform::Executor& executor = platform::Executor::current(),
               const platform::PhotoLibrary& library = platform::Disk::current());

/// Moves the items to the library's "Recently Deleted" album, all or none. Items that are no longer in the
/// library are skipped. Passes on the library's outcome. `progress` may be null.
void deleteItems(const std::vector<DuplicatePhotoItem>& items,
                 std::function<void(platform::PhotoDeletion)> completion,
                 const platform::Executor& executor = platform::Executor::current(),
                 const platform::PhotoLibrary& library = platform::Disk::current(),
                 std::shared_ptr<platform::Progress> progress = nullptr);

/// Returns whether deleteItems() shows progress and can be stopped while it runs. Any thread.
bool canStopDeletion(const platform::PhotoLibrary& library = platform::Disk::current());

} // namespace LumvalePhotoDuplicates

} // namespace core
