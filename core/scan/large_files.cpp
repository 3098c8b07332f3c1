#include "core/scan/large_files.h"

#include "platform/files/folder.h"
#include "platform/files/path.h"
#include "platform/text/text.h"
#include "platform/walk/walk.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <utility>

namespace core::LumvaleScanner {

namespace {

/// Folders of the root that other scan sources cover, or whose files belong to applications.
constexpr std::array<std::string_view, 3> skippedFolders{"Library", ".Trash", "Applications"};

/// Extensions of folders that the user sees as one document, whose files must not be deleted one by one.
constexpr std::array<std::string_view, 18> packageExtensions{
    "photoslibrary", "musiclibrary", "tvlibrary", "theater", "app",      "bundle",
    "framework",     "plugin",       "appex",     "pvm",     "vmwarevm", "vbox",
    "sparsebundle",  "sparseimage",  "fcpbundle", "logicx",  "band",     "imovielibrary",
};

struct LargeFile {
    std::string path;
    std::int64_t sizeBytes;
    platform::Date modified;
};

bool isProtectedPackage(std::string_view name) {
    const std::string_view extension = platform::extension(name);
    return !extension.empty()
           && std::find(packageExtensions.begin(), packageExtensions.end(), platform::lowercased(extension))
                  != packageExtensions.end();
}

/// Returns whether an entry is a file or symbolic link of at least `minBytes`. Other types have no size.
bool isLarge(platform::EntryType type, std::int64_t sizeBytes, std::int64_t minBytes) {
    return (type == platform::EntryType::file || type == platform::EntryType::link) && sizeBytes >= minBytes;
}

/// Returns whether a depth-first walk by name visits `a` before `b`: byte order, with "/" before all others.
bool isWalkedBefore(const LargeFile& a, const LargeFile& b) {
    const auto rank = [](char c) {
        return c == '/' ? 0 : static_cast<int>(static_cast<unsigned char>(c)) + 1;
    };
    return std::lexicographical_compare(a.path.begin(), a.path.end(), b.path.begin(), b.path.end(),
                                        [&](char x, char y) { return rank(x) < rank(y); });
}

/// Collects large files in a parallel walk, which visits them in no particular order. Keeps the `maxFiles`
/// that come first in a depth-first walk by name, so that the result does not depend on the threads.
class LargeFileVisitor {
public:
    LargeFileVisitor(std::int64_t minBytes, std::size_t maxFiles)
        : m_minBytes(minBytes), m_maxFiles(maxFiles) {}

    platform::Descend visit(const platform::WalkEntry& entry) {
        if (entry.type == platform::EntryType::folder)
            return isProtectedPackage(entry.name) ? platform::Descend::no : platform::Descend::yes;
        if (isLarge(entry.type, entry.sizeBytes, m_minBytes))
            keep({entry.path(), entry.sizeBytes, entry.modified});
        return platform::Descend::no;
    }

    void merge(LargeFileVisitor&& other) {
        for (LargeFile& found : other.m_files)
            keep(std::move(found));
    }

    std::vector<LargeFile> files() && { return std::move(m_files); }

private:
    void keep(LargeFile found) {
        if (m_files.size() == m_maxFiles) {
            if (m_maxFiles == 0 || !isWalkedBefore(found, m_files.front()))
                return;
            std::pop_heap(m_files.begin(), m_files.end(), isWalkedBefore);
            m_files.pop_back();
        }
        m_files.push_back(std::move(found));
        std::push_heap(m_files.begin(), m_files.end(), isWalkedBefore);
    }

    std::int64_t m_minBytes;
    std::size_t m_maxFiles;
    std::vector<LargeFile> m_files; ///< a heap whose first element is the last file in walk order
};

} // namespace

std::vector<ScanItem> scanLargeFiles(const platform::Disk& disk, const std::string& root,
                                     std::int64_t minBytes, std::size_t maxResults,
                                     platform::Progress* progress) {
    const platform::Result<std::vector<std::string>> names =
        platform::listFolder(disk, root, platform::Hidden::skip, progress);
    if (!names)
        return {};
    const std::size_t maxNested = 4 * std::min(maxResults, std::numeric_limits<std::size_t>::max() / 4);

    std::vector<LargeFile> direct;
    std::vector<std::string> folders;
    for (const std::string& name : *names) {
        if (std::find(skippedFolders.begin(), skippedFolders.end(), name) != skippedFolders.end())
            continue;
        std::string path = platform::joined(root, name);
        const platform::Kind kind = platform::kindOf(disk, path);
        if (kind == platform::Kind::folder)
            folders.push_back(std::move(path));
        else if (const auto attributes = platform::attributesOf(disk, path);
                 kind == platform::Kind::file && attributes
                 && isLarge(attributes->type, attributes->sizeBytes, minBytes))
            direct.push_back({std::move(path), attributes->sizeBytes, attributes->modified});
    }
    std::vector<LargeFile> nested =
        platform::walk(disk, folders, platform::Hidden::skip, LargeFileVisitor(minBytes, maxNested), progress)
            .files();
    std::sort(nested.begin(), nested.end(), isWalkedBefore);

    // Merged in walk order. The limit applies to files in subfolders only, but counts the direct ones before
    // them.
    std::vector<ScanItem> items;
    const auto add = [&](LargeFile& found) {
        items.emplace_back(std::move(found.path), found.sizeBytes, ScanCategory::largeOldFiles,
                           "exp_large_old_file", false, found.modified);
    };
    auto nextDirect = direct.begin();
    for (LargeFile& found : nested) {
        for (; nextDirect != direct.end() && isWalkedBefore(*nextDirect, found); ++nextDirect)
            add(*nextDirect);
        if (items.size() < maxNested)
            add(found);
    }
    for (; nextDirect != direct.end(); ++nextDirect)
        add(*nextDirect);

    std::stable_sort(items.begin(), items.end(),
                     [](const ScanItem& a, const ScanItem& b) { return a.sizeBytes > b.sizeBytes; });
    if (items.size() > maxResults)
        items.erase(items.begin() + static_cast<std::ptrdiff_t>(maxResults), items.end());
    return items;
}

} // namespace core::LumvaleScanner
