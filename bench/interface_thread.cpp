#include "app/execution/qt_executor.h"
#include "app/history/history_store.h"
#include "app/models/scan_view_model.h"
#include "bench/measures.h"
#include "tests/support/temporary_disk.h"
#include "ui/shell/lumvale_window.h"

#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <map>
#include <string>
#include <thread>
#include <vector>

// Measures what the interface thread does for long lists and long removals, in the program's window: the CPU
// time of its most expensive event, drawing apart, and how long a click would have waited.

namespace {

constexpr int rounds = 3;

/// Measures the events that are not drawing.
class Application : public QGuiApplication {
public:
    using QGuiApplication::QGuiApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        if (m_isInEvent || isDrawing(*receiver, *event))
            return QGuiApplication::notify(receiver, event);
        m_isInEvent = true;
        const double before = threadMilliseconds();
        const bool isHandled = QGuiApplication::notify(receiver, event);
        m_most = std::max(m_most, threadMilliseconds() - before);
        m_isInEvent = false;
        return isHandled;
    }

    /// Returns the CPU time of the most expensive event since the last call.
    double takeMost() { return std::exchange(m_most, 0); }

private:
    /// A window without vertical synchronization is drawn by a timer.
    static bool isDrawing(const QObject& receiver, const QEvent& event) {
        return event.type() == QEvent::UpdateRequest
               || (event.type() == QEvent::Timer && receiver.isWindowType());
    }

    bool m_isInEvent = false;
    double m_most = 0;
};

/// Posts an event every few milliseconds, as clicks arrive, and measures how long it waits.
class Clicks {
public:
    Clicks()
        : m_thread([this] {
              while (!m_isDone) {
                  const auto posted = std::chrono::steady_clock::now();
                  QMetaObject::invokeMethod(
                      qGuiApp, [this, posted] { m_most = std::max(m_most, millisecondsSince(posted)); },
                      Qt::QueuedConnection);
                  std::this_thread::sleep_for(std::chrono::milliseconds(5));
              }
          }) {}
    ~Clicks() {
        m_isDone = true;
        m_thread.join();
        QCoreApplication::sendPostedEvents(qGuiApp); // they refer to this
    }
    Clicks(const Clicks&) = delete;
    Clicks& operator=(const Clicks&) = delete;

    double most() const { return m_most; }

private:
    std::atomic<bool> m_isDone = false;
    double m_most = 0;
    std::thread m_thread;
};

class Screen {
public:
    explicit Screen(const TemporaryDisk& disk)
        : m_history(disk.disk()),
          m_lumvale(disk.disk(), m_history, qtExecutor(), disk.disk()),
          m_model(*m_lumvale.window()->findChild<ScanViewModel*>()) {}

    ScanViewModel& model() { return m_model; }

    /// Runs a step of the user and what follows, until the tasks have ended and a frame was drawn.
    void measure(const std::string& step, const std::function<void()>& action) {
        static_cast<Application*>(qGuiApp)->takeMost();
        const Clicks clicks;
        QMetaObject::invokeMethod(qGuiApp, action, Qt::QueuedConnection);
        QMetaObject::invokeMethod(m_lumvale.window(), "update", Qt::QueuedConnection);
        runUntilFrame(*m_lumvale.window(),
                      [this] { return !m_model.isScanning() && !m_model.removalTask()->isRunning(); });
        Figures& figures = m_figures[step];
        if (figures.events.empty())
            m_steps.push_back(step);
        figures.events.push_back(static_cast<Application*>(qGuiApp)->takeMost());
        figures.clicks.push_back(clicks.most());
    }

    void print(const std::string& content) const {
        for (const std::string& step : m_steps) {
            const auto& [events, clicks] = m_figures.at(step);
            std::printf("| %s | %s | %.1f | %.1f | %.1f | %.1f |\n", content.c_str(), step.c_str(),
                        median(events), quantile(events, 1), median(clicks), quantile(clicks, 1));
        }
        std::fflush(stdout);
    }

private:
    struct Figures {
        std::vector<double> events;
        std::vector<double> clicks;
    };

    HistoryStore m_history;
    LumvaleWindow m_lumvale;
    ScanViewModel& m_model;
    std::vector<std::string> m_steps;
    std::map<std::string, Figures> m_figures;
};

void makeFiles(const TemporaryDisk& disk, const std::string& folder, int count, bool inFoldersOfTheirOwn) {
    const std::filesystem::path all = disk.host(folder);
    std::filesystem::create_directories(all);
    for (int i = 0; i < count; ++i) {
        const std::filesystem::path entry = all / std::to_string(i);
        if (inFoldersOfTheirOwn)
            std::filesystem::create_directory(entry);
        std::ofstream(inFoldersOfTheirOwn ? entry / "file" : entry).put('x');
    }
}

/// Clicks on Cancel once the bar of the removal moves.
void cancelLater(ScanViewModel& model) {
    auto* const timer = new QTimer(&model);
    QObject::connect(timer, &QTimer::timeout, timer, [&model, timer] {
        if (model.removalTask()->isRunning() && model.removalTask()->share() <= 0)
            return;
        model.removalTask()->stop();
        timer->deleteLater();
    });
    timer->start(5);
}

/// A way to place the files, with the steps that are measured.
struct Content {
    const char* name;
    const char* folder;
    const char* category;
    bool inFoldersOfTheirOwn = false;
    int divisor = 1;       ///< of the number of files
    bool isEmptied = true; ///< the Trash is emptied; otherwise, what is ticked is deleted and put back
};

constexpr Content contents[] = {
    {"one folder in the Trash", "~/.Trash/folder", "cat_trash"},
    {"a folder in the Trash with a folder for each", "~/.Trash/folder", "cat_trash", true},
    {"each an entry of the Trash", "~/.Trash", "cat_trash"},
    {"each a temporary file", "~/Library/Caches", "cat_cache", false, 10, false},
};

void measure(const Content& content, int count) {
    const TemporaryDisk disk(TemporaryDisk::Where::inMemory);
    Screen screen(disk);
    ScanViewModel& model = screen.model();
    for (int round = 0; round < rounds; ++round) {
        makeFiles(disk, content.folder, count / content.divisor, content.inFoldersOfTheirOwn);
        const auto toggle = [&] {
            model.items()->toggleSection(QString::fromUtf8(content.category));
        };
        screen.measure("scan", [&] { model.runScan(); });
        screen.measure("untick the category", toggle);
        screen.measure("tick the category", toggle);
        if (content.isEmptied) {
            screen.measure("empty the Trash, Cancel", [&] {
                model.confirmEmptyTrash();
                cancelLater(model);
            });
            screen.measure("empty the Trash", [&] { model.confirmEmptyTrash(); });
        } else {
            screen.measure("ask before the deletion", [&] { model.requestDelete(); });
            screen.measure("delete", [&] { model.confirmDelete(); });
            screen.measure("put back", [&] { model.putBackModel()->start(); });
        }
    }
    screen.print(std::to_string(count / content.divisor) + " files, " + content.name);
}

} // namespace

int main(int argc, char** argv) {
    int count = 0;
    if (argc == 2)
        std::from_chars(argv[1], argv[1] + std::strlen(argv[1]), count);
    if (count == 0) {
        std::fputs("usage: bench-interface-thread FILES\n", stderr);
        return 2;
    }
    Application application(argc, argv);
    QGuiApplication::setOrganizationName("Lumvale Bench");
    const QTemporaryDir settings;
    welcomeBefore(settings.path());
    std::puts("| files | step | CPU ms of the longest event: median | most | ms until a click is answered: "
              "median | most |\n|---|---|---:|---:|---:|---:|");
    for (const Content& content : contents)
        measure(content, count);
}
