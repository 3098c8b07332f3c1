#include "core/photos/photo_grouping.h"

#include <algorithm>
#include <compare>
#include <optional>
#include <utility>

namespace core::LumvalePhotoDuplicates {

namespace {

constexpr std::int64_t noDate = -1;

/// Truncates toward zero. Clamped, since a damaged catalogue can hold dates outside the range of
/// std::int64_t.
std::int64_t wholeSeconds(double secondsSince1970) {
    constexpr double maxSeconds = 9e18;
    return static_cast<std::int64_t>(std::clamp(secondsSince1970, -maxSeconds, maxSeconds));
}

/// Real identifiers and names are shorter. The limit bounds the memory for a million assets, and lengths are
/// stored in 16 bits.
constexpr std::size_t maxTextBytes = 1024;

bool isPhotoOrVideo(const platform::PhotoResource& resource) {
    using enum platform::PhotoResourceType;
    return resource.type == photo || resource.type == video || resource.type == fullSizePhoto
           || resource.type == fullSizeVideo;
}

/// Returns the file that stands for the asset: the first photo or video, otherwise the first file; null
/// without files.
const platform::PhotoResource* chosenResource(const platform::PhotoAsset& asset) {
    const auto& resources = asset.resources;
    const auto chosen = std::find_if(resources.begin(), resources.end(), isPhotoOrVideo);
    if (chosen != resources.end())
        return &*chosen;
    return resources.empty() ? nullptr : &resources.front();
}

} // namespace

/// The values by which assets are compared.
struct PhotoGrouping::Key {
    std::int64_t sizeBytes;
    std::int64_t width;
    std::int64_t height;
    std::int64_t creationTimestamp; ///< whole seconds since 1970, or noDate
    std::int64_t mediaType;

    auto operator<=>(const Key&) const = default;

    std::uint64_t hash() const {
        std::uint64_t hash = 0;
        for (const std::int64_t value : {sizeBytes, width, height, creationTimestamp, mediaType}) {
            hash = (hash ^ static_cast<std::uint64_t>(value)) * 0x9E37'79B9'7F4A'7C15;
            hash ^= hash >> 32U;
        }
        return hash;
    }
};

std::int64_t PhotoGrouping::add(const platform::PhotoAsset& asset) {
    const platform::PhotoResource* const resource = chosenResource(asset);
    if (resource == nullptr || resource->fileSize.value_or(0) < 1)
        return 0;
    const std::string_view id = asset.localIdentifier;
    const std::string_view name = resource->originalFilename;
    if (id.size() > maxTextBytes || name.size() > maxTextBytes)
        return 0;
    m_assets.push_back({*resource->fileSize, asset.pixelWidth, asset.pixelHeight,
                        asset.creationDate ? platform::secondsSince1970(*asset.creationDate) : 0,
                        m_texts.size(), static_cast<std::uint16_t>(id.size()),
                        static_cast<std::uint16_t>(name.size()), asset.mediaType,
                        asset.creationDate.has_value(), asset.isFavorite});
    m_texts.append(id).append(name);
    return *resource->fileSize;
}

PhotoGrouping::Key PhotoGrouping::key(const Asset& asset) {
    return {asset.sizeBytes, asset.width, asset.height,
            asset.hasDate ? wholeSeconds(asset.creationDate) : noDate,
            static_cast<std::int64_t>(asset.mediaType)};
}

DuplicatePhotoItem PhotoGrouping::item(const Asset& asset) const {
    std::optional<platform::Date> date;
    if (asset.hasDate)
        date = platform::Date(platform::Date::duration(asset.creationDate));
    return {m_texts.substr(asset.texts, asset.idLength),
            m_texts.substr(asset.texts + asset.idLength, asset.nameLength),
            asset.sizeBytes,
            date,
            asset.isFavorite,
            asset.mediaType == platform::PhotoMediaType::video,
            asset.width,
            asset.height};
}

std::vector<DuplicatePhotoGroup> PhotoGrouping::groups() const {
    struct Entry {
        std::uint64_t hash;
        std::size_t position;
    };
    std::vector<Entry> entries;
    entries.reserve(m_assets.size());
    for (const Asset& asset : m_assets)
        entries.push_back({key(asset).hash(), entries.size()});
    const auto keyOf = [&](const Entry& entry) {
        return key(m_assets[entry.position]);
    };
    std::sort(entries.begin(), entries.end(), [&](const Entry& a, const Entry& b) {
        if (a.hash != b.hash)
            return a.hash < b.hash;
        const auto order = keyOf(a) <=> keyOf(b);
        return order != 0 ? order < 0 : a.position < b.position;
    });

    // Ranges of equal keys in the sorted list, in the order of the groups' first assets.
    struct Run {
        std::size_t begin;
        std::size_t end;
    };
    std::vector<Run> runs;
    for (std::size_t begin = 0; begin < entries.size();) {
        std::size_t end = begin + 1;
        while (end < entries.size() && entries[end].hash == entries[begin].hash
               && keyOf(entries[end]) == keyOf(entries[begin]))
            ++end;
        if (end - begin > 1)
            runs.push_back({begin, end});
        begin = end;
    }
    std::sort(runs.begin(), runs.end(), [&](const Run& a, const Run& b) {
        return entries[a.begin].position < entries[b.begin].position;
    });

    std::vector<DuplicatePhotoGroup> groups;
    groups.reserve(runs.size());
    for (const Run& run : runs) {
        std::vector<DuplicatePhotoItem> items;
        items.reserve(run.end - run.begin);
        for (std::size_t i = run.begin; i < run.end; ++i)
            items.push_back(item(m_assets[entries[i].position]));
        groups.emplace_back(std::move(items));
    }
    std::stable_sort(groups.begin(), groups.end(),
                     [](const DuplicatePhotoGroup& a, const DuplicatePhotoGroup& b) {
                         return a.totalWastedBytes() > b.totalWastedBytes();
                     });
    return groups;
}

} // namespace core::LumvalePhotoDuplicates
