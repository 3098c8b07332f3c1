#pragma once

#include "tests/support/temporary_disk.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

struct sqlite3;

/// What a test says of a photo or video in a catalogue. What it doesn't say is the same for all, so that any
/// two are duplicates. Texts of SQL, so that a column can hold anything.
struct CataloguedAsset {
    std::string uuid;
    std::string size = "1000";
    std::string created = "700000000.5"; ///< seconds since 2001
    std::string width = "40";
    std::string height = "30";
    std::string kind = "0";
    std::string name = "'IMG_1.JPG'";
    std::string favorite = "0";
    std::string hidden = "0";
    std::string trashed = "0";
    std::string visibility = "0";
    std::string directory = "'A'";
    std::string file = {}; ///< empty: the UUID with ".jpeg"
};

/// A photo library's catalogue in the home of a disk, written as a Mac's or the sample's is, and open as long
/// as this lives. With a log, what is written waits in it.
class CatalogueWriter {
public:
    enum class Form { macOS10, macOS11 };
    enum class Maker { mac, lumvale };
    enum class Log { none, pending };

    static constexpr const char* folder = "~/Pictures/Photos Library.photoslibrary";
    static constexpr const char* file = "~/Pictures/Photos Library.photoslibrary/database/Photos.sqlite";

    explicit CatalogueWriter(const TemporaryDisk& disk, Maker maker = Maker::mac, Log log = Log::none,
                             Form form = Form::macOS11);
    ~CatalogueWriter();
    CatalogueWriter(const CatalogueWriter&) = delete;
    CatalogueWriter& operator=(const CatalogueWriter&) = delete;

    void add(const CataloguedAsset& asset);
    void run(const std::string& sql);          ///< ends the test when it fails
    std::string value(const std::string& sql); ///< the first one, as text

    /// From here on it is as if whoever wrote it had been cut off: what waits in the log stays there.
    void abandon();

private:
    std::string m_hostFile;
    std::string m_assets; ///< the table
    sqlite3* m_database = nullptr;
    int m_key = 0;
};
