#include "platform/files/path.h"

#include <string>

#include <gtest/gtest.h>

TEST(Path, TakesTheLastNameApart) {
    const struct {
        const char *path, *last, *stem, *extension;
    } cases[]{{"/a/b/c.txt", "c.txt", "c", "txt"},
              {"/a/b.app/", "b.app", "b", "app"},
              {"b.app", "b.app", "b", "app"},
              {"/", "/", "/", ""},
              {"//", "/", "/", ""},
              {"", "", "", ""},
              {"/a/.app", ".app", ".app", ""},
              {"/a/..app", "..app", "..app", ""},
              {"/a/a..app", "a..app", "a.", "app"},
              {"/a.b/c", "c", "c", ""},
              {"/a/Read me. now", "Read me. now", "Read me", " now"},
              {"/a/\xFF.\xFE", "\xFF.\xFE", "\xFF", "\xFE"}};
    for (const auto& [path, last, stem, extension] : cases) {
        EXPECT_EQ(platform::lastComponent(path), last) << path;
        EXPECT_EQ(platform::stem(path), stem) << path;
        EXPECT_EQ(platform::extension(path), extension) << path;
    }
}

TEST(Path, StandardisesTextAlone) {
    const std::pair<std::string, const char*> cases[]{{"/", "/"},
                                                      {"/a//b///c/", "/a/b/c"},
                                                      {"/a/./b/.", "/a/b"},
                                                      {"/a/../b", "/b"},
                                                      {"/..", "/"},
                                                      {"/../../a", "/a"},
                                                      {"/a/...", "/a/..."},
                                                      {"/private/tmp", "/private/tmp"},
                                                      {"", ""},
                                                      {"a/../b", "a/../b"},
                                                      {"~/x/", "~/x/"},
                                                      {"/\xFF/../\xFE//", "/\xFE"},
                                                      {std::string("/a\0/../b", 8), "/b"}};
    for (const auto& [path, standard] : cases) {
        EXPECT_EQ(platform::standardized(path), standard) << path;
        EXPECT_EQ(platform::standardized(standard), standard) << path;
    }
}

TEST(Path, KnowsWhatLiesBelowWhat) {
    const struct {
        const char *path, *folder;
        bool below;
    } cases[]{{"/a/b", "/a", true}, {"/a/b/c", "/a", true},  {"/a", "/a", false}, {"/a/", "/a", false},
              {"/ab", "/a", false}, {"/a b/c", "/a", false}, {"/", "/a", false},  {"/a", "/", true},
              {"/", "/", false},    {"", "/", false},        {"a/b", "/", false}, {"/A/b", "/a", false}};
    for (const auto& [path, folder, below] : cases)
        EXPECT_EQ(platform::isBelow(path, folder), below) << path << " below " << folder;
    for (const auto& [folder, path] : {std::pair("/a", "/a/b"), {"/a/", "/a/b"}, {"/", "/b"}})
        EXPECT_EQ(platform::joined(folder, "b"), path);
}
