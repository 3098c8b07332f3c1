#include "tools/sample_disk/sample_disk.h"

#include <charconv>
#include <cstdio>
#include <cstring>
#include <optional>

namespace {

struct Request {
    std::string folder;
    SampleDisk::Options options;
};

template <class Number>
bool readNumber(const char* text, Number& number) {
    const char* end = text + std::strlen(text);
    const auto [stop, error] = std::from_chars(text, end, number);
    return error == std::errc() && stop == end;
}

std::optional<Request> parse(int count, char** arguments) {
    Request request;
    for (int i = 1; i < count; ++i) {
        const std::string_view argument = arguments[i];
        if (argument == "--entries" || argument == "--seed") {
            if (++i == count)
                return std::nullopt;
            const bool read = argument == "--seed" ? readNumber(arguments[i], request.options.seed)
                                                   : readNumber(arguments[i], request.options.entries);
            if (!read)
                return std::nullopt;
        } else if (argument.starts_with("--") || !request.folder.empty()) {
            return std::nullopt;
        } else {
            request.folder = argument;
        }
    }
    return request.folder.empty() ? std::nullopt : std::optional(request);
}

} // namespace

int main(int count, char** arguments) {
    const std::optional<Request> request = parse(count, arguments);
    if (!request) {
        std::fprintf(stderr, "usage: lumvale-sample-disk FOLDER [--entries N] [--seed S]\n");
        return 2;
    }
    const SampleDisk::Outcome outcome = SampleDisk::build(request->folder, request->options);
    switch (outcome.kind) {
    case SampleDisk::Outcome::Kind::made:
        std::printf("%zu entries\n", outcome.entryCount);
        return 0;
    case SampleDisk::Outcome::Kind::refused:
        std::fprintf(stderr, "%s\n", outcome.message.c_str());
        return 2;
    case SampleDisk::Outcome::Kind::failed:
        std::fprintf(stderr, "%s\n", outcome.message.c_str());
        return 1;
    }
    return 1;
}
