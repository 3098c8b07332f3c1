#include "tests/support/photo_catalogue.h"
#include "tests/support/temporary_disk.h"

#include <cstdio>
#include <sstream>

#include <sys/wait.h>

#include <gtest/gtest.h>

namespace {

// Arguments as a shell takes them => exit status and the beginning of the output, line breaks as spaces.
const char* const cases =
    R"(scan => 0 {"items": [{"id": "/Users/me/Library/Caches/foo\udcff", "path": "/Users/me/Library/Caches/foo\udcff", "name": "foo\udcff", "sizeBytes": 1000, "category": "Fichiers temporaires", "explanation": "exp_cache", "safeByDefault": true, "modifiedDate": 1700000000.25}, {
large-files 2000 9 => 0 [{"id": "/Users/me/Movies/film.mov",
apps => 0 [{"id": "/Applications/Foo.app", "name": "Foo", "bundleIdentifier": null, "path": "/Applications/Foo.app", "sizeBytes": 5}]
related /Applications/Foo.app/ => 0 [{"id": "/Users/me/Library/Caches/foo\udcff",
orphans => 0 []
vms => 0 []
startup => 0 [{"id": "/Users/me/Library/LaunchAgents/a.plist", "path": "/Users/me/Library/LaunchAgents/a.plist", "label": "com.example.my-tool", "displayName": "My Tool", "explanation": "exp_startup_user", "isSystemWide": false, "isAlreadyDisabled": false}]
duplicates => 0 [{"id": "A/L0/001-B/L0/001", "items": [{"id": "B/L0/001", "filename": "caf\udce9", "sizeBytes": 1000, "creationDate": null, "isFavorite": true, "isVideo": true}, {
health => 0 {"score":
storage => 0 [{"id": "/Users/me/
access => 0 {"hasFullDiskAccess": false}
allowed /Users/me/Documents /tmp/x => 0 [{"path": "/Users/me/Documents", "allowed": false}, {"path": "/tmp/x", "allowed": true}]
size '/Users/me/Downloads/"\udce9\' => 0 [{"path": "/Users/me/Downloads/\"\udce9\\", "sizeBytes": 7}]
delete /x => 0 {"would": ["/x"]}
delete /Users/me/Movies/film.mov /System --really => 0 {"succeeded": ["/Users/me/Movies/film.mov"], "failed": [{"path": "/System", "error": {"domain": "Lumvale", "code": 1,
delete '/Users/me/\udc80' --really => 2 this can mean more than one entry:
uninstall /Applications/Foo.app /x => 0 {"would": ["/x", "/Applications/Foo.app"]}
uninstall /Applications/Foo.app --really => 0 {"succeeded": ["/Applications/Foo.app"], "failed": []}
disable com.example.my-tool --really => 0 {"disabled": true}
delete-photos A/L0/001 --really => 0 {"succeeded": true}
empty-trash => 0 {"would": ["/Users/me/.Trash/Foo.app",
empty-trash --really => 0 {"succeeded": 4, "failed": 0, "bytesFreed":
format-bytes en_US 0 -1 => 0 ["Zero KB", "-1 byte"]
format-date en_US -1e0 => 0 ["Dec 31, 1969"]
sort fr É b => 0 ["b", "É"]
capitalize o.neil => 0 ["O.neil"]
path /a//b.app/ => 0 [{"extension": "app", "stem": "b", "lastComponent": "b.app", "standardized": "/a/b.app"}]
plist /dev/null => 0 [{"error": {"domain": "NSCocoaErrorDomain",
treemap 40 10 1 3e0 => 0 [{"id": 1, "x": 0.0, "y": 0.0, "width": 30.0, "height": 10.0}, {"id": 0,
no-such-operation => 2 no such operation: no-such-operation
delete --really => 2 usage: lumvale-inspect delete PATH... [--really]
)"
#ifdef LUMVALE_INSPECT_APP
    R"(tr fr cat_logs no_such_key => 0 ["Journaux d'applications", "no_such_key"]
newer 1.10 1.9 => 0 {"newer": true}
acceptable-page lumvale.example http://x => 0 [{"url": "http://x", "acceptable": false}]
)"
#endif
    ;

} // namespace

TEST(Inspect, RunsEveryOperationAndChangesTheDiskOnlyIfItIsReallyMeant) {
    const TemporaryDisk disk;
    disk.make({"~/Library/Caches/foo\xFF/data 1000", "~/Movies/film.mov 3000", "/Applications/Foo.app/x 5",
               "~/Downloads/\"\xE9\\ 7", "~/\\udc80", "~/\x80", "~/.Trash/old 10"});
    disk.setModified("~/Library/Caches/foo\xFF",
                     platform::Date(std::chrono::duration<double>(1'700'000'000.25)));
    disk.write("~/Library/LaunchAgents/a.plist",
               "<plist><dict><key>Label</key><string>com.example.my-tool</string></dict></plist>");
    CatalogueWriter catalogue(disk, CatalogueWriter::Maker::lumvale);
    catalogue.add({.uuid = "B", .created = "NULL", .kind = "1", .name = "'caf' || x'e9'", .favorite = "1"});
    catalogue.add({.uuid = "A", .created = "NULL", .kind = "1"});
    std::istringstream lines(cases);
    for (std::string line; std::getline(lines, line);) {
        const std::string arguments = line.substr(0, line.find(" => "));
        const std::string expected = line.substr(arguments.size() + 4);
        const std::string command = "env -u LUMVALE_USER_CACHE LUMVALE_HOME=/Users/me LUMVALE_DISK='"
                                    + disk.host("") + "' '" LUMVALE_INSPECT "' " + arguments + " 2>&1";
        const auto before = disk.entries();
        std::FILE* pipe = popen(command.c_str(), "r");
        std::string output;
        for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe))
            output += c == '\n' ? ' ' : static_cast<char>(c);
        const int status = pclose(pipe);
        output.insert(0, std::to_string(WEXITSTATUS(status)) + " ");
        EXPECT_EQ(output.substr(0, expected.size()), expected) << arguments;
        EXPECT_TRUE(disk.entries() == before || line.find("--really") < arguments.size()) << arguments;
    }
}
