#include "tools/tour/tour.h"

#include "app/execution/background_task.h"
#include "app/execution/qt_executor.h"
#include "app/i18n/localizer.h"
#include "app/models/duplicate_photos_view_model.h"
#include "app/models/scan_view_model.h"
#include "app/text/display.h"
#include "platform/removal/trash.h"
#include "tools/tour/expect.h"
#include "ui/shell/lumvale_window.h"

#include <QSettings>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <set>
#include <vector>

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

} // namespace

Tour::Tour(const platform::Disk& disk, QDir pictures, QSize size)
    : m_disk(disk),
      m_folder(std::move(pictures)),
      m_size(size),
      m_trash(disk.hostRoot() + platform::trashFolder(disk)),
      m_mail(disk.hostRoot() + disk.inHome("Library/Mail")),
      m_history(disk) {}

void Tour::run(AppLanguage language) {
    Localizer::shared().setLanguage(language);
    qputenv("LC_ALL", locale(language));
    m_language = rawValue(language);
    m_number = 0;
    QSettings().remove("didOnboard");
    // Resets the photo permission, which is stored next to the settings.
    fs::remove(fs::path(qEnvironmentVariable("LUMVALE_SETTINGS").toStdString()) / "Lumvale/photos-asked");
    // The program considers Full Disk Access missing if it can't list this folder.
    fs::rename(m_mail, m_mail.native() + " moved");
    // Threads of the pool keep the user that they were started with.
    platform::Executor executor = qtExecutor();
    executor.background = [this, start = executor.background](const platform::Executor::Job& job) {
        start([job, isRestricted = m_restrictedTrash.has_value()] {
            std::optional<OrdinaryUser> user;
            if (isRestricted)
                user.emplace();
            job();
        });
    };
    LumvaleWindow lumvale(m_disk, m_history, executor, m_disk);
    m_window = lumvale.window();
    expect(m_window, "the window is created");
    if (m_size.isValid())
        m_window->resize(m_size);
    expect(QTest::qWaitForWindowExposed(m_window), "the window opens");
    m_driver.emplace(*m_window);
    m_model = m_window->findChild<ScanViewModel*>();

    finishOnboarding();
    takePicture("empty");
    scan();
    showStorageBreakdown();
    showPath();
    toggleRow();
    deleteSelection();
    failToEmptyTrash();
    emptyTrash();
    uninstallApp();
    disableStartupItem();
    deleteDuplicates();
    showHistory();
}

/// Clicks through the onboarding and grants Full Disk Access on the way.
void Tour::finishOnboarding() {
    waitFor("the onboarding opens",
            [this] { return m_driver->text("onboardingTitle") == tr("onboard_title_welcome"); });
    takePicture("welcome");
    expect(m_driver->click("next"), "the next page opens");
    takePicture("features");
    m_driver->click("next");
    expect(m_driver->isShown("onboard_fda_step1"), "the instructions for Full Disk Access are shown");
    takePicture("access");
    fs::rename(m_mail.native() + " moved", m_mail);
    m_driver->click("checkAgain");
    expect(m_driver->isShown("onboard_fda_granted"), "Full Disk Access is granted");
    takePicture("access granted");
    m_driver->click("next");
    takePicture("ready");
    m_driver->click("next");
    waitFor("the onboarding closes", [this] { return !m_driver->isShown("onboardingTitle"); });
}

void Tour::scan() {
    expect(m_driver->click("scanButton"), "the scan starts");
    takePicture("scanning", 0);
    waitFor("the scan ends", [this] { return m_model->hasResult() && !m_model->isScanning(); });
    expect(m_model->items()->rowCount() > 0, "the scan finds something");
    takePicture("results");
}

void Tour::showStorageBreakdown() {
    expect(m_driver->click("storageButton"), "the storage sheet opens");
    waitFor("the treemap is shown", [this] { return m_driver->items("tile").size() > 3; });
    takePicture("storage");
    m_driver->click(*m_driver->items("tile")[2]);
    takePicture("storage selected");
    expect(m_driver->click("closeButton"), "the close button is clicked");
    waitFor("the storage sheet closes", [this] { return !m_driver->isShown("storageTitle"); });
}

/// Shows the path and the context menu of the first row.
void Tour::showPath() {
    const QPoint place = Driver::centre(*m_driver->rows().front());
    QTest::mouseMove(m_window, place);
    waitFor("the path is shown", [this] { return m_driver->isShown("tipText"); });
    takePicture("path");
    QTest::mouseClick(m_window, Qt::RightButton, {}, place);
    expect(m_driver->isShown("menuEntry"), "the context menu opens");
    takePicture("context menu");
    m_driver->key(Qt::Key_Escape);
    waitFor("the context menu closes", [this] { return !m_driver->isShown("menuEntry"); });
}

/// Selects the first visible row that isn't selected, or deselects the first one if all are.
void Tour::toggleRow() {
    const std::vector<QQuickItem*> rows = m_driver->rows();
    const auto isChecked = [](const QQuickItem* row) {
        return row->property("checked").toBool();
    };
    const auto row = std::find_if_not(rows.begin(), rows.end(), isChecked);
    QQuickItem* toggled = row == rows.end() ? rows.front() : *row;
    const bool wasChecked = isChecked(toggled);
    m_driver->click(*toggled);
    expect(isChecked(toggled) != wasChecked && m_model->checkedCount() > 0, "a row is toggled");
    takePicture("ticked");
}

void Tour::deleteSelection() {
    const std::vector<core::ScanItem> before = m_model->items()->rows();
    const std::set<std::string> selected = m_model->checked();
    confirm("deleteButton", "delete");
    expect(m_model->lastDeletedCount() > 0 && m_model->checkedCount() == 0,
           "the selected entries are deleted");

    std::set<std::string> remaining;
    for (const core::ScanItem& item : m_model->items()->rows())
        remaining.insert(item.id);
    std::printf("%s: deleted %d of %zu selected entries\n", qPrintable(m_language),
                *m_model->lastDeletedCount(), selected.size());
    for (const core::ScanItem& item : before) {
        if (!selected.contains(item.id))
            continue;
        const char* result = remaining.contains(item.id)                  ? "not deleted"
                             : item.category == core::ScanCategory::trash ? "removed for good"
                                                                          : "moved to the Trash";
        std::printf("  %s: %s (%s)\n", result, item.path.c_str(), qPrintable(display::size(item.sizeBytes)));
    }
    const std::vector<QQuickItem*> rows = m_driver->rows();
    expect(std::none_of(rows.begin(), rows.end(),
                        [](const QQuickItem* row) { return row->property("isCurrent").toBool(); }),
           "no row shows the keyboard focus after clicks");
    takePicture("moved");
}

void Tour::failToEmptyTrash() {
    expect(trashEntryCount() > 0, "the Trash contains the moved entries");
    m_restrictedTrash.emplace(m_trash, fs::perms(0555));
    confirm("emptyTrashButton", "failed");
    m_restrictedTrash.reset();
    expect(m_model->trashFailedCount() > 0 && trashEntryCount() > 0,
           "entries that can't be removed are reported");
    takePicture("failed");

    m_restrictedTrash.emplace(m_trash, fs::perms::none);
    confirm("emptyTrashButton", "no access");
    m_restrictedTrash.reset();
    expect(m_model->lastTrashCouldNotAccess(), "a Trash that can't be read is reported");
    takePicture("no access");
}

void Tour::emptyTrash() {
    const std::size_t before = trashEntryCount();
    confirm("emptyTrashButton", "empty Trash");
    const int removed = m_model->trashEmptiedCount();
    expect(removed > 0 && trashEntryCount() == before - static_cast<std::size_t>(removed),
           "the Trash is emptied");
    std::printf("%s: removed %d of %zu entries of the Trash for good (%s)\n", qPrintable(m_language), removed,
                before, qPrintable(m_model->trashEmptiedSize()));
    takePicture("emptied");
}

void Tour::uninstallApp() {
    m_driver->click("tab_uninstall");
    waitFor("the applications are listed", [this] { return m_driver->rows().size() > 3; });
    takePicture("applications", 800); // for the icons
    const QString name = m_driver->rows()[2]->property("name").toString();
    m_driver->click(*m_driver->rows()[2]);
    waitFor("the files of an application are listed", [this] { return m_driver->isShown("filesList"); });
    takePicture("application files", 600); // longer than the double-click interval
    confirm("deleteButton", "uninstall");
    expect(m_driver->isShown("uninstalledLabel") && !m_driver->row(name), "the application is gone");
    std::printf("%s: uninstalled %s\n", qPrintable(m_language), qPrintable(name));
    takePicture("uninstalled");
}

void Tour::disableStartupItem() {
    m_driver->click("tab_startup");
    waitFor("the startup items are listed", [this] { return m_driver->rows().size() > 3; });
    takePicture("startup", 800);
    const std::vector<QQuickItem*> rows = m_driver->rows();
    const auto own = std::find_if_not(rows.begin(), rows.end(), [](const QQuickItem* row) {
        return row->property("isSystemWide").toBool();
    });
    expect(own != rows.end(), "some startup items are the user's own");
    const QString name = (*own)->property("name").toString();
    m_driver->click(*(*own)->findChild<QQuickItem*>("disableButton"));
    confirm(nullptr, "disable");
    expect(m_driver->isShown("disabledLabel"), "the item is disabled");
    std::printf("%s: disabled %s\n", qPrintable(m_language), qPrintable(name));
    takePicture("disabled");
}

void Tour::deleteDuplicates() {
    m_driver->click("tab_duplicates");
    expect(m_driver->isShown("allowButton"), "access to the photos is requested");
    takePicture("photos permission");
    m_driver->click("allowButton");
    const auto* model = m_window->findChild<DuplicatePhotosViewModel*>();
    waitFor("the search starts", [model] { return model->isLoading(); });
    takePicture("photos searching", 0);
    waitFor("the search ends", [model] { return model->hasScanned() && !model->isLoading(); });
    waitFor("duplicates are found", [this] { return m_driver->items("photoCheckBox").size() > 2; });
    takePicture("duplicates", 800); // for the thumbnails
    const std::vector<QQuickItem*> boxes = m_driver->items("photoCheckBox");
    m_driver->click(*boxes[0]);
    m_driver->click(*boxes[1]);
    expect(model->checkedCount() == 2, "two photos are selected");
    takePicture("duplicates ticked");
    const QString size = model->selectedSize();
    confirm("deleteButton", "duplicates");
    waitFor("the selected photos are deleted", [model] { return model->deletedCount() == 2; });
    waitFor("the next search ends", [model] { return !model->isLoading(); });
    std::printf("%s: moved 2 photos or videos to Recently Deleted (%s)\n", qPrintable(m_language),
                qPrintable(size));
    takePicture("duplicates deleted", 800);
}

void Tour::showHistory() {
    expect(m_driver->click("tab_history"), "the history tab is clicked");
    waitFor("the history lists the deletions", [this] { return !m_driver->rows().empty(); });
    takePicture("history");
}

void Tour::waitFor(const std::string& expectation, const std::function<bool()>& condition) const {
    constexpr int timeout = 60'000; // milliseconds, for a scan of a large disk
    expect(QTest::qWaitFor(condition, timeout), expectation);
}

void Tour::confirm(const char* button, const std::string& state) {
    expect(!button || m_driver->click(button), "the button of \"" + state + "\" is clicked");
    waitFor("the dialog opens", [this] { return m_driver->isShown("confirm"); });
    takePicture(state + " confirmation");
    const QObject context;
    for (const BackgroundTask* task : m_window->findChildren<BackgroundTask*>())
        QObject::connect(task, &BackgroundTask::runningChanged, &context, [&, task] {
            if (task->isRemoving())
                takePicture(state + " busy", 0);
        });
    expect(m_driver->click("confirm"), "the dialog is confirmed");
    waitFor("the dialog closes", [this] { return !m_driver->isShown("confirm"); });
}

void Tour::takePicture(const std::string& state, int delay) {
    if (delay > 0)
        QTest::qWait(delay);
    m_pictures.append({QStringLiteral("%1-%2-%3.png")
                           .arg(m_language)
                           .arg(++m_number, 2, 10, QLatin1Char('0'))
                           .arg(QString::fromStdString(state).replace(' ', '-')),
                       m_window->grabWindow()});
    const QStringList clipped = m_driver->cutTexts();
    expect(clipped.isEmpty(), "no text is clipped: " + clipped.join("; ").toStdString());
    // While the Trash is restricted the ordinary user may not have write access to the folder for pictures.
    if (m_restrictedTrash)
        return;
    for (const auto& [name, picture] : m_pictures)
        expect(picture.save(m_folder.filePath(name)), "the picture " + name.toStdString() + " is saved");
    m_pictures.clear();
}

std::size_t Tour::trashEntryCount() const {
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(m_trash), fs::directory_iterator()));
}
