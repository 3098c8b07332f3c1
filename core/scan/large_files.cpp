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

/// The home's own folders that other sources look after, or whose files are nobody's to clean one by one.
constexpr std::array<std::string_view, 3> passedOver{"Library", ".Trash", "Applications"};

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

/// Only files and links have a size: a pipe isn't large, however little is asked for.
bool isLarge(platform::EntryType type, std::int64_t sizeBytes, std::int64_t minimumBytes) {
    return (type == platform::EntryType::file || type == platform::EntryType::link)
           && sizeBytes >= minimumBytes;
}

/// Whether a depth-first walk by name comes to `a` before `b`: paths by their bytes, "/" below every other.
bool isWalkedBefore(const LargeFile& a, const LargeFile& b) {
    const auto rank = [](char c) {
        return c == '/' ? 0 : static_cast<int>(static_cast<unsigned char>(c)) + 1;
    };
    return std::lexicographical_compare(a.path.begin(), a.path.end(), b.path.begin(), b.path.end(),
                                        [&](char x, char y) { return rank(x) < rank(y); });
}

/// Collects large files out of a walk that comes to them in no order: of all that it meets it keeps the first
/// `cap` in the order of a depth-first walk, since no such walk would collect more.
class LargeFileVisitor {
public:
    LargeFileVisitor(std::int64_t minimumBytes, std::size_t cap) : m_minimumBytes(minimumBytes), m_cap(cap) {}

    platform::Descend visit(const platform::WalkEntry& entry) {
        if (entry.type == platform::EntryType::folder)
            return isProtectedPackage(entry.name) ? platform::Descend::no : platform::Descend::yes;
        if (isLarge(entry.type, entry.sizeBytes, m_minimumBytes))
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
        if (m_files.size() == m_cap) {
            if (m_cap == 0 || !isWalkedBefore(found, m_files.front()))
                return;
            std::pop_heap(m_files.begin(), m_files.end(), isWalkedBefore);
            m_files.pop_back();
        }
        m_files.push_back(std::move(found));
        std::push_heap(m_files.begin(), m_files.end(), isWalkedBefore);
    }

    std::int64_t m_minimumBytes;
    std::size_t m_cap;
    std::vector<LargeFile> m_files; ///< a heap, the last one in walk order in front
};

} // namespace

bool isProtectedPackage(std::string_view name) {
    const std::string_view extension = platform::extension(name);
    return !extension.empty()
           && std::find(packageExtensions.begin(), packageExtensions.end(), platform::lowercased(extension))
                  != packageExtensions.end();
}

std::vector<ScanItem> scanLargeFiles(const platform::Disk& disk, const std::string& root,
                                     std::int64_t minimumBytes, std::size_t maxResults) {
    const platform::Result<std::vector<std::string>> names =
        platform::listFolder(disk, root, platform::Hidden::skip);
    if (!names)
        return {};
    const std::size_t cap = 4 * std::min(maxResults, std::numeric_limits<std::size_t>::max() / 4);

    std::vector<LargeFile> direct;
    std::vector<std::string> folders;
    for (const std::string& name : *names) {
        if (std::find(passedOver.begin(), passedOver.end(), name) != passedOver.end())
            continue;
        std::string path = platform::joined(root, name);
        const platform::Kind kind = platform::kindOf(disk, path);
        if (kind == platform::Kind::folder)
            folders.push_back(std::move(path));
        else if (const auto attributes = platform::attributesOf(disk, path);
                 kind == platform::Kind::file && attributes
                 && isLarge(attributes->type, attributes->sizeBytes, minimumBytes))
            direct.push_back({std::move(path), attributes->sizeBytes, attributes->modified});
    }
    std::vector<LargeFile> nested =
        platform::walk(disk, folders, platform::Hidden::skip, LargeFileVisitor(minimumBytes, cap)).files();
    std::sort(nested.begin(), nested.end(), isWalkedBefore);

    // Both in the order in which one walk would come to them. Its cap holds for what lies in folders only.
    std::vector<ScanItem> items;
    const auto add = [&](LargeFile& found) {
        items.emplace_back(std::move(found.path), found.sizeBytes, ScanCategory::largeOldFiles,
                           "exp_large_old_file", false, found.modified);
    };
    auto nextDirect = direct.begin();
    for (LargeFile& found : nested) {
        for (; nextDirect != direct.end() && isWalkedBefore(*nextDirect, found); ++nextDirect)
            add(*nextDirect);
        if (items.size() < cap)
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
