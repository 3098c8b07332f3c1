#include "app/history/history_store.h"

#include "tests/support/temporary_disk.h"

#include <filesystem>
#include <functional>
#include <random>

#include <sys/stat.h>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

platform::Date since1970(double seconds) {
    return platform::Date(platform::Date::duration(seconds));
}

std::string repeated(std::string_view text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

std::vector<std::string> names(const std::vector<HistoryEntry>& entries) {
    std::vector<std::string> names;
    for (const HistoryEntry& entry : entries)
        names.push_back(entry.name);
    return names;
}

using Names = std::vector<std::string>;

constexpr std::string_view goodEntry = R"({"date":700000000.25,"name":"Caché","sizeBytes":12})";

} // namespace

TEST(HistoryEntry, IsIdentifiedByItsDateAndName) {
    const struct {
        double seconds;
        std::string id;
    } cases[]{
        {0, "0-a"},
        {1'700'000'000, "1700000000-a"},
        {1'700'000'000.1, "1700000000.1-a"},
        {-0.5, "-0.5-a"},
        {9'007'199'254'740'992, "9007199254740992-a"},
        {1e17, "1e+17-a"},
    };
    for (const auto& [seconds, id] : cases)
        EXPECT_EQ((HistoryEntry{since1970(seconds), "a", 1}).id(), id);
}

TEST(HistoryFile, IsOneCompactArrayWithDatesSince2001) {
    EXPECT_EQ(encodeHistory({}), "[]");
    EXPECT_EQ(encodeHistory({{since1970(1'678'307'200.25), "Caché", 12},
                             {since1970(978'307'200), "\"\\/\n\x1f\x7f", -1}}),
              R"([{"date":700000000.25,"name":"Caché","sizeBytes":12},)"
              R"({"date":0,"name":"\"\\/\u000a\u001f)"
              "\x7f"
              R"(","sizeBytes":-1}])");
}

TEST(HistoryFile, ReadsBackWhatItWrote) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> recent(1.6e9, 2.1e9);
    std::vector<HistoryEntry> entries;
    for (int i = 0; i < 2'000; ++i) {
        std::string name = "é\U0001F4A9";
        name += static_cast<char>(i % 0x80);
        entries.push_back({since1970(recent(random)), name, static_cast<std::int64_t>(random())});
    }
    entries.push_back({platform::now(), std::string("\0\r\n", 3), std::numeric_limits<std::int64_t>::min()});
    EXPECT_EQ(decodeHistory(encodeHistory(entries)), entries);
}

TEST(HistoryFile, IsReadOnlyWhenAllOfItIsRight) {
    const std::string deep = repeated("[", 300'000) + repeated("]", 300'000);
    const std::string objects = repeated(R"({"name":)", 300'000) + "0" + repeated("}", 300'000);
    const auto entry = [](std::string_view date, std::string_view name, std::string_view sizeBytes) {
        return "[{\"date\":" + std::string(date) + ",\"name\":" + std::string(name)
               + ",\"sizeBytes\":" + std::string(sizeBytes) + "}]";
    };
    const struct {
        std::string json;
        int count; ///< of entries, -1 for none at all
    } cases[]{
        {"[]", 0},
        {" [ \n ] ", 0},
        {"[" + std::string(goodEntry) + "]", 1},
        {"[" + std::string(goodEntry) + "," + std::string(goodEntry) + "]", 2},
        {R"([{"sizeBytes":1,"more":[{"name":null,"date":[]},1],"name":"","less":{},"x":1e9,"date":1}])", 1},
        {"[{\"other\":" + deep + ",\"date\":1,\"name\":\"n\",\"sizeBytes\":1}]", 1},
        {"[{\"other\":" + objects + ",\"date\":1,\"name\":\"n\",\"sizeBytes\":1}]", 1},
        {entry("-1e300", R"("\u0000\ud83d\ude00")", "9223372036854775807"), 1},
        {entry("1", "\"n\"", "-9223372036854775808"), 1},
        {entry("18446744073709551615", "\"n\"", "0"), 1},
        // not an array of objects
        {"", -1},
        {"null", -1},
        {"7", -1},
        {std::string(goodEntry), -1},
        {"[7]", -1},
        {"[null]", -1},
        {"[\"name\"]", -1},
        {"[[" + std::string(goodEntry) + "]]", -1},
        {"[" + std::string(goodEntry) + ",[]]", -1},
        {"[" + std::string(goodEntry) + "]x", -1},
        {"[" + std::string(goodEntry) + ",]", -1},
        {"[{}]", -1},
        {deep, -1},
        {objects, -1},
        {repeated("[", 1'000'000), -1},
        // a member of another type, out of range, or missing
        {entry("\"1\"", "\"n\"", "1"), -1},
        {entry("null", "\"n\"", "1"), -1},
        {entry("NaN", "\"n\"", "1"), -1},
        {entry("1e999", "\"n\"", "1"), -1},
        {entry("[1]", "\"n\"", "1"), -1},
        {entry("1", "null", "1"), -1},
        {entry("1", "1", "1"), -1},
        {entry("1", "{\"name\":\"n\"}", "1"), -1},
        {entry("1", "\"\xff\"", "1"), -1},
        {entry("1", "\"\\ud800\"", "1"), -1},
        {entry("1", "\"n\"", "1.5"), -1},
        {entry("1", "\"n\"", "true"), -1},
        {entry("1", "\"n\"", "\"1\""), -1},
        {entry("1", "\"n\"", "9223372036854775808"), -1},
        {entry("1", "\"n\"", "-9223372036854775809"), -1},
        {entry("1", "\"n\"", "99999999999999999999999"), -1},
        {R"([{"date":1,"name":"n"}])", -1},
        {R"([{"date":1,"sizeBytes":1}])", -1},
        {R"([{"name":"n","sizeBytes":1}])", -1},
        {R"([{"Date":1,"name":"n","sizeBytes":1}])", -1},
    };
    for (const auto& [json, count] : cases) {
        const auto entries = decodeHistory(json);
        EXPECT_EQ(entries ? static_cast<int>(entries->size()) : -1, count) << json.substr(0, 200);
    }
    const std::string whole = "[" + std::string(goodEntry) + "]";
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_FALSE(decodeHistory(whole.substr(0, length))) << length;
}

class HistoryStoreTest : public testing::Test {
protected:
    std::string path() const { return HistoryStore(m_disk.disk()).path(); }
    std::vector<HistoryEntry> onDisk() const {
        return decodeHistory(m_disk.read(path())).value_or(std::vector<HistoryEntry>());
    }

    TemporaryDisk m_disk;
};

TEST_F(HistoryStoreTest, DropsWhatIsOlderThanThirtyDaysAtTheNextRecordingOnly) {
    const platform::Date now = platform::now();
    const std::string before =
        encodeHistory({{now - std::chrono::days(40), "old", 1}, {now - std::chrono::days(10), "recent", 2}});
    m_disk.write(path(), before);

    HistoryStore store(m_disk.disk());
    EXPECT_EQ(names(store.entries()), (Names{"recent"}));
    EXPECT_EQ(m_disk.read(path()), before);
    store.record("new", 3);
    EXPECT_EQ(names(onDisk()), (Names{"new", "recent"}));
}

TEST_F(HistoryStoreTest, KeepsTheEntryAtTheBoundaryAndTheOrderOfEqualDates) {
    const platform::Date base = since1970(std::floor(platform::secondsSince1970(platform::now())));
    m_disk.write(path(), encodeHistory({{base, "a", 1},
                                        {base + 1s, "newest", 1},
                                        {base, "b", 1},
                                        {base - 1s, "oldest", 1},
                                        {base, "c", 1}}));
    HistoryStore store(m_disk.disk());
    EXPECT_EQ(names(store.entries()), (Names{"newest", "a", "b", "c", "oldest"}));

    Names whenTold;
    QObject::connect(&store, &HistoryStore::entriesChanged, &store,
                     [&] { whenTold = names(store.entries()); });
    store.prune(base + 2'592'000s);
    EXPECT_EQ(whenTold, (Names{"newest", "a", "b", "c"}));
    EXPECT_EQ(names(onDisk()).size(), 5u); // memory only
}

TEST_F(HistoryStoreTest, WritesEveryRecordingNewestFirst) {
    {
        HistoryStore store(m_disk.disk());
        EXPECT_FALSE(m_disk.exists("~/Library/Application Support/Lumvale"));
        int written = 0;
        QObject::connect(&store, &HistoryStore::entriesChanged, &store,
                         [&] { EXPECT_EQ(static_cast<int>(onDisk().size()), written++); });
        for (const char* name : {"one", "two", "t\xffree\n"})
            store.record(name, 5);
        EXPECT_EQ(written, 3);
        EXPECT_EQ(onDisk(), store.entries());
    }
    EXPECT_TRUE(m_disk.exists("~/Library/Application Support/Lumvale/historique.json"));
    EXPECT_EQ(names(HistoryStore(m_disk.disk()).entries()), (Names{"t\uFFFDree\n", "two", "one"}));
}

TEST_F(HistoryStoreTest, LeavesAMalformedFileAloneUntilTheNextRecording) {
    const std::string malformed = R"([{"date":700000000,"name":"no size"}])";
    m_disk.write(path(), malformed);
    HistoryStore store(m_disk.disk());
    EXPECT_TRUE(store.entries().empty());
    EXPECT_EQ(m_disk.read(path()), malformed);
    store.record("new", 1);
    EXPECT_EQ(names(onDisk()), (Names{"new"}));
}

TEST_F(HistoryStoreTest, StaysRightInMemoryWhenTheFileCannotBeReachedOrWritten) {
    const std::string folder = "~/Library/Application Support/Lumvale";
    const struct {
        const char* obstacle;
        std::function<void()> put;
        std::function<void()> clear;
    } cases[]{
        {"an unreadable file", [&] { m_disk.write(path(), "[]"), m_disk.setMode(path(), 0); },
         [&] {
             m_disk.setMode(path(), 0600);
         }},
        {"a read-only file", [&] { m_disk.write(path(), "[]"), m_disk.setMode(path(), 0400); },
         [&] {
             m_disk.setMode(path(), 0600);
         }},
        {"a read-only folder", [&] { m_disk.make(folder + "/"), m_disk.setMode(folder, 0500); },
         [&] {
             m_disk.setMode(folder, 0700);
         }},
        {"a folder in place of the file", [&] { m_disk.make(path() + "/inside"); },
         [] {
         }},
        {"a file in place of the folder", [&] { m_disk.make(folder); },
         [] {
         }},
        {"a pipe",
         [&] {
             m_disk.make(folder + "/");
             EXPECT_EQ(mkfifo(m_disk.host(path()).c_str(), 0600), 0);
         },
         [] {
         }},
        {"a link that leads to itself", [&] { m_disk.make(path() + " -> historique.json"); },
         [] {
         }},
    };
    for (const auto& [obstacle, put, clear] : cases) {
        SCOPED_TRACE(obstacle);
        const OrdinaryUser user;
        put();
        HistoryStore store(m_disk.disk());
        EXPECT_TRUE(store.entries().empty());
        store.record("one", 1);
        store.record("two", 2);
        EXPECT_EQ(names(store.entries()), (Names{"two", "one"}));
        clear();
        std::filesystem::remove_all(m_disk.host("~/Library"));
    }
}
