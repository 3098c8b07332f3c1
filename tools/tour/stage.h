#pragma once

#include "app/history/history_store.h"
#include "platform/files/disk.h"
#include "platform/photos/photo_access.h"
#include "tests/app/hand_cranked.h"
#include "tests/ui/driver.h"
#include "tools/tour/camera.h"
#include "ui/shell/lumvale_window.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

/// The program's main window on a disk, driven by mouse clicks, with a camera. Background jobs wait until
/// they are run, so that states which last a moment can be seen. Ends the program with an error message if
/// something unexpected happens. Requires a QGuiApplication and OwnSettings.
class Stage {
public:
    Stage(const platform::Disk& disk, Camera& camera);

    LumvaleWindow& lumvale() { return *m_lumvale; }
    QQuickWindow& window() const { return *m_lumvale->window(); }
    const Driver& driver() const { return *m_driver; }
    const platform::Disk& disk() const { return m_disk; }
    std::string host(const std::string& path) const { return m_disk.hostRoot() + path; }
    std::string hostHome(const std::string& path) const { return host(m_disk.inHome(path)); }

    /// Returns the view model of this class of the current screen.
    template <class Model>
    Model& model() const {
        return *window().findChild<Model*>();
    }

    void click(const char* button) const;
    void waitFor(const std::string& expectation, const std::function<bool()>& condition) const;
    void take(const std::string& state, int delay = 200) { m_camera.take(state, delay); }

    void runJobs() { m_jobs.runBackground(); } ///< without publishing their results
    /// Runs them while this folder of the host has these permissions.
    void runJobsWithPermissions(const std::string& folder, std::filesystem::perms permissions);
    void finishJobs(); ///< runs and publishes all, also those that are requested meanwhile

    /// Clicks a button, unless it is null, takes a picture of the dialog that opens, confirms it, calls
    /// `run`, takes a picture of the progress, and publishes the result.
    void confirm(const char* button, const std::string& state, const std::function<void()>& run);
    void confirm(const char* button, const std::string& state) {
        confirm(button, state, [this] { runJobs(); });
    }
    /// Confirms as well, but stops the removal before it begins.
    void confirmAndStop(const char* button);

    /// Puts back what the last removal moved, and takes a picture of the result; or stops before it begins.
    void putBack(const std::string& state);
    void putBackAndStop(const std::string& state);

    /// The permission for photos, and the answer to the next request.
    platform::PhotoAuthorization photos = platform::PhotoAuthorization::notDetermined;
    platform::PhotoAuthorization answer = platform::PhotoAuthorization::authorized;

private:
    platform::Disk m_disk;
    Camera& m_camera;
    HandCranked m_jobs;
    HistoryStore m_history;
    std::optional<LumvaleWindow> m_lumvale;
    std::optional<Driver> m_driver;
};
