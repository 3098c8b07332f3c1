#include "app/models/scan_view_model.h"
#include "tests/app/hand_cranked.h"
#include "tests/support/removal_hook.h"
#include "tests/support/temporary_disk.h"

#include <gtest/gtest.h>

TEST(StoppedRemoval, ListsAndRecordsWhatItLeftOfAFolderInTheTrash) {
    for (const bool empties : {false, true}) {
        TemporaryDisk disk;
        disk.make({"~/.Trash/folder/1 10", "~/.Trash/folder/2 10", "~/.Trash/folder/3 10"});
        HistoryStore history(disk.disk());
        HandCranked jobs;
        ScanViewModel model(disk.disk(), history, jobs.executor());
        model.runScan();
        jobs.finish();
        if (empties)
            model.confirmEmptyTrash();
        else
            model.confirmDelete();
        beforeRemoval = [&, removals = 0]() mutable {
            if (++removals == 2)
                model.removalTask()->stop();
        };
        jobs.finish();
        beforeRemoval = nullptr;
        EXPECT_EQ(model.items()->items().at(0).sizeBytes, 10);
        EXPECT_EQ(model.result()->totalBytes, 10);
        ASSERT_EQ(history.entries().size(), 1U);
        EXPECT_EQ(history.entries()[0].sizeBytes, 20);
        const QString told = empties ? model.trashNote() : model.stayedText();
        EXPECT_EQ(told, QStringLiteral("Arrêté : il reste 1 élément."));
    }
}
