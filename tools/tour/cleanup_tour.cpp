#include "tools/tour/cleanup_tour.h"

#include "app/models/scan_view_model.h"
#include "app/text/display.h"
#include "platform/files/path.h"
#include "platform/removal/trash.h"
#include "tests/support/process.h"
#include "tools/tour/expect.h"
#include "tools/tour/set_aside.h"

#include <QTest>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <vector>

namespace fs = std::filesystem;

namespace {

/// Ticks this many proposals of a category, and nothing else.
void tick(Stage& stage, core::ScanCategory category, std::size_t count) {
    auto& model = stage.model<ScanViewModel>();
    std::set<std::string> ids;
    for (const core::ScanItem& item : model.items()->items())
        if (item.category == category && ids.size() < count)
            ids.insert(item.id);
    expect(ids.size() == count, "there are enough proposals");
    model.setChecked(ids);
}

void scan(Stage& stage) {
    auto& model = stage.model<ScanViewModel>();
    stage.click("scanButton");
    stage.take("scanning");
    stage.click("stopButton");
    stage.take("scan stopped");
    stage.finishJobs();
    stage.click("scanButton");
    {
        const DescriptorLimit few(3);
        stage.runJobs();
    }
    stage.finishJobs();
    expect(!model.unreadText().isEmpty(), "folders that can't be read are reported");
    stage.take("folders unread");
    stage.click("scanButton");
    stage.runJobs();
    stage.take("scanning progress", 300); // longer than the interval at which progress is shown
    stage.finishJobs();
    expect(model.items()->rowCount() > 0, "the scan finds something");
    stage.take("results");
}

void showStorageBreakdown(Stage& stage) {
    stage.click("storageButton");
    stage.take("storage loading");
    stage.finishJobs();
    stage.waitFor("the treemap is shown", [&] { return stage.driver().items("tile").size() > 3; });
    stage.take("storage");
    stage.driver().click(*stage.driver().items("tile")[2]);
    stage.take("storage selected");
    stage.click("closeButton");
    stage.waitFor("the storage sheet closes", [&] { return !stage.driver().isShown("storageTitle"); });
}

/// Selects the first visible row that isn't selected, or deselects the first one if all are.
void toggleRow(Stage& stage) {
    const std::vector<QQuickItem*> rows = stage.driver().rows();
    const auto isChecked = [](const QQuickItem* row) {
        return row->property("checked").toBool();
    };
    const auto row = std::find_if_not(rows.begin(), rows.end(), isChecked);
    QQuickItem* toggled = row == rows.end() ? rows.front() : *row;
    const bool wasChecked = isChecked(toggled);
    stage.driver().click(*toggled);
    expect(isChecked(toggled) != wasChecked && stage.model<ScanViewModel>().checkedCount() > 0,
           "a row is toggled");
    stage.take("ticked");
}

/// Folds the first category, unticks it by its check box, ticks it again and unfolds it.
void foldCategory(Stage& stage) {
    auto& model = stage.model<ScanViewModel>();
    const auto first = [&stage](const char* name) {
        expect(!stage.driver().itemsInSight(name).empty(), std::string("a category shows its ") + name);
        return stage.driver().itemsInSight(name).front();
    };
    const int rows = model.items()->rowCount();
    const std::set<std::string> selected = model.checked();
    stage.driver().click(*first("heading"));
    expect(model.items()->rowCount() < rows, "a category is folded");
    stage.take("folded", 300);
    stage.driver().click(*first("categoryBox"));
    expect(model.checked() != selected, "the items of a category are toggled");
    stage.take("category ticked", 600); // longer than the double-click interval
    stage.driver().click(*first("categoryBox"));
    QTest::qWait(600);
    stage.driver().click(*first("heading"));
    stage.waitFor("the category is unfolded", [&] { return model.items()->rowCount() == rows; });
    model.setChecked(selected);
}

/// Shows the path and the context menu of the first row, and copies the path.
void showPath(Stage& stage) {
    const QPoint place = Driver::center(*stage.driver().rows().front());
    QTest::mouseMove(&stage.window(), place);
    stage.waitFor("the path is shown", [&] { return stage.driver().isShown("tipText"); });
    stage.take("path");
    QTest::mouseClick(&stage.window(), Qt::RightButton, {}, place);
    expect(stage.driver().isShown("menuEntry"), "the context menu opens");
    stage.take("context menu");
    stage.driver().click(*stage.driver().items("menuEntry").back());
    stage.waitFor("the context menu closes", [&] { return !stage.driver().isShown("menuEntry"); });
    stage.take("path copied");
    stage.waitFor("the sentence disappears", [&] { return !stage.driver().isShown("notice"); });
}

/// Deletes the selection and prints what happened to each entry.
void deleteSelection(Stage& stage, const std::string& state, const std::function<void()>& run) {
    auto& model = stage.model<ScanViewModel>();
    const std::vector<core::ScanItem> before = model.items()->items();
    const std::set<std::string> selected = model.checked();
    stage.confirm("deleteButton", state, run);
    expect(model.checkedCount() == 0, "nothing is selected after the deletion");

    std::set<std::string> remaining;
    for (const core::ScanItem& item : model.items()->items())
        remaining.insert(item.id);
    std::printf("%s: %d of %zu selected entries\n", state.c_str(), *model.lastDeletedCount(),
                selected.size());
    for (const core::ScanItem& item : before) {
        if (!selected.contains(item.id))
            continue;
        const char* result = remaining.contains(item.id)                  ? "not deleted"
                             : item.category == core::ScanCategory::trash ? "removed for good"
                                                                          : "moved to the Trash";
        std::printf("  %s: %s (%s)\n", result, item.path.c_str(), qPrintable(display::size(item.sizeBytes)));
    }
    const std::vector<QQuickItem*> rows = stage.driver().rows();
    expect(std::none_of(rows.begin(), rows.end(),
                        [](const QQuickItem* row) { return row->property("isCurrent").toBool(); }),
           "no row shows the keyboard focus after clicks");
}

/// Moves some of the logs to the Trash: one has disappeared, folders can't be moved. Then puts back what was
/// moved, except for one whose place is taken.
void moveSomeLogs(Stage& stage) {
    auto& model = stage.model<ScanViewModel>();
    tick(stage, core::ScanCategory::logs, 7);
    const std::set<std::string> selected = model.checked();
    const std::string absent = *selected.begin(), folder = *std::next(selected.begin());
    for (const std::string& shared :
         {stage.host(platform::trashFolder(stage.disk())), stage.hostHome("Library/Logs")})
        fs::permissions(shared, fs::perms::all); // so that files can be moved
    {
        const SetAside aside(stage.host(absent));
        deleteSelection(stage, "delete some",
                        [&] { stage.runJobsWithPermissions(stage.host(folder), fs::perms(0555)); });
    }
    expect(*model.lastDeletedCount() > 1 && !model.stayedText().isEmpty(), "some entries are moved");
    stage.take("moved and stayed");

    const fs::path taken = stage.hostHome("Library/Logs/fsck_apfs.log");
    expect(!fs::exists(taken), "a file is moved");
    std::ofstream(taken) << "new";
    stage.putBack("put back");
    fs::remove(taken);
}

void deleteSelections(Stage& stage) {
    auto& model = stage.model<ScanViewModel>();
    const std::set<std::string> selected = model.checked();
    deleteSelection(stage, "delete nothing",
                    [&] { stage.runJobsWithPermissions(stage.hostHome("Library"), fs::perms::none); });
    expect(*model.lastDeletedCount() < static_cast<int>(selected.size()),
           "entries that can't be moved are reported");
    stage.take("stayed");

    stage.model<ScanViewModel>().setChecked(selected);
    stage.confirmAndStop("deleteButton");
    stage.take("removal stopped");

    moveSomeLogs(stage);

    tick(stage, core::ScanCategory::cache, 2);
    deleteSelection(stage, "delete two", [&] { stage.runJobs(); });
    stage.take("moved");
    stage.putBackAndStop("put back stopped");

    tick(stage, core::ScanCategory::trash, 1);
    deleteSelection(stage, "delete for good", [&] { stage.runJobs(); });
}

std::size_t trashEntryCount(const Stage& stage) {
    const fs::path trash = stage.host(platform::trashFolder(stage.disk()));
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(trash), fs::directory_iterator()));
}

void emptyTrash(Stage& stage) {
    auto& model = stage.model<ScanViewModel>();
    const std::string trash = stage.host(platform::trashFolder(stage.disk()));
    expect(trashEntryCount(stage) > 0, "the Trash contains the moved entries");
    stage.confirm("emptyTrashButton", "failed",
                  [&] { stage.runJobsWithPermissions(trash, fs::perms(0555)); });
    expect(model.trashFailedCount() > 0 && trashEntryCount(stage) > 0,
           "entries that can't be removed are reported");
    stage.take("failed");

    stage.confirm("emptyTrashButton", "no access",
                  [&] { stage.runJobsWithPermissions(trash, fs::perms::none); });
    expect(model.lastTrashCouldNotAccess(), "a Trash that can't be read is reported");
    stage.take("no access");

    stage.confirmAndStop("emptyTrashButton");
    stage.take("emptying stopped");

    fs::permissions(trash, fs::perms::all);
    fs::create_directories(trash + "/Locked/inner");
    stage.confirm("emptyTrashButton", "empty some",
                  [&] { stage.runJobsWithPermissions(trash + "/Locked", fs::perms(0555)); });
    expect(model.trashEmptiedCount() > 0 && model.trashFailedCount() > 0, "some entries are removed");
    stage.take("emptied some");

    const std::size_t before = trashEntryCount(stage);
    stage.confirm("emptyTrashButton", "empty Trash");
    const int removed = model.trashEmptiedCount();
    expect(removed > 0 && trashEntryCount(stage) == before - static_cast<std::size_t>(removed),
           "the Trash is emptied");
    std::printf("removed %d of %zu entries of the Trash for good (%s)\n", removed, before,
                qPrintable(model.trashEmptiedSize()));
    stage.take("emptied");
}

} // namespace

void tourCleanup(Stage& stage) {
    stage.take("empty");
    scan(stage);
    showStorageBreakdown(stage);
    toggleRow(stage);
    foldCategory(stage);
    showPath(stage);
    deleteSelections(stage);
    emptyTrash(stage);
}
