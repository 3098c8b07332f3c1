#include "app/history/history_store.h"

#include "tests/support/temporary_disk.h"

#include <cmath>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace {

using Names = std::vector<std::string>;

Names names(const std::vector<HistoryEntry>& entries) {
    Names names;
    for (const HistoryEntry& entry : entries)
        names.push_back(entry.name);
    return names;
}

/// An array of one entry with these JSON values.
std::string entry(const std::string& date, const std::string& name, const std::string& sizeBytes) {
    return "[{\"date\":" + date + ",\"name\":" + name + ",\"sizeBytes\":" + sizeBytes + "}]";
}

const std::string good = R"([{"date":700000000.25,"name":"Caché","sizeBytes":12}])";
const std::string file = "~/Library/Application Support/Lumvale/historique.json";

} // namespace

TEST(HistoryFile, IsACompactArrayWithDatesSince2001AndEscapedNames) {
    const HistoryEntry cache{platform::Date(1'678'307'200.25s), "Caché", 12};
    EXPECT_EQ(cache.id(), "1678307200.25-Caché");
    EXPECT_EQ(encodeHistory({cache}), good);
    const std::string exact = entry("700000000.1234567", "\"n\"", "1");
    EXPECT_EQ(encodeHistory(*decodeHistory(exact)), exact);
    EXPECT_EQ(encodeHistory({{platform::Date(978'307'200s), "\"\\/\n\x1f\x7f", -1}}),
              entry("0", "\"\\\"\\\\/\\u000a\\u001f\x7f\"", "-1"));
}

TEST(HistoryFile, IsReadOnlyIfEveryEntryIsValid) {
    const std::string deep = std::string(300'000, '[') + std::string(300'000, ']');
    const std::string readable[]{
        " [ \n ] ",
        R"([{"sizeBytes":1,"more":[{"name":null,"date":[]},1],"name":"","less":{},"x":1e9,"date":1}])",
        "[{\"other\":" + deep + ",\"date\":1,\"name\":\"n\",\"sizeBytes\":1}]",
        entry("18446744073709551615", R"("\u0000\ud83d\ude00")", "-9223372036854775808")};
    for (const std::string& json : readable)
        EXPECT_TRUE(decodeHistory(json)) << json.substr(0, 200);

    const std::string unreadable[]{"",
                                   "[null]",
                                   "[" + good + "]",
                                   good + "x",
                                   good.substr(0, good.size() - 1),
                                   deep,
                                   entry("\"1\"", "\"n\"", "1"),
                                   entry("1", "{\"name\":\"n\"}", "1"),
                                   entry("1", "\"\xff\"", "1"),
                                   entry("1", "\"n\"", "1.5"),
                                   entry("1", "\"n\"", "9223372036854775808"),
                                   R"([{"Date":1,"name":"n","sizeBytes":1}])",
                                   R"([{"date":1,"name":"n"}])"};
    for (const std::string& json : unreadable)
        EXPECT_FALSE(decodeHistory(json)) << json.substr(0, 200);
}

TEST(HistoryStore, SortsByDateDropsEntriesOlderThan30DaysAndSavesOnlyWhatIsRecorded) {
    const TemporaryDisk disk;
    const platform::Date base(
        std::chrono::duration<double>(std::floor(platform::secondsSince1970(platform::now()))));
    const std::string before =
        encodeHistory({{base - 1s, "a", 1}, {base, "newest", 1}, {base - 1s, "b", 1}, {base - 2s, "old", 1}});
    disk.write(file, before);
    HistoryStore store(disk.disk());
    EXPECT_EQ(names(store.entries()), (Names{"newest", "a", "b", "old"}));
    store.prune(base - 1s + std::chrono::days(30)); // to the second
    EXPECT_EQ(names(store.entries()), (Names{"newest", "a", "b"}));
    EXPECT_EQ(disk.read(file), before);
    store.record("n\xffw\n", 3);
    EXPECT_EQ(names(store.entries()), (Names{"n\uFFFDw\n", "newest", "a", "b"}));
    EXPECT_EQ(decodeHistory(disk.read(file)), store.entries());
    disk.write(file, "["); // an unreadable file is replaced
    HistoryStore(disk.disk()).record("first", 1);
    EXPECT_EQ(names(HistoryStore(disk.disk()).entries()), Names{"first"});
}

TEST(HistoryStore, KeepsEntriesInMemoryIfTheFileCannotBeReadOrWritten) {
    for (const char* obstacle : {"/inside", " |"}) {
        const TemporaryDisk disk;
        disk.make(file + obstacle);
        HistoryStore store(disk.disk());
        store.record("one", 1);
        store.record("two", 2);
        EXPECT_EQ(names(store.entries()), (Names{"two", "one"})) << obstacle;
    }
}

TEST(HistoryStore, RecordsSeveralDeletionsAtOnceBehindALink) {
    const TemporaryDisk disk;
    disk.make(file + " -> ../outside.json");
    HistoryStore(disk.disk()).record({{"first", 1}, {"last", 2}});
    EXPECT_EQ(names(HistoryStore(disk.disk()).entries()), (Names{"last", "first"}));
    const std::string longest(255, 'x');
    HistoryStore(disk.disk()).record(std::vector<HistoryStore::Deletion>(100'001, {longest, 2}));
    EXPECT_EQ(HistoryStore(disk.disk()).entries().size(), 100'000U);
    EXPECT_TRUE(disk.exists("~/Library/Application Support/outside.json"));
}
