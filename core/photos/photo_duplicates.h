#pragma once

#include "core/photos/duplicate_photo_group.h"
#include "core/photos/duplicate_photo_item.h"
#include "platform/base/executor.h"
#include "platform/photos/photo_library.h"

#include <functional>
#include <vector>

namespace core {

/// What this program may do with the photo library, as the user knows it.
enum class PhotoAccessState { notDetermined, denied, limited, authorized };

/// Identical photos and videos of the home's photo library, told by what the library knows of them; no
/// picture is read. Stateless: every operation looks at the library anew and never fails as a whole. What
/// answers by a `completion` works in the background and calls it once, on the interface thread. A disk
/// stands for the library of its home.
namespace LumvalePhotoDuplicates {

/// At once, and asking nobody.
PhotoAccessState authorizationStatus(const platform::PhotoLibrary& library = platform::Disk::current());

/// Asks for access, where that isn't decided.
void requestAccess(std::function<void(PhotoAccessState)> completion,
                   const platform::Executor& executor = platform::Executor::current(),
                   const platform::PhotoLibrary& library = platform::Disk::current());

/// The groups, largest waste first, equal ones in the order of the library; none without access.
void findExactDuplicates(std::function<void(std::vector<DuplicatePhotoGroup>)> completion,
                         const platform::Executor& executor = platform::Executor::current(),
                         const platform::PhotoLibrary& library = platform::Disk::current());

/// Moves the items to the library's recently deleted ones, all or none; those that it no longer knows are
/// passed over. Gives whether the library did it.
void deleteItems(const std::vector<DuplicatePhotoItem>& items, std::function<void(bool)> completion,
                 const platform::Executor& executor = platform::Executor::current(),
                 const platform::PhotoLibrary& library = platform::Disk::current());

} // namespace LumvalePhotoDuplicates

} // namespace core
