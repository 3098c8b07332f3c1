#include "core/items/scan_item.h"

#include "platform/files/attributes.h"
#include "platform/files/path.h"
#include "platform/text/text.h"

#include <utility>

namespace core {

namespace {

struct FriendlyName {
    std::string_view component; ///< lower case
    std::string_view name;
};

/// Product names for technical folder names. Fixed, in French.
constexpr FriendlyName friendlyNames[] = {
    {"ru.keepcoder.telegram", "Telegram"},
    {"google", "Google (Chrome)"},
    {"com.google.chrome", "Google Chrome"},
    {"geoservices", "Cartes et localisation (Apple)"},
    {"com.apple.helpd", "Aide de macOS"},
    {"com.apple.parsecd", "Suggestions Siri et Spotlight"},
    {"com.apple.icloudmailagent", "Mail iCloud"},
    {"com.apple.cloudtelemetry", "Statistiques iCloud"},
    {"com.apple.passd", "Wallet et Apple Pay"},
    {"com.apple.safari", "Safari"},
    {"com.spotify.client", "Spotify"},
    {"com.microsoft.vscode", "Visual Studio Code"},
    {"whatsapp", "WhatsApp"},
};

/// Returns whether losing a cache is costly: caches of the system, pending updates, slow downloads.
bool isCostlyCache(std::string_view lowerCaseName) {
    const auto contains = [&](std::string_view part) {
        return lowerCaseName.find(part) != std::string_view::npos;
    };
    return lowerCaseName.starts_with("com.apple.") || lowerCaseName.ends_with(".shipit")
           || contains("updater") || lowerCaseName == "passkit" || lowerCaseName == "animoji"
           || contains("swiftpm") || contains("claudefordesktop") || contains("geoservices");
}

} // namespace

ScanItem::ScanItem(std::string itemPath, std::int64_t size, ScanCategory itemCategory,
                   std::string_view explanationKey, bool requestedTick,
                   std::optional<platform::Date> modified)
    : id(itemPath),
      path(std::move(itemPath)),
      name(friendlyName(platform::lastComponent(path))),
      sizeBytes(size),
      category(itemCategory),
      explanation(explanationKey),
      safeByDefault(requestedTick
                    && !(category == ScanCategory::cache
                         && isCostlyCache(platform::lowercased(platform::lastComponent(path))))),
      modifiedDate(modified) {}

std::string ScanItem::friendlyName(std::string_view component) {
    const std::string lowerCase = platform::lowercased(component);
    for (const FriendlyName& friendly : friendlyNames) {
        if (friendly.component == lowerCase)
            return std::string(friendly.name);
    }
    return std::string(component);
}

std::optional<platform::Date> fileModifiedDate(const platform::Disk& disk, std::string_view path) {
    const std::optional<platform::Attributes> attributes = platform::attributesOf(disk, path);
    return attributes ? std::optional(attributes->modified) : std::nullopt;
}

} // namespace core
