#include "core/photos/photo_duplicates.h"

#include "core/photos/photo_grouping.h"

#include <memory>
#include <string>
#include <utility>

namespace core::LumvalePhotoDuplicates {

namespace {

PhotoAccessState state(platform::PhotoAuthorization authorization) {
    using enum platform::PhotoAuthorization;
    switch (authorization) {
    case notDetermined:
        return PhotoAccessState::notDetermined;
    case authorized:
        return PhotoAccessState::authorized;
    case limited:
        return PhotoAccessState::limited;
    case restricted:
    case denied:
        break;
    }
    return PhotoAccessState::denied;
}

/// Runs `work` in the background and passes its result to `completion` on the interface thread.
template <class Value>
void runInBackground(const platform::Executor& executor, std::function<Value()> work,
                     std::function<void(Value)> completion) {
    executor.background([executor, work = std::move(work), completion = std::move(completion)] {
        // Shared because executors copy jobs and results may be large.
        const auto value = std::make_shared<Value>(work());
        executor.interfaceThread([value, completion] { completion(std::move(*value)); });
    });
}

std::optional<std::vector<DuplicatePhotoGroup>> duplicates(const platform::PhotoLibrary& library,
                                                           platform::Progress& progress) {
    std::optional<PhotoGrouping> grouping;
    const auto begin = [&] {
        grouping.emplace();
        progress.beginPhase(0);
    };
    const bool isWhole = library.visitAssets(begin, [&](const platform::PhotoAsset& asset) {
        progress.add(1, grouping->add(asset));
        return !progress.isStopped();
    });
    if (!isWhole)
        return std::nullopt;
    return grouping->groups();
}

} // namespace

PhotoAccessState authorizationStatus(const platform::PhotoLibrary& library) {
    return state(library.authorization());
}

void requestAccess(std::function<void(PhotoAccessState)> completion, const platform::Executor& executor,
                   const platform::PhotoLibrary& library) {
    runInBackground<PhotoAccessState>(
        executor, [library] { return state(library.requestAuthorization()); }, std::move(completion));
}

void findExactDuplicates(std::function<void(std::optional<std::vector<DuplicatePhotoGroup>>)> completion,
                         const platform::Executor& executor, const platform::PhotoLibrary& library,
                         std::shared_ptr<platform::Progress> progress) {
    if (!progress)
        progress = std::make_shared<platform::Progress>();
    runInBackground<std::optional<std::vector<DuplicatePhotoGroup>>>(
        executor, [library, progress = std::move(progress)] { return duplicates(library, *progress); },
        std::move(completion));
}

void canDelete(std::function<void(bool)> completion, const platform::Executor& executor,
               const platform::PhotoLibrary& library) {
    runInBackground<bool>(
        executor, [library] { return library.isChangeable(); }, std::move(completion));
}

void deleteItems(const std::vector<DuplicatePhotoItem>& items,
                 std::function<void(platform::PhotoDeletion)> completion, const platform::Executor& executor,
                 const platform::PhotoLibrary& library, std::shared_ptr<platform::Progress> progress) {
    std::vector<std::string> ids;
    ids.reserve(items.size());
    for (const DuplicatePhotoItem& item : items)
        ids.push_back(item.id);
    runInBackground<platform::PhotoDeletion>(
        executor,
        [library, ids = std::move(ids), progress = std::move(progress)] {
            return library.deleteAssets(ids, progress.get());
        },
        std::move(completion));
}

bool canStopDeletion(const platform::PhotoLibrary& library) {
    return library.canStopDeletion();
}

} // namespace core::LumvalePhotoDuplicates
