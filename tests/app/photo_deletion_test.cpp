#include "app/models/duplicate_photos_view_model.h"

#include "tests/app/hand_cranked.h"
#include "tests/support/temporary_disk.h"

#include <pwd.h>
#include <unistd.h>

#include <gtest/gtest.h>

using platform::PhotoDeletion;

TEST(PhotoDeletion, FailureIsToldAndADeclinedQuestionIsNot) {
    PhotoDeletion answer{};
    const auto authorized = [] {
        return platform::PhotoAuthorization::authorized;
    };
    const platform::PhotoResource photo{platform::PhotoResourceType::photo, "IMG_1.JPG", 1000};
    const platform::SystemPhotoLibrary system{
        authorized, authorized,
        [&](const auto& visit) {
            for (const char* const id : {"A", "B"})
                visit({.localIdentifier = id, .creationDate = {}, .resources = {&photo, 1}});
            return true;
        },
        [](auto, auto) { return platform::PhotoPicture(); },
        [&](auto&) {
            return answer;
        }};
    const TemporaryDisk disk;
    HistoryStore history(disk.disk());
    HandCranked jobs;
    DuplicatePhotosViewModel model(
        platform::PhotoLibrary(*platform::Disk::open("/", getpwuid(getuid())->pw_dir), {}, &system), history,
        jobs.executor());
    EXPECT_FALSE(model.canStopDeletion());
    model.scan();
    jobs.run();
    model.setChecked({"B"});
    for (const auto& [outcome, isTold] : {std::pair(PhotoDeletion::declined, false),
                                          {PhotoDeletion::failed, true},
                                          {PhotoDeletion::declined, false},
                                          {PhotoDeletion::failed, true}}) {
        answer = outcome;
        model.confirmDelete();
        jobs.run();
        EXPECT_EQ(model.hasDeletionFailed(), isTold);
        EXPECT_FALSE(model.removalTask()->isRunning() || model.isLoading() || model.lastDeletedCount());
        EXPECT_EQ(model.checkedCount(), 1);
        EXPECT_TRUE(history.entries().empty());
    }
    model.scan();
    EXPECT_FALSE(model.hasDeletionFailed()) << "the search may find fewer photos";
}
