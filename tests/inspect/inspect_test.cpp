#include "tests/support/photo_catalogue.h"
#include "tests/support/process.h"
#include "tests/support/temporary_disk.h"

#include <cstdlib>
#include <iterator>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::json;
using nlohmann::operator""_json;
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

const std::string agent = "<plist><dict><key>Label</key><string>com.example.my-tool</string></dict></plist>";

class Inspect : public testing::Test {
protected:
    Outcome outcome(const Texts& arguments) const { return inspected(m_disk.host(""), arguments); }
    Json json(const Texts& arguments) const { return outcome(arguments).json(); }

    Json really(Texts arguments) const {
        arguments.push_back("--really");
        return json(arguments);
    }

    /// What the operation says it would do; nothing on the disk changes by its saying so.
    Json would(const Texts& arguments) const {
        const auto before = m_disk.entries();
        const Json said = json(arguments);
        EXPECT_EQ(m_disk.entries(), before) << said;
        return said.value("would", Json());
    }

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
        const Json sizes = json(paths);
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
    EXPECT_EQ(json(paths), Json({{"succeeded", spelt}, {"failed", Json::array()}}));
    for (const std::string& name : names)
        EXPECT_FALSE(m_disk.exists(name)) << name;
}

TEST_F(Inspect, ShowsWhatEachOperationFinds) {
    m_disk.make({"~/Library/Caches/foo\xFF/data 1000", "~/Movies/film.mov 3000",
                 "/Applications/Foo.app/Contents/x 5", "/private/var/folders/ab/C/foo 4"}); // not the user's
    m_disk.setModified("~/Library/Caches/foo\xFF",
                       platform::Date(std::chrono::duration<double>(1'700'000'000.25)));
    m_disk.write("~/Library/LaunchAgents/a.plist", agent);
    CatalogueWriter catalogue(m_disk);
    catalogue.add({.uuid = "B", .created = "NULL", .kind = "1", .name = "'caf' || x'e9'", .favorite = "1"});
    catalogue.add({.uuid = "A", .created = "NULL", .kind = "1"});

    Json item =
        R"({"id": "/Users/me/Library/Caches/foo\\udcff", "path": "/Users/me/Library/Caches/foo\\udcff",
        "name": "foo\\udcff", "sizeBytes": 1000, "category": "Fichiers temporaires", "explanation": "exp_cache",
        "safeByDefault": true, "modifiedDate": 1700000000.25})"_json;
    EXPECT_EQ(json({"scan"}), Json({{"items", {item}}, {"totalBytes", 1000}}));
    item["category"] = "Restes d'une application";
    item["explanation"] = "exp_app_caches";
    EXPECT_EQ(json({"related", "/Applications/Foo.app/"}), Json::array({item}));
    EXPECT_EQ(outcome({"related", "/Applications/Safari.app"}).status, 2);
    EXPECT_EQ(json({"startup"}), R"([{"id": "/Users/me/Library/LaunchAgents/a.plist",
        "path": "/Users/me/Library/LaunchAgents/a.plist", "label": "com.example.my-tool", "displayName": "My Tool",
        "explanation": "exp_startup_user", "isSystemWide": false, "isAlreadyDisabled": false}])"_json);
    const Json group = json({"duplicates"})[0];
    EXPECT_EQ(group["id"], "A/L0/001-B/L0/001");
    EXPECT_EQ(group["totalWastedBytes"], 1000);
    EXPECT_EQ(group["items"][0], R"({"id": "B/L0/001", "filename": "caf\\udce9", "sizeBytes": 1000,
        "creationDate": null, "isFavorite": true, "isVideo": true})"_json);
    EXPECT_EQ(json({"large-files", "2000", "10"})[0]["path"], "/Users/me/Movies/film.mov");
    EXPECT_EQ(json({"apps"})[0]["name"], "Foo");
    EXPECT_GT(json({"health"})["totalDiskBytes"], 0);
    for (const char* operation : {"orphans", "vms", "storage"})
        EXPECT_TRUE(json({operation}).is_array()) << operation;
    EXPECT_EQ(json({"access"})["hasFullDiskAccess"], false);
    EXPECT_EQ(
        json({"allowed", "/Users/me/Documents", "/tmp/x"}),
        R"([{"path": "/Users/me/Documents", "allowed": false}, {"path": "/tmp/x", "allowed": true}])"_json);
}

TEST_F(Inspect, ChangesNothingUnlessItIsMeant) {
    m_disk.make(
        {"~/.Trash/old 10", "~/Downloads/a 5", "/Applications/Foo.app/Contents/x 5", "~/Library/Logs/\xFF"});
    m_disk.write("~/Library/LaunchAgents/a.plist", agent);
    CatalogueWriter catalogue(m_disk, CatalogueWriter::Maker::lumvale);
    catalogue.add({.uuid = "A"});
    const std::string log = "/Users/me/Library/Logs/\\udcff";
    const Texts remove{"delete", "/Users/me/Downloads/a", "/System/"};
    const Texts uninstall{"uninstall", "/Applications/Foo.app", "/System/x", log};
    const Texts disable{"disable", "com.example.my-tool"};
    const Texts deletePhotos{"delete-photos", "A/L0/001", "C/L0/001"};
    EXPECT_EQ(would(remove), Json({"/Users/me/Downloads/a", "/System/"}));
    EXPECT_EQ(would(uninstall), Json({"/System/x", log, "/Applications/Foo.app"}));
    EXPECT_EQ(would(disable), Json({"com.example.my-tool"}));
    EXPECT_EQ(would(deletePhotos), Json({"A/L0/001", "C/L0/001"}));
    EXPECT_EQ(would({"empty-trash"}), Json({"/Users/me/.Trash/old"}));

    const Json removed = really(remove);
    EXPECT_EQ(removed["succeeded"], Json({"/Users/me/Downloads/a"}));
    EXPECT_EQ(removed["failed"].size(), 1U);
    EXPECT_EQ(removed["failed"][0]["path"], "/System/");
    EXPECT_EQ(removed["failed"][0]["error"]["domain"], "Lumvale");
    const Json uninstalled = really(uninstall);
    EXPECT_EQ(uninstalled["succeeded"], Json({log, "/Applications/Foo.app"}));
    EXPECT_EQ(uninstalled["failed"][0]["path"], "/System/x");
    for (const char* other : {"com.example.My-Tool", "/Users/me/Library/LaunchAgents/a.plist"})
        EXPECT_EQ(really({"disable", other}), Json({{"disabled", false}})) << other;
    EXPECT_EQ(really(disable), Json({{"disabled", true}}));
    EXPECT_EQ(really(deletePhotos), Json({{"succeeded", true}}));
    catalogue.run("PRAGMA application_id = 0");
    EXPECT_EQ(really(deletePhotos), Json({{"succeeded", false}}));
    for (const char* name : {"a", "Foo.app/Contents/x", "\xFF", "a.plist"})
        EXPECT_TRUE(m_disk.exists(std::string("~/.Trash/") + name)) << name;
    const Json emptied = really({"empty-trash"});
    EXPECT_TRUE(emptied["succeeded"] == 5 && emptied["failed"] == 0) << emptied;
    EXPECT_FALSE(m_disk.exists("~/.Trash/old"));
}

TEST_F(Inspect, ChangesNothingWhereAnArgumentCanMeanTwoEntries) {
    m_disk.make({"~/\\udc80", "~/\x80"});
    EXPECT_EQ(outcome({"delete", "/Users/me/\\udc80", "--really"}).status, 2);
    EXPECT_TRUE(m_disk.exists("~/\\udc80") && m_disk.exists("~/\x80"));
}

TEST_F(Inspect, AnswersWithoutADisk) {
    m_disk.write("~/bad.plist", "junk");
    const auto answer = [&](const Texts& arguments) {
        return inspected(m_disk.host("/nowhere"), arguments).json();
    };
    EXPECT_EQ(answer({"format-bytes", "en_US", "0", "-1"}), Json({"Zero KB", "-1 byte"}));
    EXPECT_EQ(answer({"format-date", "en_US", "-1e0"}), Json({"Dec 31, 1969"}));
    EXPECT_EQ(answer({"sort", "fr", "É", "b"}), Json({"b", "É"}));
    EXPECT_EQ(answer({"capitalize", "o'neil", "3rd way"}), Json({"O'neil", "3Rd Way"}));
    EXPECT_EQ(answer({"path", "/a//b.app/"})[0]["standardized"], "/a/b.app");
    EXPECT_EQ(answer({"plist", m_disk.host("~/bad.plist")})[0]["error"]["code"], 3840);
    EXPECT_EQ(answer({"treemap", "40", "10", "1", "3e0"}),
              R"([{"id": 1, "x": 0.0, "y": 0.0, "width": 30.0, "height": 10.0},
                  {"id": 0, "x": 30.0, "y": 0.0, "width": 10.0, "height": 10.0}])"_json);
    EXPECT_EQ(answer({"treemap", "40", "10"}), Json::array());
#ifdef LUMVALE_INSPECT_APP
    EXPECT_EQ(answer({"tr", "fr", "cat_logs", "no_such_key"}),
              Json({"Journaux d'applications", "no_such_key"}));
    EXPECT_EQ(outcome({"tr", "xx", "cat_logs"}).status, 2);
    EXPECT_EQ(answer({"newer", "1.10", "1.9"}), Json({{"newer", true}}));
    EXPECT_EQ(answer({"newer", "1.2", "1.2.0"}), Json({{"newer", false}}));
    EXPECT_EQ(answer({"acceptable-page", "Lumvale.example", "https://get.lumvale.example/\xE9",
                      "https://LUMVALE.example"}),
              R"([{"url": "https://get.lumvale.example/\\udce9", "acceptable": false},
                  {"url": "https://LUMVALE.example", "acceptable": true}])"_json);
#else
    for (const Texts& arguments :
         {Texts{"tr", "fr", "cat_logs"}, {"newer", "1.10", "1.9"}, {"acceptable-page", "a", "b"}})
        EXPECT_EQ(outcome(arguments).status, 2) << arguments[0];
#endif
}

TEST_F(Inspect, SaysWhenItIsCalledInTheWrongWay) {
    std::vector<Texts> wrong{{}, {"treemap", "40", "10", "1", ""}};
    for (const char* line : {"no-such-operation", "scan --really", "delete --really", "uninstall --really",
                             "related", "empty-trash /Users/me/.Trash/a --really", "disable --really",
                             "disable one two", "delete-photos --really", "large-files 1",
                             "large-files 1e6 1", "treemap 40", "format-bytes en_US 9223372036854775808",
                             "format-date en_US nan", "treemap 40 wide 1", "treemap 40 10 inf"}) {
        std::istringstream words(line);
        wrong.emplace_back(std::istream_iterator<std::string>(words), std::istream_iterator<std::string>());
    }
    const auto expectOneLine = [](const Outcome& said) {
        EXPECT_EQ(said.status, 2) << said.errors;
        EXPECT_EQ(said.output, "") << said.errors;
        EXPECT_EQ(said.errors.find('\n'), said.errors.size() - 1) << said.errors;
    };
    for (const Texts& arguments : wrong)
        expectOneLine(outcome(arguments));
    expectOneLine(inspected(m_disk.host("/no\nwhere"), {"scan"}));
}

} // namespace
