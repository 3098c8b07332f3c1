#include "tools/tour/stage.h"

#include "tools/tour/expect.h"
#include "tools/tour/restricted_folder.h"

#include <QTest>

Stage::Stage(const platform::Disk& disk, Camera& camera) : m_disk(disk), m_camera(camera), m_history(disk) {
    const platform::PhotoAccess access{[this](const platform::Disk&) { return photos; },
                                       [this](const platform::Disk&) {
                                           return photos = answer;
                                       }};
    m_lumvale.emplace(disk, m_history, m_jobs.executor(), platform::PhotoLibrary(disk, access));
    expect(m_lumvale->window(), "the window is created");
    expect(QTest::qWaitForWindowExposed(&window()), "the window opens");
    // Without a window manager the window does not become active, and keys would be lost.
    window().contentItem()->setFocus(true, Qt::ActiveWindowFocusReason);
    m_driver.emplace(window());
    m_camera.aim(window());
}

void Stage::click(const char* button) const {
    expect(m_driver->click(button), std::string("the button \"") + button + "\" is clicked");
}

void Stage::waitFor(const std::string& expectation, const std::function<bool()>& condition) const {
    expect(QTest::qWaitFor(condition), expectation);
}

void Stage::runJobsWithPermissions(const std::string& folder, std::filesystem::perms permissions) {
    const RestrictedFolder restricted(folder, permissions);
    runJobs();
}

void Stage::finishJobs() {
    do {
        m_jobs.run();
        (void)window().grabWindow(); // creates the delegates, which request thumbnails
        QTest::qWait(0);
    } while (!m_jobs.isIdle());
}

void Stage::confirm(const char* button, const std::string& state, const std::function<void()>& run) {
    if (button)
        click(button);
    waitFor("the dialog opens", [this] { return m_driver->isShown("confirm"); });
    take(state + " confirmation");
    click("confirm");
    run();
    if (m_driver->isShown("progressText"))
        take(state + " progress", 300); // longer than the interval at which progress is shown
    finishJobs();
    waitFor("the dialog closes", [this] { return !m_driver->isShown("confirm"); });
}

void Stage::confirmAndStop(const char* button) {
    click(button);
    waitFor("the dialog opens", [this] { return m_driver->isShown("confirm"); });
    click("confirm");
    click("cancel");
    finishJobs();
    waitFor("the dialog closes", [this] { return !m_driver->isShown("confirm"); });
}

void Stage::putBack(const std::string& state) {
    click("putBackButton");
    waitFor("the dialog opens", [this] { return m_driver->isShown("cancel"); });
    runJobs();
    take(state + " progress", 300); // as in confirm()
    finishJobs();
    waitFor("the dialog closes", [this] { return !m_driver->isShown("cancel"); });
    take(state);
}

void Stage::putBackAndStop(const std::string& state) {
    click("putBackButton");
    waitFor("the dialog opens", [this] { return m_driver->isShown("cancel"); });
    click("cancel");
    finishJobs();
    waitFor("the dialog closes", [this] { return !m_driver->isShown("cancel"); });
    take(state);
}
