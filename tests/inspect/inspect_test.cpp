#include "tests/support/temporary_disk.h"

#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <sys/wait.h>
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

std::string contentOf(const std::string& file) {
    std::string content;
    const platform::Descriptor opened(open(file.c_str(), O_RDONLY | O_CLOEXEC));
    char buffer[4'096];
    for (ssize_t got = 0; (got = read(opened.number(), buffer, sizeof buffer)) > 0;)
        content.append(buffer, static_cast<std::size_t>(got));
    return content;
}

/// Runs the inspector on the disk whose root is this folder of the host.
Outcome inspected(const std::string& root, const Texts& arguments) {
    std::string outputs = testing::TempDir() + "lumvale-inspect-XXXXXX";
    if (mkdtemp(outputs.data()) == nullptr)
        return {};
    const std::string output = outputs + "/output";
    const std::string errors = outputs + "/errors";
    const pid_t child = fork();
    if (child == 0) {
        setenv("LUMVALE_DISK", root.c_str(), 1);
        setenv("LUMVALE_HOME", "/Users/me", 1);
        unsetenv("LUMVALE_USER_CACHE");
        dup2(open(output.c_str(), O_WRONLY | O_CREAT, 0600), STDOUT_FILENO);
        dup2(open(errors.c_str(), O_WRONLY | O_CREAT, 0600), STDERR_FILENO);
        std::vector<char*> words{const_cast<char*>(LUMVALE_INSPECT)};
        for (const std::string& argument : arguments)
            words.push_back(const_cast<char*>(argument.c_str()));
        words.push_back(nullptr);
        execv(LUMVALE_INSPECT, words.data());
        _exit(127);
    }
    int status = 0;
    waitpid(child, &status, 0);
    Outcome outcome{WIFEXITED(status) ? WEXITSTATUS(status) : -1, contentOf(output), contentOf(errors)};
    for (const std::string& made : {output, errors})
        unlink(made.c_str());
    rmdir(outputs.c_str());
    return outcome;
}

Outcome inspected(const TemporaryDisk& disk, const Texts& arguments) {
    return inspected(disk.host(""), arguments);
}

class Inspect : public testing::Test {
protected:
    const TemporaryDisk m_disk;
};

TEST_F(Inspect, CarriesAnyNameThereAndBack) {
    const std::string names[] = {
        "plain",   "line\nbreak", "quo\"te",  "back\\slash", "\x01\x7F", "caf\xC3\xA9",
        "caf\xE9", "\xFF\xFE",    "\xE2\x82", "🙂",        "--really",
    };
    Texts paths{"delete"};
    std::int64_t size = 1;
    for (const std::string& name : names) {
        m_disk.write("~/Downloads/" + name, std::string(static_cast<std::size_t>(size++), 'x'));
        paths.push_back("/Users/me/Downloads/" + name);
    }

    // First by their bytes, then as the output spelt them.
    paths[0] = "size";
    for (int round = 0; round < 2; ++round) {
        const Outcome outcome = inspected(m_disk, paths);
        ASSERT_EQ(outcome.status, 0) << outcome.errors;
        const Json sizes = outcome.json();
        ASSERT_EQ(sizes.size(), std::size(names)) << outcome.output;
        for (std::size_t i = 0; i < sizes.size(); ++i) {
            EXPECT_EQ(sizes[i]["sizeBytes"], i + 1) << paths[i + 1];
            paths[i + 1] = sizes[i]["path"];
        }
    }
    EXPECT_EQ(paths[7], "/Users/me/Downloads/caf\\udce9");

    paths[0] = "delete";
    paths.push_back("--really");
    const Outcome outcome = inspected(m_disk, paths);
    ASSERT_EQ(outcome.status, 0) << outcome.errors;
    const Json deleted = outcome.json();
    EXPECT_EQ(deleted["succeeded"], Json(Texts(paths.begin() + 1, paths.end() - 1)));
    EXPECT_EQ(deleted["failed"], Json::array());
    for (const std::string& name : names) {
        EXPECT_FALSE(m_disk.exists("~/Downloads/" + name)) << name;
        EXPECT_TRUE(m_disk.exists("~/.Trash/" + name)) << name;
    }
}

TEST_F(Inspect, ChangesNothingUnlessItIsMeant) {
    m_disk.make({"~/.Trash/old 10", "~/Downloads/a 5"});
    const Json would = inspected(m_disk, {"delete", "/Users/me/Downloads/a", "/System"}).json();
    EXPECT_EQ(would, Json({{"would", {"/Users/me/Downloads/a", "/System"}}}));
    EXPECT_EQ(inspected(m_disk, {"empty-trash"}).json(), Json({{"would", {"/Users/me/.Trash/old"}}}));
    EXPECT_TRUE(m_disk.exists("~/Downloads/a"));
    EXPECT_TRUE(m_disk.exists("~/.Trash/old"));

    const Json deleted = inspected(m_disk, {"delete", "/Users/me/Downloads/../Downloads/a", "/System/",
                                            "/tmp/none", "--really"})
                             .json();
    EXPECT_EQ(deleted["succeeded"], Json({"/Users/me/Downloads/a"}));
    ASSERT_EQ(deleted["failed"].size(), 2U);
    EXPECT_EQ(deleted["failed"][0]["path"], "/System/");
    EXPECT_EQ(deleted["failed"][0]["error"]["domain"], "Lumvale");
    EXPECT_EQ(deleted["failed"][0]["error"]["code"], 1);
    EXPECT_EQ(deleted["failed"][1]["path"], "/tmp/none");
    EXPECT_EQ(deleted["failed"][1]["error"]["code"], 4);

    const Json emptied = inspected(m_disk, {"empty-trash", "--really"}).json();
    EXPECT_EQ(emptied["succeeded"], 2);
    EXPECT_EQ(emptied["failed"], 0);
    EXPECT_EQ(emptied["bytesFreed"], 15);
    EXPECT_EQ(emptied["couldNotAccess"], false);
    EXPECT_FALSE(m_disk.exists("~/.Trash/old"));
}

TEST_F(Inspect, ShowsRecordsByTheirFields) {
    m_disk.make({"~/Library/Caches/com.example.editor/data 1000", "~/Movies/film.mov 3000", "~/Documents/"});
    const platform::Date modified{std::chrono::duration<double>(1'700'000'000.25)};
    m_disk.setModified("~/Library/Caches/com.example.editor", modified);
    m_disk.write("/Applications/Foo.app/Contents/Info.plist",
                 "<plist><dict><key>CFBundleIdentifier</key><string>com.example.foo</string></dict></plist>");

    const Json scan = inspected(m_disk, {"scan"}).json();
    ASSERT_EQ(scan["items"].size(), 1U) << scan;
    EXPECT_EQ(scan["totalBytes"], 1000);
    const Json& item = scan["items"][0];
    EXPECT_EQ(item["id"], "/Users/me/Library/Caches/com.example.editor");
    EXPECT_EQ(item["path"], item["id"]);
    EXPECT_EQ(item["sizeBytes"], 1000);
    EXPECT_EQ(item["explanation"], "exp_cache");
    EXPECT_EQ(item["modifiedDate"], 1'700'000'000.25);
    EXPECT_TRUE(item["category"].is_string());
    EXPECT_TRUE(item["safeByDefault"].is_boolean());
    EXPECT_TRUE(item["name"].is_string());

    const Json large = inspected(m_disk, {"large-files", "2000", "10"}).json();
    ASSERT_EQ(large.size(), 1U) << large;
    EXPECT_EQ(large[0]["path"], "/Users/me/Movies/film.mov");

    const Json apps = inspected(m_disk, {"apps"}).json();
    ASSERT_EQ(apps.size(), 1U) << apps;
    EXPECT_EQ(apps[0]["bundleIdentifier"], "com.example.foo");
    EXPECT_EQ(apps[0]["name"], "Foo");

    const Json health = inspected(m_disk, {"health"}).json();
    for (const char* member :
         {"score", "freeDiskBytes", "totalDiskBytes", "batteryHealthPercent", "memoryPressureOK", "label"})
        EXPECT_TRUE(health.contains(member)) << member;
    EXPECT_GT(health["totalDiskBytes"], 0);

    for (const char* operation : {"orphans", "vms", "storage"})
        EXPECT_TRUE(inspected(m_disk, {operation}).json().is_array()) << operation;
    EXPECT_TRUE(inspected(m_disk, {"access"}).json()["hasFullDiskAccess"].is_boolean());
    EXPECT_EQ(inspected(m_disk, {"allowed", "/Users/me/Documents", "/tmp/x"}).json(),
              Json({{{"path", "/Users/me/Documents"}, {"allowed", false}},
                    {{"path", "/tmp/x"}, {"allowed", true}}}));
}

TEST_F(Inspect, AnswersAboutTextWithoutADisk) {
    const std::string nowhere = m_disk.host("/nowhere");
    EXPECT_EQ(inspected(nowhere, {"format-bytes", "en_US", "0", "-1", "-9223372036854775808"}).json(),
              Json({"Zero KB", "-1 byte", "-9.22 EB"}));
    EXPECT_EQ(inspected(nowhere, {"format-date", "en_US", "1700000000.5", "-1e0"}).json(),
              Json({"Nov 14, 2023", "Dec 31, 1969"}));
    EXPECT_EQ(inspected(nowhere, {"sort", "fr", "b", "É", "a", "e"}).json(), Json({"a", "b", "e", "É"}));
    EXPECT_EQ(inspected(nowhere, {"path", "/a//b.app/"}).json(), Json({{{"extension", "app"},
                                                                        {"stem", "b"},
                                                                        {"lastComponent", "b.app"},
                                                                        {"standardized", "/a/b.app"}}}));

    m_disk.write("~/agent.plist", "<plist><dict><key>Label</key><string>a</string><key>Disabled</"
                                  "key><integer>1</integer></dict></plist>");
    m_disk.write("~/list.plist", "<plist><array/></plist>");
    m_disk.write("~/bad.plist", "junk");
    const Json lists = inspected(nowhere, {"plist", m_disk.host("~/agent.plist"), m_disk.host("~/list.plist"),
                                           m_disk.host("~/bad.plist")})
                           .json();
    ASSERT_EQ(lists.size(), 3U) << lists;
    EXPECT_EQ(lists[0]["root"], "dictionary");
    EXPECT_EQ(lists[0]["values"]["Label"], "a");
    EXPECT_EQ(lists[0]["values"]["Disabled"], nullptr);
    EXPECT_EQ(lists[1], Json({{"root", "array"}, {"values", nullptr}}));
    EXPECT_EQ(lists[2]["error"]["code"], 3840);
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
    const Texts wrong[] = {
        {},
        {"no-such-operation"},
        {"scan", "more"},
        {"scan", "--really"},
        {"size"},
        {"delete"},
        {"delete", "--really"},
        {"empty-trash", "/Users/me/.Trash/a", "--really"},
        {"large-files", "1"},
        {"large-files", "1", "-1"},
        {"large-files", "1e6", "1"},
        {"large-files", "", "1"},
        {"format-bytes", "en_US"},
        {"format-bytes", "en_US", "1.5"},
        {"format-bytes", "en_US", "9223372036854775808"},
        {"format-date", "en_US", "today"},
        {"format-date", "en_US", "nan"},
        {"format-date", "en_US", "1 "},
    };
    for (const Texts& arguments : wrong) {
        const Outcome outcome = inspected(m_disk, arguments);
        EXPECT_EQ(outcome.status, 2) << testing::PrintToString(arguments);
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(outcome.errors.find('\n'), outcome.errors.size() - 1) << outcome.errors;
    }
    const Outcome missing = inspected(m_disk.host("/no\nwhere"), {"scan"});
    EXPECT_EQ(missing.status, 2);
    EXPECT_EQ(missing.errors.find('\n'), missing.errors.size() - 1) << missing.errors;
}

} // namespace
