#include "tools/tour/tour.h"

#include "app/i18n/localizer.h"
#include "app/models/disk_choice_model.h"
#include "app/update/update_alert.h"
#include "tests/support/mounted_volume.h"
#include "tests/support/temporary_disk.h"
#include "tools/tour/camera.h"
#include "tools/tour/cleanup_tour.h"
#include "tools/tour/expect.h"
#include "tools/tour/set_aside.h"
#include "tools/tour/stage.h"
#include "tools/tour/tools_tour.h"
#include "ui/shell/disk_window.h"

#include <QSettings>

#include <cstdio>
#include <utility>

namespace fs = std::filesystem;

namespace {

/// The locale for numbers and dates of a language.
const char* locale(AppLanguage language) {
    switch (language) {
    case AppLanguage::automatic:
    case AppLanguage::fr:
        return "fr_FR.UTF-8";
    case AppLanguage::en:
        return "en_US.UTF-8";
    case AppLanguage::srLatin:
        return "sr_RS.UTF-8@latin";
    case AppLanguage::srCyrillic:
        return "sr_RS.UTF-8";
    case AppLanguage::de:
        return "de_DE.UTF-8";
    case AppLanguage::es:
        return "es_ES.UTF-8";
    case AppLanguage::it:
        return "it_IT.UTF-8";
    case AppLanguage::pt:
        return "pt_PT.UTF-8";
    case AppLanguage::ru:
        return "ru_RU.UTF-8";
    }
    return "C.UTF-8";
}

/// Shows the window that asks for a disk: with a list, after a wrong choice, and without a disk.
void showDiskWindow(Camera& camera, const std::string& hostRoot) {
    const auto show = [&camera](DiskWindow& chooser, const std::string& state) {
        expect(chooser.window() && QTest::qWaitForWindowExposed(chooser.window()), "the disk window opens");
        camera.aim(*chooser.window());
        camera.take(state);
    };
    const auto ignore = [](const platform::Disk&) {
    };
    DiskWindow chooser(platform::mountedMacDisks(), hostRoot, ignore);
    show(chooser, "disks");
    auto* choices = chooser.window()->property("choices").value<DiskChoiceModel*>();
    choices->chooseFolder(QUrl::fromLocalFile(QString::fromStdString(hostRoot + "/Applications")));
    expect(!choices->problem().isEmpty(), "a folder that isn't a Mac's disk is refused");
    show(chooser, "not a disk");
    DiskWindow empty({}, {}, ignore);
    show(empty, "no disks");
}

/// Clicks through the introduction and grants Full Disk Access on the way, by putting back the user's mail.
void finishIntroduction(Stage& stage, std::optional<SetAside>& mail) {
    const auto next = [&stage](const std::string& state) {
        stage.click("next");
        stage.take(state);
    };
    stage.waitFor("the introduction opens", [&] { return stage.driver().isShown("onboardingTitle"); });
    stage.take("welcome");
    stage.click("languagePicker");
    stage.take("welcome languages");
    stage.driver().key(Qt::Key_Escape);
    next("features");
    next("access");
    stage.click("checkAgain");
    stage.take("access still missing");
    mail.reset();
    stage.click("checkAgain");
    expect(stage.driver().isShown("onboard_fda_granted"), "Full Disk Access is granted");
    stage.take("access granted");
    next("ready");
    stage.click("next");
    stage.waitFor("the introduction closes", [&] { return !stage.driver().isShown("onboardingTitle"); });
}

void showShell(Stage& stage, AppLanguage language) {
    stage.click("languageMenu");
    stage.take("languages");
    stage.driver().key(Qt::Key_Escape);
    stage.click("tab_history");
    stage.take("history empty");
    stage.click("tab_cleanup");
    stage.lumvale().announce(UpdateChecker::alertIn(rawValue(language), "Lumvale", "2.0.1", "1.0.0", QUrl()));
    stage.waitFor("the update dialog opens", [&] { return stage.driver().isShown("later"); });
    stage.take("update");
    stage.click("later");
    stage.waitFor("the update dialog closes", [&] { return !stage.driver().isShown("later"); });
}

/// Opens a tab and waits for its list.
void openTab(Stage& stage, const std::string& tab) {
    stage.click(("tab_" + tab).c_str());
    stage.finishJobs();
    if (tab == "duplicates") {
        stage.click("scanButton");
        stage.finishJobs();
    }
}

/// Shows the tabs of a disk that is mounted read-only, if this machine can mount one.
void showReadOnlyDisk(Camera& camera, const platform::Disk& disk) {
    const QTemporaryDir folder;
    const std::string mounted = folder.path().toStdString();
    const MountedVolume volume(mounted, disk.hostRoot());
    // "bind" restricts this mount point; without it the whole file system would become read-only.
    if (!volume || !runInShell("mount -o remount,bind,ro '" + mounted + "'")) {
        std::printf("skipped the read-only disk: no volume can be mounted here\n");
        return;
    }
    const auto readOnly = platform::Disk::open(mounted, disk.home());
    expect(readOnly && readOnly->isReadOnly(), "the disk is read-only");
    Stage stage(*readOnly, camera);
    stage.photos = platform::PhotoAuthorization::authorized;
    stage.click("scanButton");
    stage.finishJobs();
    stage.take("read-only results");
    if (stage.driver().isEnabled("deleteButton")) {
        stage.confirm("deleteButton", "read-only delete");
        stage.take("read-only stayed");
    }
    stage.confirm("emptyTrashButton", "read-only Trash");
    stage.take("read-only Trash failed");
    openTab(stage, "uninstall");
    stage.driver().click(*stage.driver().rows().front());
    stage.finishJobs();
    stage.confirm("deleteButton", "read-only uninstall");
    stage.take("read-only application stayed");
    openTab(stage, "startup");
    stage.click("disableButton");
    stage.confirm(nullptr, "read-only disable");
    stage.take("read-only disable failed");
    for (const char* tab : {"duplicates", "history"}) {
        openTab(stage, tab);
        stage.take(std::string("read-only ") + tab);
    }
}

/// Shows the tabs of a disk on which there is nothing to do.
void showEmptyDisk(Camera& camera) {
    const TemporaryDisk empty;
    empty.make("~/.Trash/");
    Stage stage(empty.disk(), camera);
    stage.photos = platform::PhotoAuthorization::authorized;
    stage.click("scanButton");
    stage.finishJobs();
    stage.take("nothing found");
    stage.confirm("emptyTrashButton", "nothing in the Trash");
    stage.take("Trash empty");
    for (const char* tab : {"uninstall", "startup", "duplicates"}) {
        openTab(stage, tab);
        stage.take(std::string("nothing in ") + tab);
    }
}

} // namespace

Tour::Tour(const platform::Disk& disk, std::optional<QDir> pictures)
    : m_disk(disk), m_pictures(std::move(pictures)) {}

QStringList Tour::run(AppLanguage language) {
    Localizer::shared().setLanguage(language);
    qputenv("LC_ALL", locale(language));
    std::printf("%s\n", qPrintable(rawValue(language)));
    Camera camera(m_pictures, rawValue(language));
    showDiskWindow(camera, m_disk.hostRoot());

    fs::remove(m_disk.hostRoot() + HistoryStore(m_disk).path());
    QSettings().remove("didOnboard");
    {
        // The program considers Full Disk Access missing if it can't list this folder.
        std::optional<SetAside> mail(m_disk.hostRoot() + m_disk.inHome("Library/Mail"));
        Stage stage(m_disk, camera);
        finishIntroduction(stage, mail);
        showShell(stage, language);
        tourCleanup(stage);
        tourTools(stage);
    }
    showReadOnlyDisk(camera, m_disk);
    showEmptyDisk(camera);
    return camera.problems();
}
