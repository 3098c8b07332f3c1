#include "app/history/history_entry.h"

#include <nlohmann/json.hpp>

#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>
#include <utility>

namespace {

constexpr double secondsFrom1970To2001 = 978'307'200;

/// Returns the shortest decimal form that converts back to the same number; with an exponent above 2^53.
/// nlohmann::json formats some numbers differently, which would change the ids and the files.
std::string shortestDecimal(double number) {
    const auto format = std::abs(number) <= 0x1p53 ? std::chars_format::fixed : std::chars_format::scientific;
    char buffer[std::numeric_limits<double>::max_exponent10 + 32];
    const auto [end, error] = std::to_chars(std::begin(buffer), std::end(buffer), number, format);
    return {buffer, end};
}

void appendQuoted(std::string& json, std::string_view text) {
    json += '"';
    for (const char c : text) {
        if (c == '"' || c == '\\') {
            json += '\\';
            json += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            json += c < 0x10 ? "\\u000" : "\\u001";
            json += "0123456789abcdef"[c % 0x10];
        } else {
            json += c;
        }
    }
    json += '"';
}

/// Reads a history file without building a document tree: deeply nested files take no memory, and parsing
/// stops at the first unexpected value.
class HistoryReader : public nlohmann::json::json_sax_t {
public:
    std::vector<HistoryEntry> entries;

    bool null() override { return isUnknownValue(); }
    bool boolean(bool) override { return isUnknownValue(); }
    bool binary(binary_t&) override { return isUnknownValue(); }

    bool number_float(double value, const std::string&) override { return takeDate(value); }
    bool number_integer(std::int64_t value) override {
        return takeSize(value) || takeDate(static_cast<double>(value));
    }
    bool number_unsigned(std::uint64_t value) override {
        return (std::in_range<std::int64_t>(value) && takeSize(static_cast<std::int64_t>(value)))
               || takeDate(static_cast<double>(value));
    }

    bool string(std::string& value) override {
        if (!isMember(name))
            return isUnknownValue();
        m_entry.name = std::move(value);
        m_found |= name;
        return true;
    }

    bool start_array(std::size_t) override { return ++m_depth == 1 || isUnknownContainer(); }
    bool end_array() override {
        --m_depth;
        return true;
    }

    bool start_object(std::size_t) override {
        if (++m_depth != 2)
            return isUnknownContainer();
        m_entry = {};
        m_member = m_found = none;
        return true;
    }
    bool end_object() override {
        if (--m_depth == 1) {
            if (m_found != (date | name | sizeBytes))
                return false;
            entries.push_back(std::move(m_entry));
        }
        return true;
    }

    bool key(std::string& value) override {
        if (m_depth == 2)
            m_member = value == "date"        ? date
                       : value == "name"      ? name
                       : value == "sizeBytes" ? sizeBytes
                                              : none;
        return true;
    }

    bool parse_error(std::size_t, const std::string&, const nlohmann::json::exception&) override {
        return false;
    }

private:
    enum Member : unsigned { none = 0, date = 1, name = 2, sizeBytes = 4 };

    bool isMember(Member member) const { return m_depth == 2 && m_member == member; }

    /// Returns whether a value belongs to an unknown member, so that any value is accepted.
    bool isUnknownValue() const { return m_depth > 2 || isMember(none); }

    /// The same for an array or object that has just begun.
    bool isUnknownContainer() const { return m_depth > 2 && m_member == none; }

    bool takeDate(double value) {
        if (!isMember(date))
            return isUnknownValue();
        m_entry.secondsSince2001 = value;
        m_found |= date;
        return true;
    }

    bool takeSize(std::int64_t value) {
        if (!isMember(sizeBytes))
            return false;
        m_entry.sizeBytes = value;
        m_found |= sizeBytes;
        return true;
    }

    std::size_t m_depth = 0;
    HistoryEntry m_entry;
    unsigned m_member = none; ///< known member whose value is next
    unsigned m_found = none;  ///< known members of the current object so far
};

} // namespace

HistoryEntry::HistoryEntry(platform::Date date, std::string entryName, std::int64_t bytes)
    : secondsSince2001(platform::secondsSince1970(date) - secondsFrom1970To2001),
      name(std::move(entryName)),
      sizeBytes(bytes) {}

platform::Date HistoryEntry::date() const {
    return platform::Date(platform::Date::duration(secondsSince2001 + secondsFrom1970To2001));
}

std::string HistoryEntry::id() const {
    return shortestDecimal(platform::secondsSince1970(date())) + '-' + name;
}

std::string encodeHistory(const std::vector<HistoryEntry>& entries) {
    std::string json = "[";
    for (const HistoryEntry& entry : entries) {
        if (json.size() > 1)
            json += ',';
        json += R"({"date":)";
        json += shortestDecimal(entry.secondsSince2001);
        json += R"(,"name":)";
        appendQuoted(json, entry.name);
        json += R"(,"sizeBytes":)";
        json += std::to_string(entry.sizeBytes);
        json += '}';
    }
    json += ']';
    return json;
}

std::optional<std::vector<HistoryEntry>> decodeHistory(std::string_view json) {
    HistoryReader reader;
    if (!nlohmann::json::sax_parse(json, &reader))
        return std::nullopt;
    return std::move(reader.entries);
}
