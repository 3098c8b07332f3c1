#include "tests/support/photo_catalogue.h"
#include "tests/support/process.h"
#include "tests/support/temporary_disk.h"

#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::json;
using Texts = std::vector<std::string>;

struct Outcome {
    int status = -1;
    std::string output;
    std::string errors;

    /// The output, parsed. A lone surrogate, which no parser takes, stays the text "\udcXX".
    Json json() const {
        std::string text = output;
        constexpr std::string_view escape = "\\udc";
        for (std::size_t at = text.find(escape); at != std::string::npos; at = text.find(escape, at + 2))
            text.insert(at, 1, '\\');
        return Json::parse(text, nullptr, false);
    }
};

/// Runs the inspector on the disk whose root is this folder of the host.
Outcome inspected(const std::string& root, const Texts& arguments) {
    const TemporaryDisk outputs;
    const int status = inAnotherProcess([&] {
        setenv("LUMVALE_DISK", root.c_str(), 1);
        setenv("LUMVALE_HOME", "/Users/me", 1);
        unsetenv("LUMVALE_USER_CACHE");
        dup2(open(outputs.host("/output").c_str(), O_WRONLY | O_CREAT, 0600), STDOUT_FILENO);
        dup2(open(outputs.host("/errors").c_str(), O_WRONLY | O_CREAT, 0600), STDERR_FILENO);
        std::vector<char*> words{const_cast<char*>(LUMVALE_INSPECT)};
        for (const std::string& argument : arguments)
            words.push_back(const_cast<char*>(argument.c_str()));
        words.push_back(nullptr);
        return execv(LUMVALE_INSPECT, words.data());
    });
    return {status, outputs.read("/output"), outputs.read("/errors")};
}

Outcome inspected(const TemporaryDisk& disk, const Texts& arguments) {
    return inspected(disk.host(""), arguments);
}

class Inspect : public testing::Test {
protected:
    const TemporaryDisk m_disk;
};

TEST_F(Inspect, CarriesAnyNameThereAndBack) {
    Texts paths{"size"};
    for (const char* name : {"line\nbreak", "quo\"te", "back\\slash", "\x01\x7F", "caf\xC3\xA9", "caf\xE9",
                             "\xE2\x82", "🙂", "--really"}) {
        paths.push_back(at("~/Downloads/") + name);
        m_disk.write(paths.back(), std::string(paths.size() - 1, 'x'));
    }
    const Texts names(paths.begin() + 1, paths.end());
    // First by their bytes, then as the output spelt them.
    for (int round = 0; round < 2; ++round) {
        const Json sizes = inspected(m_disk, paths).json();
        ASSERT_EQ(sizes.size(), names.size()) << sizes;
        for (std::size_t i = 0; i < sizes.size(); ++i) {
            EXPECT_EQ(sizes[i]["sizeBytes"], i + 1) << paths[i + 1];
            paths[i + 1] = sizes[i]["path"];
        }
    }
    EXPECT_EQ(paths[6], "/Users/me/Downloads/caf\\udce9");

    const Json spelt(Texts(paths.begin() + 1, paths.end()));
    paths.front() = "delete";
    paths.push_back("--really");
    EXPECT_EQ(inspected(m_disk, paths).json(), Json({{"succeeded", spelt}, {"failed", Json::array()}}));
    for (const std::string& name : names)
        EXPECT_FALSE(m_disk.exists(name)) << name;
}

TEST_F(Inspect, ChangesNothingUnlessItIsMeant) {
    m_disk.make({"~/.Trash/old 10", "~/Downloads/a 5"});
    EXPECT_EQ(inspected(m_disk, {"delete", "/Users/me/Downloads/a", "/System"}).json(),
              Json({{"would", {"/Users/me/Downloads/a", "/System"}}}));
    EXPECT_EQ(inspected(m_disk, {"empty-trash"}).json(), Json({{"would", {"/Users/me/.Trash/old"}}}));
    EXPECT_TRUE(m_disk.exists("~/Downloads/a") && m_disk.exists("~/.Trash/old"));

    const Json deleted =
        inspected(m_disk, {"delete", "/Users/me/Downloads/a", "/System/", "--really"}).json();
    EXPECT_EQ(deleted["succeeded"], Json({"/Users/me/Downloads/a"}));
    ASSERT_EQ(deleted["failed"].size(), 1U);
    EXPECT_EQ(deleted["failed"][0]["path"], "/System/");
    EXPECT_EQ(deleted["failed"][0]["error"]["domain"], "Lumvale");
    const Json emptied = inspected(m_disk, {"empty-trash", "--really"}).json();
    EXPECT_EQ(emptied["succeeded"], 2);
    EXPECT_EQ(emptied["bytesFreed"], 15);
    EXPECT_FALSE(m_disk.exists("~/.Trash/old"));
}

TEST_F(Inspect, ChangesNothingWhereAnArgumentCanMeanTwoEntries) {
    m_disk.make({"~/\\udc80", "~/\x80"});
    EXPECT_EQ(inspected(m_disk, {"delete", "/Users/me/\\udc80", "--really"}).status, 2);
    EXPECT_TRUE(m_disk.exists("~/\\udc80") && m_disk.exists("~/\x80"));
}

TEST_F(Inspect, DisablesTheAgentOfALabel) {
    const std::string list =
        "<plist><dict><key>Label</key><string>com.example.my-tool</string></dict></plist>";
    m_disk.write("~/Library/LaunchAgents/a.plist", list);
    m_disk.write(
        "/Library/LaunchAgents/b.plist",
        "<plist><dict><key>Label</key><string>every</string><key>Disabled</key><true/></dict></plist>");
    const Json mine{{"id", "/Users/me/Library/LaunchAgents/a.plist"},
                    {"path", "/Users/me/Library/LaunchAgents/a.plist"},
                    {"label", "com.example.my-tool"},
                    {"displayName", "My Tool"},
                    {"explanation", "exp_startup_user"},
                    {"isSystemWide", false},
                    {"isAlreadyDisabled", false}};
    const Json items = inspected(m_disk, {"startup"}).json();
    ASSERT_EQ(items.size(), 2U) << items;
    EXPECT_EQ(items[1], mine);
    EXPECT_TRUE(items[0]["isSystemWide"] == true && items[0]["isAlreadyDisabled"] == true) << items;

    const auto disabled = [&](const std::string& label) {
        return inspected(m_disk, {"disable", label, "--really"}).json();
    };
    EXPECT_EQ(inspected(m_disk, {"disable", "com.example.my-tool"}).json(),
              Json({{"would", {"com.example.my-tool"}}}));
    for (const char* other : {"every", "com.example.My-Tool", "/Users/me/Library/LaunchAgents/a.plist"})
        EXPECT_EQ(disabled(other), Json({{"disabled", false}})) << other;
    EXPECT_TRUE(m_disk.exists("~/Library/LaunchAgents/a.plist"));
    EXPECT_EQ(disabled("com.example.my-tool"), Json({{"disabled", true}}));
    EXPECT_TRUE(m_disk.exists("~/.Trash/a.plist"));
}

TEST_F(Inspect, FindsDuplicatePhotosAndDeletesThemWhereItMay) {
    EXPECT_EQ(inspected(m_disk, {"duplicates"}).json(), Json::array());
    CatalogueWriter catalogue(m_disk, CatalogueWriter::Maker::lumvale);
    catalogue.add({.uuid = "B", .created = "NULL", .kind = "1", .name = "'caf' || x'e9'", .favorite = "1"});
    catalogue.add({.uuid = "A", .created = "NULL", .kind = "1"});
    const Json found = inspected(m_disk, {"duplicates"}).json();
    const Json first{{"id", "B/L0/001"},   {"filename", "caf\\udce9"}, {"sizeBytes", 1000},
                     {"creationDate", {}}, {"isFavorite", true},       {"isVideo", true}};
    ASSERT_EQ(found.size(), 1U) << found;
    EXPECT_EQ(found[0]["id"], "A/L0/001-B/L0/001");
    EXPECT_EQ(found[0]["totalWastedBytes"], 1000);
    EXPECT_EQ(found[0]["items"][0], first);

    EXPECT_EQ(inspected(m_disk, {"delete-photos", "A/L0/001"}).json(), Json({{"would", {"A/L0/001"}}}));
    EXPECT_EQ(inspected(m_disk, {"duplicates"}).json(), found);
    EXPECT_EQ(inspected(m_disk, {"delete-photos", "A/L0/001", "C/L0/001", "--really"}).json(),
              Json({{"succeeded", true}}));
    EXPECT_EQ(inspected(m_disk, {"duplicates"}).json(), Json::array());
    catalogue.run("PRAGMA application_id = 0");
    EXPECT_EQ(inspected(m_disk, {"delete-photos", "B/L0/001", "--really"}).json(),
              Json({{"succeeded", false}}));
}

TEST_F(Inspect, ShowsWhatEachOperationFinds) {
    m_disk.make({"~/Library/Caches/com.example.editor/data 1000", "~/Movies/film.mov 3000", "~/Documents/",
                 "/Applications/Foo.app/Contents/x 5"});
    m_disk.setModified("~/Library/Caches/com.example.editor",
                       platform::Date(std::chrono::duration<double>(1'700'000'000.25)));
    const Json scan = inspected(m_disk, {"scan"}).json();
    ASSERT_EQ(scan["items"].size(), 1U) << scan;
    EXPECT_EQ(scan["totalBytes"], 1000);
    EXPECT_EQ(scan["items"][0]["path"], "/Users/me/Library/Caches/com.example.editor");
    EXPECT_EQ(scan["items"][0]["modifiedDate"], 1'700'000'000.25);
    EXPECT_EQ(inspected(m_disk, {"large-files", "2000", "10"}).json()[0]["path"],
              "/Users/me/Movies/film.mov");
    EXPECT_EQ(inspected(m_disk, {"apps"}).json()[0]["name"], "Foo");
    EXPECT_GT(inspected(m_disk, {"health"}).json()["totalDiskBytes"], 0);
    for (const char* operation : {"orphans", "vms", "storage"})
        EXPECT_TRUE(inspected(m_disk, {operation}).json().is_array()) << operation;
    EXPECT_EQ(inspected(m_disk, {"access"}).json()["hasFullDiskAccess"], false);
    EXPECT_EQ(inspected(m_disk, {"allowed", "/Users/me/Documents", "/tmp/x"}).json(),
              Json({{{"path", "/Users/me/Documents"}, {"allowed", false}},
                    {{"path", "/tmp/x"}, {"allowed", true}}}));
}

TEST_F(Inspect, ShowsAndRemovesWhatBelongsToAnApplication) {
    m_disk.make({"/Applications/Foo.app/Contents/x 5", "~/Library/Caches/foo\xFF/x 30", "~/Library/Logs/foo",
                 "~/Library/Logs/other", "/private/var/folders/ab/C/foo 4"});
    const Json related = inspected(m_disk, {"related", "/Applications/Foo.app/"}).json();
    ASSERT_EQ(related.size(), 2U) << related;
    EXPECT_EQ(related[0]["path"], "/Users/me/Library/Caches/foo\\udcff");
    EXPECT_EQ(related[0]["explanation"], "exp_app_caches");
    EXPECT_EQ(related[0]["category"], "Restes d'une application");
    EXPECT_EQ(related[1]["sizeBytes"], 0);
    EXPECT_EQ(related[1]["safeByDefault"], true);
    EXPECT_EQ(inspected(m_disk, {"related", "/Applications/Safari.app"}).status, 2);

    Texts arguments{"uninstall", "/Applications/Foo.app", "/System/x", related[0]["path"]};
    const Json would = inspected(m_disk, arguments).json();
    EXPECT_EQ(would, Json({{"would", {"/System/x", related[0]["path"], "/Applications/Foo.app"}}}));
    EXPECT_TRUE(m_disk.exists("/Applications/Foo.app") && m_disk.exists("~/Library/Caches/foo\xFF"));
    arguments.push_back("--really");
    const Json uninstalled = inspected(m_disk, arguments).json();
    EXPECT_EQ(uninstalled["succeeded"], Json({related[0]["path"], "/Applications/Foo.app"}));
    EXPECT_EQ(uninstalled["failed"][0]["path"], "/System/x");
    EXPECT_TRUE(m_disk.exists("~/.Trash/Foo.app/Contents/x") && m_disk.exists("~/.Trash/foo\xFF/x"));
    EXPECT_TRUE(m_disk.exists("~/Library/Logs/foo"));
}

TEST_F(Inspect, AnswersAboutTextWithoutADisk) {
    const std::string nowhere = m_disk.host("/nowhere");
    EXPECT_EQ(inspected(nowhere, {"format-bytes", "en_US", "0", "-1"}).json(), Json({"Zero KB", "-1 byte"}));
    EXPECT_EQ(inspected(nowhere, {"format-date", "en_US", "-1e0"}).json(), Json({"Dec 31, 1969"}));
    EXPECT_EQ(inspected(nowhere, {"sort", "fr", "É", "b"}).json(), Json({"b", "É"}));
    EXPECT_EQ(inspected(nowhere, {"capitalize", "o'neil", "3rd way"}).json(), Json({"O'neil", "3Rd Way"}));
    EXPECT_EQ(inspected(nowhere, {"path", "/a//b.app/"}).json()[0]["standardized"], "/a/b.app");
    m_disk.write("~/bad.plist", "junk");
    EXPECT_EQ(inspected(nowhere, {"plist", m_disk.host("~/bad.plist")}).json()[0]["error"]["code"], 3840);
}

TEST_F(Inspect, LaysOutATreemapWithoutADisk) {
    const std::string nowhere = m_disk.host("/nowhere");
    EXPECT_EQ(inspected(nowhere, {"treemap", "40", "10", "1", "2e0", "1"}).json(),
              Json({{{"id", 1}, {"x", 0.0}, {"y", 0.0}, {"width", 20.0}, {"height", 10.0}},
                    {{"id", 0}, {"x", 20.0}, {"y", 0.0}, {"width", 10.0}, {"height", 10.0}},
                    {{"id", 2}, {"x", 30.0}, {"y", 0.0}, {"width", 10.0}, {"height", 10.0}}}));
    EXPECT_EQ(inspected(nowhere, {"treemap", "40", "0.5", "1"}).json(), Json::array());
    EXPECT_EQ(inspected(nowhere, {"treemap", "40", "10"}).json(), Json::array());
}

TEST_F(Inspect, TranslatesWhereTheProgramIsBuilt) {
    const Outcome french = inspected(m_disk, {"tr", "fr", "cat_logs", "no_such_key"});
#ifdef LUMVALE_INSPECT_TRANSLATES
    EXPECT_EQ(french.json(), Json({"Journaux d'applications", "no_such_key"}));
    EXPECT_EQ(inspected(m_disk, {"tr", "en", "cat_logs"}).json(), Json({"App logs"}));
    EXPECT_EQ(inspected(m_disk, {"tr", "xx", "cat_logs"}).status, 2);
#else
    EXPECT_EQ(french.status, 2);
#endif
}

TEST_F(Inspect, SaysWhenItIsCalledInTheWrongWay) {
    const Texts wrong[] = {{},
                           {"no-such-operation"},
                           {"scan", "--really"},
                           {"delete", "--really"},
                           {"uninstall", "--really"},
                           {"related"},
                           {"empty-trash", "/Users/me/.Trash/a", "--really"},
                           {"disable", "--really"},
                           {"delete-photos", "--really"},
                           {"disable", "one", "two"},
                           {"large-files", "1"},
                           {"large-files", "1e6", "1"},
                           {"format-bytes", "en_US", "9223372036854775808"},
                           {"format-date", "en_US", "nan"},
                           {"treemap", "40"},
                           {"treemap", "40", "wide", "1"},
                           {"treemap", "40", "10", "1", ""},
                           {"treemap", "40", "10", "inf"}};
    const auto expectOneLine = [](const Outcome& outcome) {
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(outcome.errors.find('\n'), outcome.errors.size() - 1) << outcome.errors;
    };
    for (const Texts& arguments : wrong) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        expectOneLine(inspected(m_disk, arguments));
    }
    expectOneLine(inspected(m_disk.host("/no\nwhere"), {"scan"}));
}

} // namespace
