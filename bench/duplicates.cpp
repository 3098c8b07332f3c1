#include "app/execution/qt_executor.h"
#include "app/history/history_store.h"
#include "app/models/duplicate_photos_view_model.h"
#include "bench/measures.h"
#include "tests/support/photo_catalogue.h"
#include "tests/support/temporary_disk.h"
#include "ui/shell/lumvale_window.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QQuickItem>
#include <QTemporaryDir>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <utility>

// Measures the duplicates screen with thousands of groups and real picture files: the time until the first
// rows and their pictures are shown; while it scrolls, wall and CPU time of the frames compared with those of
// an empty window, the number of requested pictures, and the resident memory.

namespace {

constexpr int groupCount = 5'000;
constexpr int itemsOfGroup = 3;
constexpr int pictureCount = 64; ///< distinct pictures; the other files are hard links to them
constexpr int rounds = 7;

[[noreturn]] void fail(const char* what) {
    std::fprintf(stderr, "bench-duplicates: %s\n", what);
    std::exit(EXIT_FAILURE);
}

/// Returns a picture as large as a library's small renditions, with as much detail as a photo of leaves.
QImage picture(int number) {
    QImage image(1024, 768, QImage::Format_RGB32);
    std::minstd_rand chance(static_cast<unsigned>(number) + 1);
    image.fill(QColor::fromHsv(number * 5 % 360, 120, 140));
    QPainter painter(&image);
    painter.setPen(Qt::NoPen);
    const auto upTo = [&chance](int most) {
        return static_cast<int>(chance() % static_cast<unsigned>(most));
    };
    for (int leaf = 0; leaf < 4'000; ++leaf) {
        painter.setBrush(QColor::fromHsv(upTo(360), 80 + upTo(120), 60 + upTo(180)));
        painter.drawEllipse(upTo(1024), upTo(768), 4 + upTo(40), 4 + upTo(24));
    }
    return image;
}

void fillLibrary(const TemporaryDisk& disk) {
    namespace fs = std::filesystem;
    const fs::path renditions = disk.host(std::string(CatalogueWriter::folder) + "/resources/derivatives");
    constexpr std::string_view digits = "0123456789ABCDEF"; // a folder for each
    for (const char digit : digits)
        fs::create_directories(renditions / std::string(1, digit));
    const fs::path pictures = disk.host("~/pictures");
    fs::create_directories(pictures);
    for (int i = 0; i < pictureCount; ++i)
        if (!picture(i).save(QString::fromStdString(pictures / (std::to_string(i) + ".jpeg")), nullptr, 85))
            fail("no picture could be made");
    CatalogueWriter catalogue(disk);
    catalogue.run("BEGIN");
    for (int group = 0; group < groupCount; ++group)
        for (int item = 0; item < itemsOfGroup; ++item) {
            const char digit = digits[static_cast<std::size_t>(group) % digits.size()];
            const std::string uuid = digit + std::to_string(group) + "-" + std::to_string(item);
            catalogue.add({.uuid = uuid,
                           .size = std::to_string(9'000'000 - 1'000 * group),
                           .name = "'IMG_" + std::to_string(group) + ".HEIC'"});
            fs::create_hard_link(pictures / (std::to_string(group % pictureCount) + ".jpeg"),
                                 renditions / std::string(1, digit) / (uuid + "_1_105_c.jpeg"));
        }
    catalogue.run("COMMIT");
}

class Screen {
public:
    Screen(const platform::Disk& disk, HistoryStore& history)
        : m_lumvale(disk, history, executor(), {disk, {authorized, authorized}}) {
        click("tab_duplicates");
        runUntilFrame(window(), [this] { return model() != nullptr; });
    }

    QQuickWindow& window() const { return *m_lumvale.window(); }

    /// Returns the cost from the model's result to the frame with the first rows, and to the frame with their
    /// pictures.
    std::pair<Cost, Cost> firstRows() {
        m_isSearching = true;
        model()->scan();
        runUntilFrame(window(), [this] { return model()->hasScanned() && !model()->isLoading(); });
        if (list()->property("count").toInt() != groupCount || !list()->isVisible()
            || count("thumbnail") == 0)
            fail("the list is not what was found");
        const Cost rows = sinceResult();
        runUntilFrame(window(), [this] { return count("placeholder") == 0; });
        return {rows, sinceResult()};
    }

    struct Scroll {
        Frames frames;
        double loading; ///< of the processor, for the pictures of a frame; milliseconds on average
        int asked;
        int tiles; ///< at the end
    };

    /// Scrolls by `points` in each of `frames` frames.
    Scroll scroll(int frames, double points) {
        const int askedBefore = m_jobs;
        const std::int64_t loadingBefore = m_loading;
        QQuickItem* const moved = list();
        const Frames measured = framesWhile(window(), frames, [moved, points] {
            moved->setProperty("contentY", moved->property("contentY").toDouble() + points);
        });
        return {measured, static_cast<double>(m_loading - loadingBefore) / 1e3 / frames, m_jobs - askedBefore,
                count("photoTile")};
    }

    void toTop() {
        QMetaObject::invokeMethod(list(), "positionViewAtBeginning");
        runUntilFrame(window(), [this] { return count("placeholder") == 0; });
    }

private:
    static platform::PhotoAuthorization authorized(const platform::Disk&) {
        return platform::PhotoAuthorization::authorized;
    }

    DuplicatePhotosViewModel* model() const { return window().findChild<DuplicatePhotosViewModel*>(); }
    QQuickItem* list() const {
        QQuickItem* found = nullptr;
        forEachVisible(*window().contentItem(), "groupsList",
                       [&](const QQuickItem& item) { found = const_cast<QQuickItem*>(&item); });
        return found;
    }
    int count(const char* name) const {
        int count = 0;
        forEachVisible(*window().contentItem(), name, [&](const QQuickItem&) { ++count; });
        return count;
    }
    void click(const char* name) const {
        forEachVisible(*window().contentItem(), name, [](const QQuickItem& item) {
            QMetaObject::invokeMethod(const_cast<QQuickItem*>(&item), "clicked");
        });
    }
    Cost sinceResult() const {
        return {static_cast<double>(m_sinceResult.nsecsElapsed()) / 1e6,
                processorMilliseconds() - m_processorBefore};
    }

    platform::Executor executor() {
        return {.background =
                    [this](platform::Executor::Job job) {
                        ++m_jobs;
                        qtExecutor().background([this, job = std::move(job)] {
                            const double before = threadMilliseconds();
                            job();
                            m_loading += std::llround((threadMilliseconds() - before) * 1e3);
                        });
                    },
                .interfaceThread =
                    [this](platform::Executor::Job job) {
                        qtExecutor().interfaceThread([this, job = std::move(job)] {
                            // During the search this is the only job.
                            if (std::exchange(m_isSearching, false)) {
                                m_sinceResult.start();
                                m_processorBefore = processorMilliseconds();
                            }
                            job();
                        });
                    }};
    }

    std::atomic<int> m_jobs = 0;             ///< in the background: while it scrolls each is a picture
    std::atomic<std::int64_t> m_loading = 0; ///< microseconds of the processor that they took
    bool m_isSearching = false;
    QElapsedTimer m_sinceResult;
    double m_processorBefore = 0;
    LumvaleWindow m_lumvale;
};

void print(const char* what, const std::vector<Cost>& costs) {
    std::vector<double> wall;
    std::vector<double> processor;
    for (const Cost& cost : costs) {
        wall.push_back(cost.wall);
        processor.push_back(cost.processor);
    }
    std::printf("| %s | %.0f | %.0f |\n", what, median(wall), median(processor));
}

/// Measures a window of the same size as the program's.
Frames framesOfEmptyWindow() {
    QQuickWindow window;
    window.resize(1040, 800);
    window.show();
    const auto draw = [&window] {
        window.update();
    };
    framesWhile(window, framesBefore, draw);
    return framesWhile(window, 600, draw);
}

/// Prints the first cells of a row of a table.
void print(const char* what, const Frames& frames) {
    std::printf("| %s |", what);
    for (const auto& times : {frames.interfaceThread, frames.wall})
        std::printf(" %.1f | %.1f | %.0f |", median(times), quantile(times, 0.95), quantile(times, 1));
    std::printf(" %.1f |", frames.processor);
}

} // namespace

int main(int argc, char** argv) {
    // Qt delays repaints where the display has no vertical synchronization; the delay would be measured.
    qputenv("QT_QPA_UPDATE_IDLE_TIME", "0");
    QGuiApplication application(argc, argv);
    QGuiApplication::setOrganizationName("Lumvale Bench");
    const QTemporaryDir settings;
    welcomeBefore(settings.path());
    const Frames empty = framesOfEmptyWindow();
    const TemporaryDisk disk;
    fillLibrary(disk);
    HistoryStore history(disk.disk());
    Screen screen(disk.disk(), history);

    std::vector<Cost> rows;
    std::vector<Cost> pictures;
    for (int round = 0; round < rounds; ++round) {
        const auto [first, whole] = screen.firstRows();
        rows.push_back(first);
        pictures.push_back(whole);
    }
    std::printf("| with %d groups of %d | wall ms | CPU ms |\n|---|---:|---:|\n", groupCount, itemsOfGroup);
    print("from the result to the frame with the first rows", rows);
    print("to the frame with their pictures", pictures);

    std::printf(
        "\n| 60 frames a second | interface thread, ms of CPU: median | 95 %% | most | "
        "until it is seen, wall ms: median | 95 %% | most | all CPU ms a frame | of it for pictures | "
        "asked for | tiles | memory MB |\n"
        "|---|---:|---:|---:|---:|---:|---:|---:|---:|---:|---:|---:|\n");
    print("an empty window", empty);
    std::printf(" | | | |\n");

    struct Way {
        const char* name;
        int frames;
        double points;
    };
    for (const Way& way : {Way{"1,000 points a second", 600, 16.7}, Way{"2,000 points a second", 600, 33.3},
                           Way{"a row a frame", 1'000, 170}}) {
        screen.toTop();
        const Screen::Scroll scroll = screen.scroll(way.frames, way.points);
        print(way.name, scroll.frames);
        std::printf(" %.1f | %d | %d | %.0f |\n", scroll.loading, scroll.asked, scroll.tiles,
                    residentMegabytes());
        std::fflush(stdout);
    }
}
