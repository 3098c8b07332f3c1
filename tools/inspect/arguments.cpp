#include "tools/inspect/arguments.h"

#include <charconv>
#include <cmath>
#include <locale>
#include <sstream>
#include <system_error>
#include <utility>

namespace inspect {

namespace {

template <class Number>
Number number(const std::string& argument) {
    Number value{};
    const char* end = argument.data() + argument.size();
    const auto [rest, error] = std::from_chars(argument.data(), end, value);
    if (error != std::errc{} || rest != end)
        throw WrongUsage{"no number, or too large a one: " + argument};
    return value;
}

} // namespace

platform::Disk diskOfEnvironment() {
    platform::Result<platform::Disk> disk = platform::Disk::ofEnvironment();
    if (!disk)
        throw WrongUsage{disk.error().description};
    return std::move(*disk);
}

std::string bytesOf(std::string_view text) {
    constexpr std::string_view escape = "\\udc";
    constexpr std::size_t digits = 2;
    std::string bytes;
    while (!text.empty()) {
        unsigned byte = 0;
        const std::string_view written =
            text.starts_with(escape) ? text.substr(escape.size(), digits) : std::string_view{};
        const auto [end, error] = std::from_chars(written.data(), written.data() + written.size(), byte, 16);
        if (written.size() == digits && error == std::errc{} && end == written.data() + digits
            && byte >= 0x80) {
            bytes += static_cast<char>(byte);
            text.remove_prefix(escape.size() + digits);
        } else {
            bytes += text.front();
            text.remove_prefix(1);
        }
    }
    return bytes;
}

std::int64_t integer(const std::string& argument) {
    return number<std::int64_t>(argument);
}

std::uint64_t count(const std::string& argument) {
    return number<std::uint64_t>(argument);
}

double real(const std::string& argument) {
    // Apple's library lacks std::from_chars() for floating point.
    std::istringstream stream(argument);
    stream.imbue(std::locale::classic());
    double value = 0;
    if (!(stream >> std::noskipws >> value) || !stream.eof() || !std::isfinite(value))
        throw WrongUsage{"no finite number: " + argument};
    return value;
}

} // namespace inspect
