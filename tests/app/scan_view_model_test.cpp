#include "app/models/scan_view_model.h"

#include "app/text/display.h"
#include "tests/app/hand_cranked.h"
#include "tests/support/mounted_volume.h"
#include "tests/support/temporary_disk.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <filesystem>
#include <memory>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using Texts = std::vector<std::string>;

class ScanViewModelTest : public testing::Test {
protected:
    void scan() {
        m_model.runScan();
        m_jobs.finish();
    }

    void confirmDelete() {
        m_model.confirmDelete();
        m_jobs.finish();
    }

    std::set<std::string> listed() {
        std::set<std::string> paths;
        for (const core::ScanItem& item : m_model.items()->items())
            paths.insert(item.path);
        return paths;
    }

    Texts recorded() const {
        Texts entries;
        for (const HistoryEntry& entry : m_history.entries())
            entries.push_back(entry.name + " " + std::to_string(entry.sizeBytes));
        return entries;
    }

    OrdinaryUser m_user; // permissions do not hold for root
    TemporaryDisk m_disk;
    HistoryStore m_history{m_disk.disk()};
    HandCranked m_jobs;
    ScanViewModel m_model{m_disk.disk(), m_history, m_jobs.executor()};
    QAbstractItemModelTester m_tester{m_model.items(), QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy m_healthChanges{&m_model, &ScanViewModel::healthChanged};
};

} // namespace

TEST_F(ScanViewModelTest, ShowsTheFreeSpaceOfTheVolume) {
    const MountedVolume volume(m_disk.host("~")); // no other program writes to it
    SKIP_UNLESS_MOUNTED(volume);
    m_disk.write("~/film", std::string(20'000, 'x'));
    scan();
    const QString shown = m_model.freeSpaceText();
    const QString total = display::size(64 * 1024);
    EXPECT_TRUE(shown.endsWith(u' ' + total) && shown.count(total) == 1) << shown.toStdString();
}

TEST_F(ScanViewModelTest, MovesTickedItemsToTheTrashAndKeepsFailedOnesUnticked) {
    m_disk.make({"~/Library/Caches/Google 100", "~/Library/Caches/a\xff 10", "~/Library/Caches/a\xfe 3",
                 "~/Library/Logs/two 20"});
    scan();
    m_model.items()->toggle(1); // looks the same as the next row
    m_model.items()->setFolded(u"cat_cache"_s, true);
    m_disk.setMode("~/Library/Logs", 0500);
    m_healthChanges.clear();
    const QSignalSpy resets(m_model.items(), &QAbstractItemModel::modelReset);
    confirmDelete();
    EXPECT_EQ(m_model.items()->rowCount(), 2);
    EXPECT_TRUE(resets.isEmpty());
    m_disk.setMode("~/Library/Logs", 0700);
    EXPECT_EQ(m_model.lastDeletedCount(), 2);
    EXPECT_EQ(recorded(), (Texts{"a\uFFFD 3", "Google (Chrome) 100"}));
    EXPECT_EQ(listed(), setAt({"~/Library/Caches/a\xff", "~/Library/Logs/two"}));
    EXPECT_EQ(m_model.result()->totalBytes, 30);
    EXPECT_TRUE(m_model.checked().empty());
    EXPECT_TRUE(m_disk.exists("~/.Trash/a\xfe") && m_disk.exists("~/.Trash/Google"));
    EXPECT_EQ(m_healthChanges.size(), 1);
    EXPECT_EQ(m_model.deletedText(), u"2 éléments mis à la corbeille");
    EXPECT_EQ(m_model.stayedText(), u"1 élément est resté à sa place : le système ne l'a pas permis");
    std::filesystem::remove(m_disk.host("~/Library/Logs/two"));
    m_model.setChecked(setAt({"~/Library/Logs/two"}));
    confirmDelete();
    EXPECT_EQ(m_model.stayedText(), u"1 élément n'était déjà plus là.");
    scan();
    EXPECT_TRUE(m_model.stayedText().isEmpty());
}

TEST_F(ScanViewModelTest, DeletesContentBeforeItsFolderAndCountsAPathWithTwoRowsOnce) {
    m_disk.make({"~/Downloads/old/film.mov 60000000", "~/Downloads/twice.mov 70000000"});
    for (const char* path : {"~/Downloads/old", "~/Downloads/twice.mov"})
        m_disk.setModified(path, platform::now() - std::chrono::days(90));
    scan();
    EXPECT_EQ(m_model.items()->rowCount(), 4); // large files and old downloads
    EXPECT_EQ(m_model.checkedCount(), 0);      // the user's own files start unticked
    for (const int row : {-1, 4, 0})           // the larger one of the large files
        m_model.items()->toggle(row);
    EXPECT_EQ(m_model.checkedCount(), 1);
    EXPECT_EQ(m_model.selectedBytes(), 140'000'000);
    m_model.setChecked(setAt({"~/Downloads/old", "~/Downloads/old/film.mov", "~/Downloads/twice.mov"}));
    confirmDelete();
    EXPECT_EQ(m_model.lastDeletedCount(), 3);
    EXPECT_EQ(recorded().size(), 4U);
    EXPECT_TRUE(listed().empty());
    EXPECT_TRUE(m_disk.exists("~/.Trash/film.mov") && m_disk.exists("~/.Trash/old"));
}

TEST_F(ScanViewModelTest, RemovesItemsOfTheTrashBeforeOthersTakeTheirNames) {
    m_disk.make({"~/.Trash/d.log 1", "~/Library/Logs/d.log 20"});
    scan();
    ASSERT_EQ(m_model.checkedCount(), 2);
    m_model.requestDelete();
    EXPECT_EQ(m_model.deleteMessage(),
              u"1 élément sera mis à la corbeille.\n1 élément est déjà dans la corbeille : "
              "il sera supprimé définitivement.");
    EXPECT_FALSE(m_model.deletesOnlyForGood());
    std::filesystem::remove(m_disk.host("~/.Trash/d.log"));
    confirmDelete();
    EXPECT_EQ(m_model.lastDeletedCount(), 1);
    EXPECT_TRUE(m_disk.exists("~/.Trash/d.log"));
    EXPECT_EQ(listed(), setAt({"~/.Trash/d.log"})); // could not be removed any more
    m_model.setChecked(listed());
    EXPECT_TRUE(m_model.deletesOnlyForGood());
    confirmDelete();
    EXPECT_EQ(m_model.deletedText(), u"1 éléments supprimés définitivement");
}

TEST_F(ScanViewModelTest, PutsItemsBackWithTheirTicksAndCorrectsTheHistory) {
    m_disk.make({"~/Library/Caches/a 100", "~/Library/Caches/b 10", "~/Library/Logs/c 20", "~/.Trash/d 5"});
    scan();
    m_model.setChecked(setAt({"~/Library/Caches/a", "~/Library/Caches/b", "~/.Trash/d"}));
    confirmDelete();
    EXPECT_TRUE(m_model.putBackModel()->isOffered());
    m_disk.write("~/Library/Caches/b", "new");
    m_model.putBackModel()->start();
    EXPECT_TRUE(m_model.putBackModel()->isRunning() && m_model.removalTask()->isRemoving());
    m_jobs.finish();
    EXPECT_EQ(listed(), setAt({"~/Library/Caches/a", "~/Library/Logs/c"}));
    EXPECT_EQ(m_model.checked(), setAt({"~/Library/Caches/a"}));
    EXPECT_EQ(m_model.result()->totalBytes, 120);
    EXPECT_EQ(m_model.putBackModel()->doneText(), u"1 élément est de nouveau à sa place.");
    EXPECT_EQ(m_model.putBackModel()->failedText(),
              u"1 élément n'a pas été remis en place : la place est déjà prise");
    EXPECT_TRUE(m_model.deletedText().isEmpty() && !m_model.putBackModel()->isRunning());
    EXPECT_EQ(recorded(), (Texts{"d 5", "b 10"}));
    std::filesystem::remove(m_disk.host("~/Library/Caches/b"));
    m_model.putBackModel()->start();
    m_jobs.finish();
    EXPECT_EQ(m_model.checked(), setAt({"~/Library/Caches/a", "~/Library/Caches/b"}));
    EXPECT_FALSE(m_model.putBackModel()->isOffered());
    EXPECT_EQ(recorded(), Texts{"d 5"});
    EXPECT_EQ(HistoryStore(m_disk.disk()).entries(), m_history.entries());
}

TEST_F(ScanViewModelTest, ReportsWhatCouldNotBeRemovedFromTheTrashAndUnticksIt) {
    m_disk.make({"~/.Trash/a 100", "~/.Trash/.hidden/b 20", "~/.Trash/closed/c 3", "~/Library/Logs/d.log 7"});
    m_disk.setMode("~/.Trash/closed", 0500);
    scan();
    m_healthChanges.clear();
    m_model.confirmEmptyTrash();
    m_jobs.finish();
    EXPECT_EQ(m_model.trashFailedNames(), QStringList{QStringLiteral("closed")});
    EXPECT_EQ(m_model.trashFailedReasonKeys(), QStringList{QStringLiteral("err_trash_permission")});
    EXPECT_EQ(recorded(), Texts{"Corbeille 120"});
    EXPECT_EQ(listed(), setAt({"~/Library/Logs/d.log"}));
    EXPECT_EQ(m_model.checked(), setAt({"~/Library/Logs/d.log"}));
    EXPECT_EQ(m_healthChanges.size(), 1);
    m_disk.setMode("~/.Trash/closed", 0700);
    for (const QString& note : {QString(), u"La corbeille est déjà vide."_s}) {
        m_model.confirmEmptyTrash();
        m_jobs.finish();
        EXPECT_EQ(m_model.trashNote(), note);
    }
}

TEST_F(ScanViewModelTest, StopsAScanAndRecordsARemovalWithoutTheModel) {
    m_disk.make({"~/Library/Logs/d.log 20", "~/.Trash/e 1"});
    m_model.runScan();
    m_model.stopScan();
    EXPECT_TRUE(m_model.wasScanStopped() && !m_model.isScanning());
    m_jobs.finish();
    EXPECT_FALSE(m_model.hasResult());

    scan();
    m_model.confirmDelete();
    m_model.removalTask()->stop(); // before it has begun
    m_jobs.finish();
    EXPECT_EQ(m_model.stayedText(), u"Arrêté : il reste 2 éléments.");
    EXPECT_TRUE(recorded().empty() && listed().size() == 2);
    {
        ScanViewModel model(m_disk.disk(), m_history, m_jobs.executor());
        model.runScan();
        m_jobs.finish();
        model.confirmDelete();
        m_jobs.runBackground();
    }
    m_jobs.publish();
    EXPECT_EQ(recorded().size(), 2U);
}

TEST_F(ScanViewModelTest, StopsAPutBackAndCorrectsTheHistoryWithoutTheModel) {
    auto model = std::make_unique<ScanViewModel>(m_disk.disk(), m_history, m_jobs.executor());
    const auto deleteAndPutBack = [&](const char* path) {
        m_disk.write(path, "1");
        model->runScan();
        m_jobs.finish();
        model->setChecked(setAt({path}));
        model->confirmDelete();
        m_jobs.finish();
        model->putBackModel()->start();
    };
    deleteAndPutBack("~/Library/Logs/c");
    model->removalTask()->stop();
    m_jobs.finish();
    EXPECT_EQ(model->putBackModel()->failedText(), u"Arrêté : 1 élément n'a pas été remis en place.");
    EXPECT_EQ(recorded(), Texts{"c 1"});

    deleteAndPutBack("~/Library/Caches/a");
    m_jobs.runBackground();
    EXPECT_EQ(recorded(), (Texts{"a 1", "c 1"}));
    model.reset();
    m_jobs.publish();
    EXPECT_EQ(recorded(), Texts{"c 1"});
}
