#include "app/update/update_description.h"

#include <nlohmann/json.hpp>

std::optional<UpdateDescription> decodeUpdateDescription(std::string_view json) {
    // nlohmann::json ends the input at a NUL.
    if (json.find('\0') != std::string_view::npos)
        return std::nullopt;
    const auto description = nlohmann::json::parse(json, nullptr, /*allow_exceptions=*/false);
    if (!description.is_object())
        return std::nullopt;
    const auto version = description.find("version");
    const auto page = description.find("page");
    if (version == description.end() || !version->is_string() || page == description.end()
        || !page->is_string())
        return std::nullopt;
    return UpdateDescription{version->get<std::string>(), page->get<std::string>()};
}
