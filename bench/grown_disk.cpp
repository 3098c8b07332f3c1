#include "tools/sample_disk/random.h"
#include "tools/sample_disk/sample_disk.h"

#include <charconv>
#include <cstdio>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

// Creates the sample disk and adds entries, distributed as on a disk in long use, up to the given number.

namespace {

using sample_disk::DiskWriter;
using sample_disk::Random;

/// The text before and after the number of a file.
struct NameForm {
    std::string_view before;
    std::string_view after;
};

struct Range {
    int low;
    int high;
};

/// The trees of folders that are added to one part of the disk.
struct Growth {
    std::string_view place;
    std::span<const std::string_view> units; ///< folders of the place that get the same number of entries
    int percent;                             ///< of all added entries
    int depth;                               ///< of the trees
    Range folders;                           ///< in each folder that is not at the bottom
    Range files;                             ///< in each folder
    NameForm folderName;
    std::span<const NameForm> fileNames;
};

constexpr std::string_view cacheUnits[] = {
    "BraveSoftware",
    "CocoaPods",
    "com.adobe.Photoshop",
    "com.apple.Music",
    "com.apple.akd",
    "com.apple.appstore",
    "com.apple.nsurlsessiond",
    "com.apple.Spotlight",
    "com.apple.iTunes",
    "com.docker.helper",
    "com.github.GitHubClient",
    "com.googlecode.iterm2",
    "com.microsoft.Word",
    "com.microsoft.Excel",
    "com.microsoft.teams",
    "com.operasoftware.Opera",
    "com.sublimetext.4",
    "com.vivaldi.Vivaldi",
    "go-build",
    "Mozilla",
    "ms-playwright",
    "node-gyp",
    "org.mozilla.firefox",
    "pnpm",
    "typescript",
    "Coursier",
    "deno",
    "electron",
    "org.inkscape.Inkscape",
    "QGIS",
    "Thunderbird",
    "Zotero",
};

constexpr std::string_view projectUnits[] = {
    "almanac/node_modules",      "beacon/node_modules",      "cartographer/node_modules",
    "delta-shop/node_modules",   "ember/node_modules",       "fjord-admin/node_modules",
    "gazette/node_modules",      "harbour-web/node_modules", "inkwell/node_modules",
    "juniper-site/node_modules", "kestrel/node_modules",     "lighthouse/node_modules",
    "meridian/node_modules",     "notebook/node_modules",    "orchard/node_modules",
    "almanac/.git/objects",      "beacon/.git/objects",      "kestrel/.git/objects",
    "meridian/.git/objects",     "orchard/.git/objects",
};

constexpr std::string_view containerUnits[] = {
    "com.apple.mail/Data/Library/Mail Downloads", "com.apple.Notes/Data/Library/Notes",
    "com.apple.Maps/Data/Library/Maps",           "com.apple.photoanalysisd/Data/Library/Caches",
    "com.apple.podcasts/Data/Documents/Episodes", "com.apple.Safari/Data/Library/WebKit",
    "com.apple.stocks/Data/Library/Caches",       "ru.keepcoder.Telegram/Data/Library/Media",
    "net.whatsapp.WhatsApp/Data/Library/Media",   "com.barebones.bbedit/Data/Library/Backups",
};

constexpr std::string_view bundleUnits[] = {
    "Blender.app/Contents/Resources/4.0/scripts", "calibre.app/Contents/Resources/Python/lib",
    "GarageBand.app/Contents/Resources/Loops",    "GIMP.app/Contents/Resources/share",
    "iMovie.app/Contents/Resources/Titles",       "LibreOffice.app/Contents/Resources/gallery",
    "VirtualBox.app/Contents/MacOS/sdk",          "Visual Studio Code.app/Contents/Resources/app/extensions",
    "Xcode.app/Contents/Developer/Platforms",
};

constexpr NameForm cacheFiles[] = {{"f_", ""},          {"", ".cache"},      {"", "_0"},   {"data-", ".db"},
                                   {"image-", ".webp"}, {"entry-", ".json"}, {".tmp-", ""}};
constexpr NameForm projectFiles[] = {
    {"index-", ".js"}, {"types-", ".d.ts"}, {"module-", ".mjs"}, {"map-", ".js.map"}, {".rc-", ".json"}};
constexpr NameForm containerFiles[] = {{"Item ", ".data"}, {"Photo ", ".jpeg"}, {"Part ", ".emlx"}};
constexpr NameForm bundleFiles[] = {{"module_", ".py"}, {"Icon ", ".png"}, {"strings-", ".strings"}};

constexpr Growth growths[] = {
    {"Users/camille/Library/Caches", cacheUnits, 38, 0, {0, 0}, {40, 260}, {"", ""}, cacheFiles},
    {"Users/camille/Documents/Developer", projectUnits, 28, 3, {0, 3}, {2, 9}, {"lib-", ""}, projectFiles},
    {"Users/camille/Library/Containers",
     containerUnits,
     14,
     2,
     {1, 4},
     {6, 40},
     {"Group ", ""},
     containerFiles},
    {"Applications", bundleUnits, 8, 2, {0, 5}, {4, 18}, {"part-", ".bundle"}, bundleFiles},
};

constexpr std::string_view crowdedFolder = "~/Documents/Mail archive/Messages/";
constexpr std::string_view deepestFolder = "~/Documents/Archive/Nested backups";
constexpr int deepestLevel = 150;

std::string nameOf(const NameForm& form, int number) {
    return std::string(form.before) + std::to_string(number) + std::string(form.after);
}

/// Returns mostly short lengths, as on a real disk, below those of files that are offered as large. Two of
/// three are 0, which costs a walk the same and is faster to make.
std::int64_t anyLength(Random& random) {
    if (!random.chance(33))
        return 0;
    return random.chance(1) ? random.between(1, 12'000) * 1'000 : random.between(200, 60'000);
}

/// Adds trees to a folder until a number of entries is reached.
class TreeWriter {
public:
    TreeWriter(DiskWriter& disk, const Growth& growth, std::size_t entries, Random& random)
        : m_disk(disk), m_growth(growth), m_left(entries), m_random(random) {}

    void fill(const std::string& folder) {
        for (int number = 1; m_left > 0; ++number)
            addTree(folder, number, 0);
    }

private:
    void addTree(const std::string& parent, int number, int depth) {
        if (!spend())
            return;
        const int ageDays = m_random.between(0, 900);
        const std::string folder = parent + '/' + nameOf(m_growth.folderName, number);
        m_disk.folder(folder, ageDays);
        const int files = m_random.between(m_growth.files.low, m_growth.files.high);
        for (int i = 1; i <= files && spend(); ++i) {
            const NameForm& form = m_growth.fileNames[m_random.next() % m_growth.fileNames.size()];
            m_disk.file(folder + '/' + nameOf(form, i), anyLength(m_random),
                        ageDays + m_random.between(0, 60));
        }
        const Range& folders = m_growth.folders;
        const int children = depth < m_growth.depth ? m_random.between(folders.low, folders.high) : 0;
        for (int i = 1; i <= children; ++i)
            addTree(folder, i, depth + 1);
    }

    bool spend() {
        if (m_left == 0)
            return false;
        --m_left;
        return true;
    }

    DiskWriter& m_disk;
    const Growth& m_growth;
    std::size_t m_left;
    Random& m_random;
};

void grow(DiskWriter& disk, std::size_t entries, Random& random) {
    const std::size_t present = disk.entryCount();
    if (entries <= present)
        return;
    const std::size_t missing = entries - present;
    for (const Growth& growth : growths) {
        const std::size_t perUnit =
            missing * static_cast<std::size_t>(growth.percent) / 100 / growth.units.size();
        for (const std::string_view unit : growth.units) {
            const std::string folder = std::string(growth.place).append("/").append(unit);
            disk.folder(folder, random.between(0, 300));
            TreeWriter(disk, growth, perUnit, random).fill(folder);
        }
    }
    if (missing > std::size_t{100} * deepestLevel) {
        std::string folder(deepestFolder);
        for (int level = 0; level < deepestLevel; ++level, folder += "/older backup")
            disk.file(folder + "/note.txt", 1'000, 1'200);
    }
    for (int number = 1; disk.entryCount() < entries; ++number)
        disk.file(std::string(crowdedFolder) + nameOf({"Message ", ".eml"}, number), anyLength(random),
                  15 + random.between(0, 2'000));
}

} // namespace

int main(int count, char** arguments) {
    std::size_t entries = 0;
    const char* const text = count == 3 ? arguments[2] : "";
    const auto [stop, error] = std::from_chars(text, text + std::strlen(text), entries);
    if (error != std::errc() || *stop != 0) {
        std::fputs("usage: bench-grown-disk FOLDER ENTRIES\n", stderr);
        return 2;
    }
    sample_disk::Options options;
    options.addMore = [&](DiskWriter& disk) {
        Random random(options.seed, "growth");
        grow(disk, entries - 1, random); // less the marker file of the sample
    };
    return sample_disk::report(sample_disk::build(arguments[1], options));
}
