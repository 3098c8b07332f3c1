// Goes through the window by real clicks on the disk that LUMVALE_DISK and LUMVALE_HOME name, in English and
// French or the languages that it is told, leaves a picture of each state in a folder, and says what it
// moved. What it does, it does for real.

#include "app/execution/qt_executor.h"
#include "app/history/history_store.h"
#include "app/i18n/localizer.h"
#include "app/models/duplicate_photos_view_model.h"
#include "app/models/scan_view_model.h"
#include "app/text/display.h"
#include "platform/removal/trash.h"
#include "tests/support/temporary_disk.h"
#include "tests/ui/driver.h"
#include "ui/shell/lumvale_window.h"

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QSettings>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr int patience = 60'000; // milliseconds, for a scan of a large disk

[[noreturn]] void fail(const std::string& what) {
    std::fprintf(stderr, "lumvale-tour: %s\n", what.c_str());
    std::exit(EXIT_FAILURE);
}

void expect(bool happened, const std::string& what) {
    if (!happened)
        fail("this did not happen: " + what);
}

void waitFor(const std::string& what, const std::function<bool()>& happened) {
    expect(QTest::qWaitFor(happened, patience), what);
}

/// Takes rights from the Trash's folder while it lives, and from root its privilege to pass over that.
class ClosedTrash {
public:
    ClosedTrash(fs::path folder, fs::perms left)
        : m_folder(std::move(folder)), m_before(fs::status(m_folder).permissions()) {
        fs::permissions(m_folder, left);
        m_user.emplace();
    }
    ~ClosedTrash() {
        m_user.reset();
        fs::permissions(m_folder, m_before);
    }
    ClosedTrash(const ClosedTrash&) = delete;
    ClosedTrash& operator=(const ClosedTrash&) = delete;

private:
    fs::path m_folder;
    fs::perms m_before;
    std::optional<OrdinaryUser> m_user;
};

/// How its speakers write figures and dates.
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

class Tour {
public:
    Tour(const platform::Disk& disk, QDir folder, QSize size)
        : m_disk(disk),
          m_folder(std::move(folder)),
          m_size(size),
          m_trash(disk.hostRoot() + platform::trashFolder(disk)),
          m_mail(disk.hostRoot() + disk.inHome("Library/Mail")),
          m_history(disk) {}

    void run(AppLanguage language) {
        Localizer::shared().setLanguage(language);
        qputenv("LC_ALL", locale(language));
        m_language = rawValue(language);
        m_number = 0;
        QSettings().remove("didOnboard");
        // Among the settings, which are the tour's own, it is also kept that the photos were asked for.
        fs::remove(fs::path(qEnvironmentVariable("XDG_CONFIG_HOME").toStdString()) / "Lumvale/photos-asked");
        // Where this folder can't be listed the program takes it that it has no permission yet.
        fs::rename(m_mail, m_mail.native() + " aside");
        LumvaleWindow lumvale(m_disk, m_history, qtExecutor(), m_disk);
        m_window = lumvale.window();
        expect(m_window, "the window is made");
        if (m_size.isValid())
            m_window->resize(m_size);
        expect(QTest::qWaitForWindowExposed(m_window), "the window opens");
        m_driver.emplace(*m_window);
        m_model = m_window->findChild<ScanViewModel*>();

        introduce();
        take("empty");
        scan();
        seeWhereTheSpaceGoes();
        tick();
        move();
        failToEmpty();
        empty();
        uninstall();
        disable();
        deleteDuplicates();
        lookBack();
    }

private:
    /// Goes through the introduction, and gives on the way the permission that it asks for.
    void introduce() {
        waitFor("a first run is introduced",
                [this] { return m_driver->text("onboardingTitle") == tr("onboard_title_welcome"); });
        take("welcome");
        expect(m_driver->click("next"), "the introduction goes on");
        take("features");
        m_driver->click("next");
        expect(m_driver->isShown("onboard_fda_step1"), "it asks for permission");
        take("access");
        fs::rename(m_mail.native() + " aside", m_mail);
        m_driver->click("checkAgain");
        expect(m_driver->isShown("onboard_fda_granted"), "permission is given");
        take("access granted");
        m_driver->click("next");
        take("ready");
        m_driver->click("next");
        waitFor("the introduction is over", [this] { return !m_driver->isShown("onboardingTitle"); });
    }

    void scan() {
        expect(m_driver->click("scanButton"), "the scan begins");
        take("scanning", 0);
        waitFor("the scan ends", [this] { return m_model->hasResult() && !m_model->isScanning(); });
        expect(m_model->items()->rowCount() > 0, "the scan finds something");
        take("results");
    }

    void seeWhereTheSpaceGoes() {
        expect(m_driver->click("storageButton"), "the storage sheet opens");
        waitFor("the map is there", [this] { return m_driver->items("tile").size() > 3; });
        take("storage");
        m_driver->click(*m_driver->items("tile")[2]);
        take("storage selected");
        expect(m_driver->click("closeButton"), "the sheet is closed");
        waitFor("the sheet is gone", [this] { return !m_driver->isShown("storageTitle"); });
    }

    /// Ticks the first row in sight that isn't, or takes the tick from the first one.
    void tick() {
        const std::vector<QQuickItem*> rows = m_driver->rows();
        const auto isChecked = [](const QQuickItem* row) {
            return row->property("checked").toBool();
        };
        const auto row = std::find_if_not(rows.begin(), rows.end(), isChecked);
        QQuickItem* toggled = row == rows.end() ? rows.front() : *row;
        const bool wasChecked = isChecked(toggled);
        m_driver->click(*toggled);
        expect(isChecked(toggled) != wasChecked && m_model->checkedCount() > 0, "a row is toggled");
        take("ticked");
    }

    void move() {
        const std::vector<core::ScanItem> before = m_model->items()->rows();
        const std::set<std::string> ticked = m_model->checked();
        confirm("deleteButton", "delete");
        expect(m_model->deletedCount() > 0 && m_model->checkedCount() == 0,
               "what was ticked moves to the Trash");

        std::set<std::string> left;
        for (const core::ScanItem& item : m_model->items()->rows())
            left.insert(item.id);
        std::printf("%s: %d of %zu ticked entries went\n", qPrintable(m_language), m_model->deletedCount(),
                    ticked.size());
        for (const core::ScanItem& item : before) {
            if (!ticked.contains(item.id))
                continue;
            const char* fate = left.contains(item.id)                       ? "stays"
                               : item.category == core::ScanCategory::trash ? "removed for good"
                                                                            : "moved to the Trash";
            std::printf("  %s: %s (%s)\n", fate, item.path.c_str(),
                        qPrintable(display::size(item.sizeBytes)));
        }
        const std::vector<QQuickItem*> rows = m_driver->rows();
        expect(std::none_of(rows.begin(), rows.end(),
                            [](const QQuickItem* row) { return row->property("isCurrent").toBool(); }),
               "who works by clicks is shown no ring of the keys");
        take("moved");
    }

    void failToEmpty() {
        expect(entriesInTrash() > 0, "the Trash holds what was moved");
        m_closed.emplace(m_trash, fs::perms(0555));
        confirm("emptyTrashButton", "failed");
        m_closed.reset();
        expect(m_model->trashFailedCount() > 0 && entriesInTrash() > 0,
               "entries that can't be removed are told");
        take("failed");

        m_closed.emplace(m_trash, fs::perms::none);
        confirm("emptyTrashButton", "no access");
        m_closed.reset();
        expect(m_model->lastTrashCouldNotAccess(), "a Trash that can't be read is told");
        take("no access");
    }

    void empty() {
        const std::size_t before = entriesInTrash();
        confirm("emptyTrashButton", "empty Trash");
        const int removed = m_model->trashEmptiedCount();
        expect(removed > 0 && entriesInTrash() == before - static_cast<std::size_t>(removed),
               "the Trash is emptied");
        std::printf("%s: removed %d of %zu entries of the Trash for good (%s)\n", qPrintable(m_language),
                    removed, before, qPrintable(m_model->trashEmptiedSize()));
        take("emptied");
    }

    void uninstall() {
        m_driver->click("tab_uninstall");
        waitFor("the applications are listed", [this] { return m_driver->rows().size() > 3; });
        take("applications");
        const QString name = m_driver->rows()[2]->property("name").toString();
        m_driver->click(*m_driver->rows()[2]);
        waitFor("the files of one are listed", [this] { return m_driver->isShown("filesList"); });
        take("application files", 600); // what may be half of a double click is heard by nobody
        confirm("deleteButton", "uninstall");
        expect(m_driver->isShown("uninstalledLabel") && !m_driver->row(name), "the application is gone");
        std::printf("%s: uninstalled %s\n", qPrintable(m_language), qPrintable(name));
        take("uninstalled");
    }

    void disable() {
        m_driver->click("tab_startup");
        waitFor("what starts is listed", [this] { return m_driver->rows().size() > 3; });
        take("startup");
        const std::vector<QQuickItem*> rows = m_driver->rows();
        const auto own = std::find_if_not(rows.begin(), rows.end(), [](const QQuickItem* row) {
            return row->property("isSystemWide").toBool();
        });
        expect(own != rows.end(), "some of it is the user's own");
        const QString name = (*own)->property("name").toString();
        m_driver->click(*(*own)->findChild<QQuickItem*>("disableButton"));
        confirm(nullptr, "disable");
        expect(m_driver->isShown("disabledLabel"), "it is disabled");
        std::printf("%s: disabled %s\n", qPrintable(m_language), qPrintable(name));
        take("disabled");
    }

    void deleteDuplicates() {
        m_driver->click("tab_duplicates");
        expect(m_driver->isShown("allowButton"), "it asks for the photos");
        take("photos permission");
        m_driver->click("allowButton");
        const auto* model = m_window->findChild<DuplicatePhotosViewModel*>();
        waitFor("the search begins", [model] { return model->isLoading(); });
        take("photos searching", 0);
        waitFor("the search ends", [model] { return model->hasScanned() && !model->isLoading(); });
        waitFor("duplicates are found", [this] { return m_driver->items("photoCheckBox").size() > 2; });
        take("duplicates", 800); // for the pictures
        const std::vector<QQuickItem*> boxes = m_driver->items("photoCheckBox");
        m_driver->click(*boxes[0]);
        m_driver->click(*boxes[1]);
        expect(model->checkedCount() == 2, "two of them are ticked");
        take("duplicates ticked");
        const QString size = model->selectedSize();
        confirm("deleteButton", "duplicates");
        waitFor("what was ticked is deleted", [model] { return model->deletedCount() == 2; });
        waitFor("it is searched anew", [model] { return !model->isLoading(); });
        std::printf("%s: 2 photos or videos went to the recently deleted ones (%s)\n", qPrintable(m_language),
                    qPrintable(size));
        take("duplicates deleted", 800);
    }

    void lookBack() {
        expect(m_driver->click("tab_history"), "the history is chosen");
        waitFor("the history shows what was done", [this] { return !m_driver->rows().empty(); });
        take("history");
    }

    /// Presses a button, unless that was done, then the one in its dialog, and waits until all is done.
    void confirm(const char* button, const char* name) {
        expect(!button || m_driver->click(button), std::string(name) + " is asked for");
        waitFor("the dialog opens", [this] { return m_driver->isShown("confirm"); });
        take((std::string(name) + " confirmation").c_str());
        const QObject until;
        const BlockingAction* action = m_driver->blockingAction();
        expect(action, "the dialog has something to do");
        QObject::connect(action, &BlockingAction::runningChanged, &until, [&] {
            if (action->isRunning())
                take((std::string(name) + " busy").c_str(), 0);
        });
        expect(m_driver->click("confirm"), "the dialog is confirmed");
        waitFor("the dialog closes", [this] { return !m_driver->isShown("confirm"); });
    }

    /// A moment for what fades in; none where the state would be over.
    void take(const char* state, int moment = 200) {
        if (moment > 0)
            QTest::qWait(moment);
        m_pictures.append({QStringLiteral("%1-%2-%3.png")
                               .arg(m_language)
                               .arg(++m_number, 2, 10, QLatin1Char('0'))
                               .arg(QString(state).replace(' ', '-')),
                           m_window->grabWindow()});
        const QStringList cut = m_driver->cutTexts();
        expect(cut.isEmpty(), "every text fits: " + cut.join("; ").toStdString());
        if (m_closed) // and with it perhaps the folder for the pictures
            return;
        for (const auto& [name, picture] : m_pictures)
            expect(picture.save(m_folder.filePath(name)), "the picture " + name.toStdString() + " is saved");
        m_pictures.clear();
    }

    std::size_t entriesInTrash() const {
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(m_trash), fs::directory_iterator()));
    }

    platform::Disk m_disk;
    QDir m_folder;
    QSize m_size;                                 ///< of the window; invalid for its own
    QList<std::pair<QString, QImage>> m_pictures; ///< not saved yet
    std::optional<ClosedTrash> m_closed;
    fs::path m_trash;
    fs::path m_mail;
    HistoryStore m_history;
    QString m_language;
    int m_number = 0;
    QQuickWindow* m_window = nullptr;
    ScanViewModel* m_model = nullptr;
    std::optional<Driver> m_driver;
};

} // namespace

int main(int argc, char** argv) {
    const OwnSettings settings;
    QGuiApplication application(argc, argv);
    const char* root = std::getenv("LUMVALE_DISK");
    const char* home = std::getenv("LUMVALE_HOME");
    QStringList arguments = QGuiApplication::arguments().mid(1);
    QSize size;
    if (arguments.value(0) == "--size" && arguments.size() >= 3) {
        const QStringList sides = arguments[1].split('x');
        size = {sides.value(0).toInt(), sides.value(1).toInt()};
        arguments.remove(0, 2);
    }
    std::vector<AppLanguage> languages;
    for (const QString& name : arguments.mid(1)) {
        languages.push_back(appLanguage(name).value_or(AppLanguage::automatic));
        expect(languages.back() != AppLanguage::automatic, name.toStdString() + " is a language");
    }
    if (languages.empty())
        languages = {AppLanguage::en, AppLanguage::fr};
    if (arguments.isEmpty() || !root || !home)
        fail("usage: LUMVALE_DISK=… LUMVALE_HOME=… lumvale-tour [--size WIDTHxHEIGHT] FOLDER-FOR-PICTURES "
             "[LANGUAGE…]");
    const auto disk = platform::Disk::ofEnvironment();
    if (!disk)
        fail(disk.error().description);
    const QDir pictures(arguments.front());
    expect(pictures.mkpath("."), "the folder for the pictures is made");

    Tour tour(*disk, pictures, size);
    for (const AppLanguage language : languages)
        tour.run(language);
    std::printf("The pictures are in %s\n", qPrintable(pictures.absolutePath()));
}
