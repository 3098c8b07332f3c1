#include "tools/tour/tools_tour.h"

#include "app/models/duplicate_photos_view_model.h"
#include "platform/removal/trash.h"
#include "tools/tour/expect.h"
#include "tools/tour/set_aside.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <vector>

namespace fs = std::filesystem;

namespace {

void uninstallApp(Stage& stage) {
    const std::string applications = stage.host("/Applications");
    fs::create_directories(applications + "/Abacus.app"); // no other file belongs to it
    stage.click("tab_uninstall");
    stage.take("applications loading");
    stage.finishJobs();
    stage.waitFor("the applications are listed", [&] { return stage.driver().rows().size() > 3; });
    stage.finishJobs(); // the icons
    stage.take("applications");
    stage.click("sort_by_size");
    stage.finishJobs();
    stage.take("applications by size");
    stage.click("sort_by_name");

    const auto open = [&stage](const QString& name) {
        stage.waitFor("the application is listed", [&] { return stage.driver().row(name); });
        stage.driver().click(*stage.driver().row(name));
    };
    const QString name = stage.driver().rows()[2]->property("name").toString();
    open(name);
    stage.take("application files loading");
    stage.finishJobs();
    stage.waitFor("the files of an application are listed",
                  [&] { return stage.driver().isShown("filesList"); });
    stage.finishJobs();
    stage.take("application files", 600); // longer than the double-click interval
    stage.confirm("deleteButton", "uninstall",
                  [&] { stage.runJobsWithPermissions(applications, fs::perms(0555)); });
    expect(stage.driver().isShown("stayedLabel"), "an application that can't be moved is reported");
    stage.take("application stayed");

    open(name);
    stage.finishJobs();
    stage.confirmAndStop("deleteButton");
    stage.take("uninstall stopped");

    const std::string bundle = applications + '/' + name.toStdString() + ".app";
    for (const std::string& shared : {applications, bundle, stage.host(platform::trashFolder(stage.disk()))})
        fs::permissions(shared, fs::perms::all); // so that the bundle can be moved
    open(name);
    stage.finishJobs();
    stage.confirm("deleteButton", "uninstall some", [&] {
        stage.runJobsWithPermissions(stage.hostHome("Library/Preferences"), fs::perms(0555));
    });
    expect(stage.driver().isShown("uninstalledLabel") && stage.driver().isShown("stayedLabel"),
           "an application is moved and its files stay");
    stage.take("application files stayed");

    open("Abacus");
    stage.finishJobs();
    stage.take("application without files", 600);
    stage.confirm("deleteButton", "uninstall all");
    expect(stage.driver().isShown("uninstalledLabel") && !stage.driver().row("Abacus"),
           "the application is gone");
    std::printf("uninstalled Abacus\n");
    stage.take("uninstalled");
    stage.putBack("application put back");
}

void disableStartupItem(Stage& stage) {
    const std::string agents = stage.hostHome("Library/LaunchAgents");
    stage.click("tab_startup");
    stage.take("startup loading");
    stage.finishJobs();
    stage.waitFor("the startup items are listed", [&] { return stage.driver().rows().size() > 3; });
    stage.finishJobs();
    stage.take("startup");

    const auto disable = [&](const std::string& state, const std::function<void()>& run) {
        const std::vector<QQuickItem*> rows = stage.driver().rows();
        const auto own = std::find_if_not(rows.begin(), rows.end(), [](const QQuickItem* row) {
            return row->property("isSystemWide").toBool();
        });
        expect(own != rows.end(), "some startup items are the user's own");
        const std::string name = (*own)->property("name").toString().toStdString();
        stage.driver().click(*(*own)->findChild<QQuickItem*>("disableButton"));
        stage.confirm(nullptr, state, run);
        return name;
    };
    disable("disable", [&] { stage.runJobsWithPermissions(agents, fs::perms(0555)); });
    expect(stage.driver().isShown("disableFailedLabel"), "an item that can't be disabled is reported");
    stage.take("disable failed");
    const std::string name = disable("disable again", [&] { stage.runJobs(); });
    expect(stage.driver().isShown("disabledLabel"), "the item is disabled");
    std::printf("disabled %s\n", name.c_str());
    stage.take("disabled");
    stage.putBack("enabled again");
}

/// Shows the states without duplicates: asked, refused, stopped, unreadable.
void showPhotoPrompts(Stage& stage, const std::string& catalogue) {
    const auto reopen = [&stage] {
        stage.click("tab_history");
        stage.click("tab_duplicates");
    };
    stage.click("tab_duplicates");
    expect(stage.driver().isShown("allowButton"), "access to the photos is requested");
    stage.take("photos permission");
    stage.answer = platform::PhotoAuthorization::denied;
    stage.click("allowButton");
    stage.finishJobs();
    stage.take("photos denied");

    stage.photos = platform::PhotoAuthorization::authorized;
    reopen();
    stage.take("photos");
    stage.click("scanButton");
    stage.click("stopButton");
    stage.finishJobs();
    stage.take("photos stopped");
    const SetAside whole(catalogue);
    std::ofstream(catalogue) << "damaged";
    stage.click("scanButton");
    stage.finishJobs();
    stage.take("photos unreadable");
}

void deleteDuplicates(Stage& stage) {
    const std::string catalogue =
        stage.hostHome("Pictures/Photos Library.photoslibrary/database/Photos.sqlite");
    showPhotoPrompts(stage, catalogue);
    const auto search = [&stage](const std::string& state) {
        stage.click("scanButton");
        stage.take(state + " searching");
        stage.finishJobs();
        stage.waitFor("duplicates are found",
                      [&] { return stage.driver().items("photoCheckBox").size() > 2; });
        stage.finishJobs();
        stage.take(state, 300);
    };
    constexpr std::streamoff applicationId = 68; // in the header of SQLite's file format
    const auto exchangeApplicationId = [&](const std::string& id) {
        std::fstream file(catalogue, std::ios::in | std::ios::out | std::ios::binary);
        std::string before(4, '\0');
        file.seekg(applicationId).read(before.data(), 4);
        file.seekp(applicationId).write(id.data(), 4);
        expect(static_cast<bool>(file.flush()), "the catalogue's application ID is changed");
        return before;
    };
    const std::string own = exchangeApplicationId(std::string(4, '\0')); // as in a Mac's library
    search("duplicates read-only");
    exchangeApplicationId(own);
    search("duplicates");

    // Drawn only while the pointer is on the tile.
    stage.driver().click(*stage.driver().items("photoTile").front()->findChild<QQuickItem*>("previewButton"));
    stage.waitFor("a photo is shown large", [&] { return stage.driver().isShown("photoPage"); });
    stage.finishJobs();
    stage.take("photo preview");
    stage.click("closeButton");
    stage.waitFor("the preview closes", [&] { return !stage.driver().isShown("photoPage"); });

    const auto& model = stage.model<DuplicatePhotosViewModel>();
    const auto tickTwo = [&] {
        const std::vector<QQuickItem*> boxes = stage.driver().itemsInSight("photoCheckBox");
        stage.driver().click(*boxes[0]);
        stage.driver().click(*boxes[1]);
        expect(model.checkedCount() == 2, "two photos are selected");
    };
    tickTwo();
    stage.take("duplicates ticked");
    const QString size = model.selectedSize();
    stage.confirm("deleteButton", "duplicates",
                  [&] { stage.runJobsWithPermissions(fs::path(catalogue).parent_path(), fs::perms::none); });
    expect(model.hasDeletionFailed(), "photos that can't be deleted are reported");
    stage.take("duplicates stayed");
    if (model.checkedCount() == 0)
        tickTwo();
    stage.confirmAndStop("deleteButton");
    stage.take("duplicates stopped");
    if (model.checkedCount() == 0)
        tickTwo();
    stage.confirm("deleteButton", "duplicates again");
    expect(model.deletedCount() == 2, "the selected photos are deleted");
    std::printf("moved 2 photos or videos to Recently Deleted (%s)\n", qPrintable(size));
    stage.take("duplicates deleted", 300);
}

} // namespace

void tourTools(Stage& stage) {
    stage.click("tab_history");
    stage.waitFor("the history lists the deletions", [&] { return !stage.driver().rows().empty(); });
    stage.take("history");
    uninstallApp(stage);
    disableStartupItem(stage);
    deleteDuplicates(stage);
}
