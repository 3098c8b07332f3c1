#include "platform/photos/photo_library.h"

#include <string>

#include <pwd.h>
#include <unistd.h>

#include <gtest/gtest.h>

using platform::PhotoAuthorization;
using platform::PhotoDeletion;

namespace {

platform::Disk diskWithHome(const char* home) {
    return *platform::Disk::open("/", home);
}

const char* homeOfThisUser() {
    return getpwuid(getuid())->pw_dir;
}

/// A service with one asset, whose permission is `before`, and `after` once the asset was visited.
struct Service {
    PhotoAuthorization before = PhotoAuthorization::authorized;
    PhotoAuthorization after = before;
    bool isAvailable = true;
    PhotoAuthorization present = before;

    platform::SystemPhotoLibrary library() {
        return {[this] { return present; }, [this] { return present; },
                [this](const auto& visit) {
                    visit({});
                    present = after;
                    return isAvailable;
                },
                [](auto) {
                    return platform::PhotoPicture{{}, true};
                },
                [](auto&) {
                    return PhotoDeletion::declined;
                }};
    }
};

} // namespace

TEST(SystemPhotoLibrary, IsUsedWhileItsPermissionLasts) {
    using enum PhotoAuthorization;
    const struct {
        Service service;
        bool isWhole;
        int visited;
    } cases[]{{{}, true, 1},
              {{.before = limited}, true, 1},
              {{.before = authorized, .after = limited}, true, 1},
              {{.before = authorized, .after = denied}, false, 1},
              {{.before = limited, .after = notDetermined}, false, 1},
              {{.isAvailable = false}, false, 1},
              {{.before = denied}, false, 0},
              {{.before = restricted}, false, 0},
              {{.before = notDetermined}, false, 0}};
    for (auto [service, isWhole, visited] : cases) {
        SCOPED_TRACE(std::to_string(static_cast<int>(service.before)) + " to "
                     + std::to_string(static_cast<int>(service.after)));
        const platform::SystemPhotoLibrary system = service.library();
        const platform::PhotoLibrary library(diskWithHome(homeOfThisUser()), {}, &system);
        EXPECT_EQ(library.authorization(), service.before);
        EXPECT_EQ(library.picture("A").isInCloud, visited == 1);
        EXPECT_EQ(library.deleteAssets({"A"}),
                  visited == 1 ? PhotoDeletion::declined : PhotoDeletion::failed);
        int found = 0;
        EXPECT_EQ(library.visitAssets([] {}, [&](auto&) { ++found; }), isWhole);
        EXPECT_EQ(found, visited);
    }
}

TEST(SystemPhotoLibrary, IsNotUsedForAnotherHome) {
    Service service;
    const platform::SystemPhotoLibrary system = service.library();
    const auto unasked = [](const platform::Disk&) {
        return PhotoAuthorization::notDetermined;
    };
    for (const char* const home : {"/", "/usr"}) {
        const platform::PhotoLibrary library(diskWithHome(home), {unasked, unasked}, &system);
        EXPECT_EQ(library.authorization(), PhotoAuthorization::notDetermined) << home;
    }
}
