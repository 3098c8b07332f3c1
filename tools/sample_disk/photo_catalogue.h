#pragma once

#include <string>
#include <string_view>

struct sqlite3;

namespace sample_disk {

/// One photo or video in a catalogue. The members are SQL expressions, except for the UUID, so that a column
/// can have any value. The defaults don't differ, so that any two assets are duplicates.
struct CataloguedAsset {
    std::string uuid;
    std::string size = "1000";
    std::string created = "700000000.5"; ///< seconds since 2001
    std::string width = "40";
    std::string height = "30";
    std::string kind = "0"; ///< 0: photo, 1: video
    std::string name = "'IMG_1.JPG'";
    std::string favorite = "0";
    std::string hidden = "0";
    std::string trashed = "0";
    std::string visibility = "0";  ///< 2: only in a shared album
    std::string directory = "'A'"; ///< below originals/
    std::string file = {};         ///< empty: the UUID with ".jpeg"
};

/// Returns the text as an SQL literal.
std::string quoted(std::string_view text);

/// Writes the catalogue of a photo library, an SQLite file, and keeps it open. All functions throw
/// std::runtime_error.
class PhotoCatalogueWriter {
public:
    enum class Form { macOS10, macOS11 };
    enum class Maker {
        mac,
        lumvale
    };                                ///< marked by SQLite's application_id; the product changes its own only
    enum class Log { none, pending }; ///< pending: all content stays in a write-ahead log

    /// `hostFile` must be missing, its folder must exist.
    explicit PhotoCatalogueWriter(const std::string& hostFile, Maker maker = Maker::lumvale,
                                  Log log = Log::none, Form form = Form::macOS11);
    ~PhotoCatalogueWriter();
    PhotoCatalogueWriter(const PhotoCatalogueWriter&) = delete;
    PhotoCatalogueWriter& operator=(const PhotoCatalogueWriter&) = delete;

    void add(const CataloguedAsset& asset);
    void run(const std::string& sql);
    void close();

protected:
    sqlite3* database() const { return m_database; }

private:
    std::string m_assets; ///< the name of the table
    sqlite3* m_database = nullptr;
    int m_key = 0;
};

} // namespace sample_disk
