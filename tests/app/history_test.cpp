#include "app/history/history_store.h"

#include "tests/support/temporary_disk.h"

#include <cmath>
#include <random>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

using Names = std::vector<std::string>;

platform::Date since1970(double seconds) {
    return platform::Date(platform::Date::duration(seconds));
}

std::string repeated(const char* text, int times) {
    return QByteArray(text).repeated(times).toStdString();
}

Names names(const std::vector<HistoryEntry>& entries) {
    Names names;
    for (const HistoryEntry& entry : entries)
        names.push_back(entry.name);
    return names;
}

/// An array of one entry whose members are written like this.
std::string entry(const std::string& date, const std::string& name, const std::string& sizeBytes) {
    return "[{\"date\":" + date + ",\"name\":" + name + ",\"sizeBytes\":" + sizeBytes + "}]";
}

const std::string good = R"([{"date":700000000.25,"name":"Caché","sizeBytes":12}])";

} // namespace

TEST(HistoryEntry, IsIdentifiedByItsDateAndName) {
    EXPECT_EQ((HistoryEntry{since1970(0), "a", 1}).id(), "0-a");
    EXPECT_EQ((HistoryEntry{since1970(1'700'000'000.1), "a", 1}).id(), "1700000000.1-a");
}

TEST(HistoryFile, IsOneCompactArrayWithDatesSince2001) {
    EXPECT_EQ(encodeHistory({}), "[]");
    EXPECT_EQ(encodeHistory({{since1970(1'678'307'200.25), "Caché", 12}}), good);
    EXPECT_EQ(encodeHistory({{since1970(978'307'200), "\"\\/\n\x1f\x7f", -1}}), entry("0",
                                                                                      R"("\"\\/\u000a\u001f)"
                                                                                      "\x7f\"",
                                                                                      "-1"));
}

TEST(HistoryFile, ReadsBackWhatItWrote) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> recent(1.6e9, 2.1e9);
    std::vector<HistoryEntry> entries;
    for (int i = 0; i < 2'000; ++i)
        entries.push_back({since1970(recent(random)),
                           "é\U0001F4A9" + std::string(1, static_cast<char>(i % 0x80)),
                           static_cast<std::int64_t>(random())});
    EXPECT_EQ(decodeHistory(encodeHistory(entries)), entries);
}

TEST(HistoryFile, IsReadOnlyWhenAllOfItIsRight) {
    const std::string deep = repeated("[", 300'000) + repeated("]", 300'000);
    const std::string objects = repeated(R"({"name":)", 300'000) + "0" + repeated("}", 300'000);
    const std::string readable[]{
        " [ \n ] ",
        good,
        R"([{"sizeBytes":1,"more":[{"name":null,"date":[]},1],"name":"","less":{},"x":1e9,"date":1}])",
        "[{\"other\":" + deep + ",\"date\":1,\"name\":\"n\",\"sizeBytes\":1}]",
        entry("-1e300", R"("\u0000\ud83d\ude00")", "9223372036854775807"),
        entry("18446744073709551615", "\"n\"", "-9223372036854775808"),
    };
    for (const std::string& json : readable)
        EXPECT_TRUE(decodeHistory(json)) << json.substr(0, 200);

    std::vector<std::string> unreadable{
        // not an array of objects
        "null", "[null]", "[\"name\"]", "[" + good + "]", good + "x", "[{}]", deep, objects,
        repeated("[", 1'000'000),
        // a member of another type, out of range, or missing
        entry("\"1\"", "\"n\"", "1"), entry("null", "\"n\"", "1"), entry("1e999", "\"n\"", "1"),
        entry("1", "null", "1"), entry("1", "{\"name\":\"n\"}", "1"), entry("1", "\"\xff\"", "1"),
        entry("1", "\"\\ud800\"", "1"), entry("1", "\"n\"", "1.5"), entry("1", "\"n\"", "\"1\""),
        entry("1", "\"n\"", "9223372036854775808"), entry("1", "\"n\"", "-9223372036854775809"),
        R"([{"date":1,"name":"n"}])", R"([{"date":1,"sizeBytes":1}])",
        R"([{"Date":1,"name":"n","sizeBytes":1}])"};
    for (std::size_t length = 0; length < good.size(); ++length)
        unreadable.push_back(good.substr(0, length));
    for (const std::string& json : unreadable)
        EXPECT_FALSE(decodeHistory(json)) << json.substr(0, 200);
}

class HistoryStoreTest : public testing::Test {
protected:
    std::string path() const { return HistoryStore(m_disk.disk()).path(); }
    std::vector<HistoryEntry> onDisk() const {
        return decodeHistory(m_disk.read(path())).value_or(std::vector<HistoryEntry>());
    }

    TemporaryDisk m_disk;
};

TEST_F(HistoryStoreTest, LeavesTheFileAsItIsUntilTheNextRecording) {
    const platform::Date now = platform::now();
    const std::pair<std::string, Names> files[]{
        {encodeHistory({{now - std::chrono::days(40), "old", 1}, {now - std::chrono::days(10), "recent", 2}}),
         {"recent"}},
        {R"([{"date":700000000,"name":"no size"}])", {}}};
    for (auto [before, kept] : files) {
        m_disk.write(path(), before);
        HistoryStore store(m_disk.disk());
        EXPECT_EQ(names(store.entries()), kept);
        EXPECT_EQ(m_disk.read(path()), before);
        store.record("new", 3);
        kept.insert(kept.begin(), "new");
        EXPECT_EQ(names(onDisk()), kept);
    }
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
    store.prune(base + 2'592'000s);
    EXPECT_EQ(names(store.entries()), (Names{"newest", "a", "b", "c"}));
    EXPECT_EQ(onDisk().size(), 5u); // memory only
}

TEST_F(HistoryStoreTest, WritesEveryRecordingNewestFirst) {
    HistoryStore store(m_disk.disk());
    std::vector<std::size_t> onDiskWhenTold;
    QObject::connect(&store, &HistoryStore::entriesChanged, &store,
                     [&] { onDiskWhenTold.push_back(onDisk().size()); });
    EXPECT_FALSE(m_disk.exists("~/Library/Application Support/Lumvale"));
    for (const char* name : {"one", "two", "t\xffree\n"})
        store.record(name, 5);
    EXPECT_EQ(onDiskWhenTold, (std::vector<std::size_t>{0, 1, 2}));
    EXPECT_EQ(onDisk(), store.entries());
    EXPECT_TRUE(m_disk.exists("~/Library/Application Support/Lumvale/historique.json"));
    EXPECT_EQ(names(HistoryStore(m_disk.disk()).entries()), (Names{"t\uFFFDree\n", "two", "one"}));
}

TEST(HistoryStore, StaysRightInMemoryWhenTheFileCannotBeReachedOrWritten) {
    const std::string folder = "~/Library/Application Support/Lumvale";
    const std::string file = folder + "/historique.json";
    const struct {
        std::string made;
        std::string closed;
        unsigned mode;
    } obstacles[]{{file, file, 0},
                  {file, file, 0400},
                  {folder + "/", folder, 0500},
                  {file + "/inside", folder, 0700},
                  {folder, folder, 0600},
                  {file + " |", folder, 0700},
                  {file + " -> historique.json", folder, 0700}};
    for (const auto& [made, closed, mode] : obstacles) {
        SCOPED_TRACE(made);
        const OrdinaryUser user;
        const TemporaryDisk disk;
        disk.make(made);
        disk.setMode(closed, mode);
        HistoryStore store(disk.disk());
        EXPECT_TRUE(store.entries().empty());
        store.record("one", 1);
        store.record("two", 2);
        EXPECT_EQ(names(store.entries()), (Names{"two", "one"}));
    }
}
