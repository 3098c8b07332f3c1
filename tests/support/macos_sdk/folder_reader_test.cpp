#include "platform/files/folder_reader.h"
#include "platform/walk/walk.h"
#include "tests/support/temporary_disk.h"

#include <cstring>
#include <map>

#include <gtest/gtest.h>

// Runs with the folder reader of macOS on a double of its system call.

using namespace platform;

TEST(MacosFolderReader, ReadsTypeHiddenFlagAndAttributesWithTheName) {
    const TemporaryDisk disk;
    std::map<std::string, EntryType> types;
    for (int i = 0; i < 40; ++i) { // some of which lack attributes
        const std::string n = std::to_string(i);
        disk.make({"~/file" + n + " " + n, "~/folder" + n + "/", "~/link" + n + " -> target"});
        types.insert({{"file" + n, EntryType::file},
                      {"folder" + n, EntryType::folder},
                      {"link" + n, EntryType::link}});
    }
    disk.setMode("~/file7", 01644);
    const Result<Descriptor> home = disk.disk().openFolder(at("~"));
    FolderReader reader;
    reader.start(home->number());
    std::size_t entries = 0;
    std::size_t withAttributes = 0;
    while (const FolderEntry* entry = reader.next()) {
        ++entries;
        SCOPED_TRACE(entry->name);
        EXPECT_EQ(entry->name.size(), std::strlen(entry->name.data()));
        EXPECT_EQ(entry->isHidden, entry->name == "file7");
        EXPECT_TRUE(!entry->typeIsKnown || entry->type == types.at(std::string(entry->name)));
        if (!entry->attributes)
            continue;
        ++withAttributes;
        const auto read = attributesOf(disk.disk(), at("~/") + std::string(entry->name));
        EXPECT_EQ(entry->attributes->type, read->type);
        EXPECT_EQ(entry->attributes->sizeBytes, read->sizeBytes);
        EXPECT_EQ(entry->attributes->modified, read->modified);
    }
    EXPECT_EQ(reader.failure(), 0);
    EXPECT_EQ(entries, types.size());
    EXPECT_GT(withAttributes, entries / 3);
    EXPECT_LT(withAttributes, entries);
}

TEST(MacosFolderReader, ReadsNamesAndTypesOfAFolderThatCannotBeSearched) {
    const OrdinaryUser user;
    const TemporaryDisk disk;
    disk.make({"~/folder/file", "~/folder/inner/"});
    disk.setMode("~/folder", 0444);
    const Result<Descriptor> folder = disk.disk().openFolder(at("~/folder"));
    FolderReader reader;
    reader.start(folder->number());
    std::map<std::string, EntryType> types;
    while (const FolderEntry* entry = reader.next())
        types.emplace(entry->name, entry->type);
    EXPECT_EQ(types,
              (std::map<std::string, EntryType>{{"file", EntryType::file}, {"inner", EntryType::folder}}));
}
