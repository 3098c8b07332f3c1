// Runs one operation of the core and prints its result as JSON, for scripts, benchmarks and tests.

#include "platform/files/attributes.h"
#include "tools/inspect/arguments.h"
#include "tools/inspect/json_text.h"
#include "tools/inspect/operations.h"

#include <algorithm>
#include <cstdio>
#include <string>

namespace {

constexpr std::string_view reallyFlag = "--really";

/// Refuses an argument with "\udcXX" if an entry has that literal name: it could mean either of two entries.
void refuseAmbiguous(const platform::Disk& disk, const std::string& asWritten, const std::string& asRead) {
    if (asWritten != asRead && platform::attributesOf(disk, asWritten))
        throw inspect::WrongUsage{"this can mean more than one entry: " + asWritten};
}

inspect::Json run(int argumentCount, char** arguments) {
    const inspect::Operation* operation = argumentCount < 2 ? nullptr : inspect::operation(arguments[1]);
    if (operation == nullptr)
        throw inspect::WrongUsage{argumentCount < 2 ? "usage: lumvale-inspect OPERATION [ARGUMENT...]"
                                                    : std::string("no such operation: ") + arguments[1]};
    inspect::Request request;
    for (int i = 2; i < argumentCount; ++i)
        request.arguments.push_back(inspect::bytesOf(arguments[i]));
    const bool flagCame = !request.arguments.empty() && request.arguments.back() == reallyFlag;
    if (operation->disk == inspect::DiskUse::changes && flagCame) {
        request.really = true;
        request.arguments.pop_back();
    }
    if (request.arguments.size() < operation->minArguments
        || request.arguments.size() > operation->maxArguments)
        throw inspect::WrongUsage{"usage: lumvale-inspect " + std::string(operation->name) + " "
                                  + std::string(operation->parameters)};
    if (operation->disk != inspect::DiskUse::none)
        request.opened = inspect::diskOfEnvironment();
    if (operation->disk == inspect::DiskUse::changes) {
        for (std::size_t i = 0; i < request.arguments.size(); ++i)
            refuseAmbiguous(*request.opened, arguments[i + 2], request.arguments[i]);
    }
    return operation->run(request);
}

} // namespace

int main(int argumentCount, char** arguments) {
    try {
        const std::string text = inspect::jsonText(run(argumentCount, arguments)) + "\n";
        const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
        return written && std::fflush(stdout) == 0 ? 0 : 1;
    } catch (const inspect::WrongUsage& wrong) {
        std::string line = wrong.message;
        std::replace(line.begin(), line.end(), '\n', ' ');
        std::fprintf(stderr, "%s\n", line.c_str());
        return 2;
    }
}
