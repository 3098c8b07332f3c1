#include "platform/photos/photo_catalogue.h"

#include "platform/files/path.h"

#include <cmath>
#include <utility>

namespace platform {

namespace {

constexpr std::string_view identifierSuffix = "/L0/001";
constexpr double from1970To2001 = 978'307'200;
constexpr std::int64_t markOfOurs = 0x4C75'6D76; // "Lumv", where SQLite keeps whose a file is; 0 in a Mac's

// Longer ones are no library's, and a million of them would be too much for any memory.
constexpr std::size_t longestUuid = 64;
constexpr std::size_t longestName = 1024;

/// The table of the assets in `database`; none where the form isn't known. Views and tables that are computed
/// don't count: what stepping through those takes, nobody knows.
std::optional<std::string> assetTable(const SqliteDatabase& database) {
    const SqliteStatement tables(
        database, "SELECT name FROM sqlite_master WHERE type = 'table' AND rootpage > 0"
                  " AND name IN ('ZASSET', 'ZGENERICASSET', 'ZADDITIONALASSETATTRIBUTES') ORDER BY name");
    if (!tables)
        return std::nullopt;
    std::vector<std::string> names;
    while (tables.step() == SqliteStatement::Step::row)
        if (const auto name = tables.text(0))
            names.emplace_back(*name);
    if (names.size() < 2 || names[0] != "ZADDITIONALASSETATTRIBUTES")
        return std::nullopt;
    return names[1]; // ZASSET since macOS 11
}

const std::string isShown =
    "ifnull(ZTRASHEDSTATE, 0) = 0 AND ifnull(ZHIDDEN, 0) = 0 AND ifnull(ZVISIBILITYSTATE, 0) = 0";

/// The library's own identifier of an asset; empty where `identifier` is none.
std::string_view uuidOf(std::string_view identifier) {
    if (!identifier.ends_with(identifierSuffix))
        return {};
    identifier.remove_suffix(identifierSuffix.size());
    return identifier;
}

PhotoMediaType mediaType(std::optional<std::int64_t> kind) {
    switch (kind.value_or(-1)) {
    case 0:
        return PhotoMediaType::image;
    case 1:
        return PhotoMediaType::video;
    case 2:
        return PhotoMediaType::audio;
    default:
        return PhotoMediaType::unknown;
    }
}

std::optional<Date> date(std::optional<double> secondsSince2001) {
    if (!secondsSince2001 || !std::isfinite(*secondsSince2001))
        return std::nullopt;
    return Date(Date::duration(*secondsSince2001 + from1970To2001));
}

/// The statement that lists the assets, and the places of its columns.
std::string listing(const std::string& table) {
    return "SELECT a.Z_PK, a.ZTRASHEDSTATE, a.ZHIDDEN, a.ZVISIBILITYSTATE, a.ZUUID, a.ZKIND, a.ZWIDTH, "
           "a.ZHEIGHT,"
           " a.ZDATECREATED, a.ZFAVORITE, r.ZASSET, r.ZORIGINALFILENAME, r.ZORIGINALFILESIZE FROM "
           + table + " a LEFT JOIN ZADDITIONALASSETATTRIBUTES r ON r.ZASSET = a.Z_PK ORDER BY a.Z_PK";
}
enum Column {
    key,
    trashed,
    hidden,
    visibility,
    uuid,
    kind,
    width,
    height,
    created,
    favorite,
    owner,
    name,
    size
};

/// Gives the asset of a row to `visit`, if it is shown.
void visitRow(const SqliteStatement& row, std::string& identifier,
              const std::function<void(const PhotoAsset&)>& visit) {
    for (const Column column : {trashed, hidden, visibility})
        if (row.integer(column) != 0 && !row.isNull(column))
            return;
    const auto id = row.text(uuid);
    const std::string_view filename = row.text(name).value_or("");
    if (!id || id->empty() || id->size() > longestUuid || filename.size() > longestName)
        return;
    identifier.assign(*id).append(identifierSuffix);
    PhotoAsset asset{identifier,
                     mediaType(row.integer(kind)),
                     row.integer(width).value_or(0),
                     row.integer(height).value_or(0),
                     date(row.real(created)),
                     row.integer(favorite).value_or(0) != 0,
                     std::nullopt};
    if (!row.isNull(owner))
        asset.resource = PhotoResource{filename, row.integer(size)};
    visit(asset);
}

/// Every row by its key. Where pages of a damaged file lead back to each other, keys don't rise for ever.
bool visitRows(const SqliteStatement& row, const std::function<void(const PhotoAsset&)>& visit) {
    constexpr int mostResources = 16;
    std::optional<std::int64_t> last;
    int resources = 0;
    std::string identifier;
    for (;;) {
        const SqliteStatement::Step step = row.step();
        if (step != SqliteStatement::Step::row)
            return step == SqliteStatement::Step::done;
        const auto current = row.integer(key);
        if (!current || (last && *current < *last))
            return false;
        resources = current == last ? resources + 1 : 0;
        if (resources > mostResources)
            return false;
        last = current;
        if (resources == 0) // of several the first
            visitRow(row, identifier, visit);
    }
}

bool isSame(const std::optional<Attributes>& a, const std::optional<Attributes>& b) {
    if (!a || !b)
        return a.has_value() == b.has_value();
    return a->type == b->type && a->sizeBytes == b->sizeBytes && a->modified == b->modified;
}

/// Whether it is marked as made by this system, and does nothing of itself when it is changed.
bool isOurs(const SqliteDatabase& database) {
    return database.number("PRAGMA application_id") == markOfOurs
           && database.number("SELECT count(*) FROM sqlite_master WHERE type = 'trigger'") == 0;
}

/// Within a transaction: false leaves it to be undone.
bool markDeleted(const SqliteDatabase& database, const std::vector<std::string>& identifiers) {
    if (!isOurs(database))
        return false;
    const std::optional<std::string> table = assetTable(database);
    if (!table)
        return false;
    const SqliteStatement update(database, "UPDATE " + *table + " SET ZTRASHEDSTATE = 1, ZTRASHEDDATE = ?2"
                                               + " WHERE ZUUID = ?1 AND " + isShown);
    if (!update)
        return false;
    update.bind(2, secondsSince1970(now()) - from1970To2001);
    for (const std::string& identifier : identifiers) {
        update.bind(1, uuidOf(identifier));
        // Two assets of one identifier can't be told apart, and only one of them was meant.
        if (update.step() != SqliteStatement::Step::done || database.changes() > 1)
            return false;
        update.reset();
    }
    return true;
}

} // namespace

std::string photoLibraryFolder(const Disk& disk) {
    return disk.inHome("Pictures/Photos Library.photoslibrary");
}

Result<PhotoCatalogue> PhotoCatalogue::open(const Disk& disk) {
    Result<Place> place = disk.place(joined(photoLibraryFolder(disk), "database/Photos.sqlite"));
    if (!place)
        return place.error();
    PhotoCatalogue catalogue(std::move(*place));
    catalogue.m_asOpened = catalogue.stamps();
    Result<Descriptor> file = Disk::openFile(catalogue.m_place);
    if (!file)
        return file.error();
    catalogue.m_file = std::move(*file);
    std::string& name = catalogue.m_place.name;
    name += "-wal";
    Result<Descriptor> log = Disk::openFile(catalogue.m_place);
    name.resize(name.size() - 4);
    if (log)
        catalogue.m_log = std::move(*log);
    else if (catalogue.m_asOpened[1].attributes) // without it the rest is not what the library holds
        return log.error();
    catalogue.m_database = SqliteDatabase::openToRead(catalogue.m_file.number(), catalogue.m_log.number());
    return catalogue;
}

PhotoCatalogue::Stamps PhotoCatalogue::stamps() const {
    Stamps stamps;
    const char* const endings[] = {"", "-wal", "-journal"};
    for (std::size_t i = 0; i < stamps.size(); ++i) {
        const std::string name = m_place.name + endings[i];
        stamps[i] = {system::attributesAt(m_place.folder.number(), name.c_str()),
                     system::identityAt(m_place.folder.number(), name.c_str())};
    }
    return stamps;
}

/// A journal that isn't empty says that a change is under way.
bool PhotoCatalogue::isUnchanged() const {
    const Stamps now = stamps();
    for (std::size_t i = 0; i < now.size(); ++i)
        if (now[i].identity != m_asOpened[i].identity || !isSame(now[i].attributes, m_asOpened[i].attributes))
            return false;
    return !now[2].attributes || now[2].attributes->sizeBytes == 0;
}

PhotoReading PhotoCatalogue::reading(bool isWhole) const {
    if (!isUnchanged())
        return PhotoReading::changed;
    return isWhole ? PhotoReading::whole : PhotoReading::failed;
}

PhotoReading PhotoCatalogue::visitAssets(const std::function<void(const PhotoAsset&)>& visit) const {
    const std::optional<std::string> table = *m_database ? assetTable(*m_database) : std::nullopt;
    if (!table)
        return reading(false);
    const SqliteStatement rows(*m_database, listing(*table));
    return reading(rows && visitRows(rows, visit));
}

PhotoReading PhotoCatalogue::findOriginal(std::string_view identifier,
                                          std::optional<Original>& original) const {
    original.reset();
    const std::optional<std::string> table = *m_database ? assetTable(*m_database) : std::nullopt;
    if (!table)
        return reading(false);
    const SqliteStatement row(*m_database, "SELECT ZDIRECTORY, ZFILENAME FROM " + *table
                                               + " WHERE ZUUID = ? AND " + isShown + " LIMIT 1");
    if (!row)
        return reading(false);
    row.bind(1, uuidOf(identifier));
    const SqliteStatement::Step step = row.step();
    if (step == SqliteStatement::Step::row)
        original = Original{std::string(row.text(0).value_or("")), std::string(row.text(1).value_or(""))};
    return reading(step != SqliteStatement::Step::failed);
}

bool PhotoCatalogue::moveToRecentlyDeleted(const Disk& disk, const std::vector<std::string>& identifiers) {
    // Only what is known to be ours is opened for changing at all: that alone already leaves traces. Nor does
    // SQLite get to see a journal, which can name any file of the host to be removed.
    const Result<PhotoCatalogue> catalogue = open(disk);
    if (!catalogue || !*catalogue->m_database || !isOurs(*catalogue->m_database) || !catalogue->isUnchanged())
        return false;
    // SQLite takes a path, and what lies there must still be what was looked at.
    const std::string path = system::hostPath(catalogue->m_file.number());
    const SqliteDatabase database = SqliteDatabase::openToChange(path);
    if (!database || !catalogue->isUnchanged()
        || system::identityAtHost(path.c_str()) != catalogue->m_asOpened[0].identity)
        return false;
    // With a log, a change that is cut short leaves nothing to be repaired.
    return database.run("PRAGMA journal_mode = WAL") && database.run("BEGIN IMMEDIATE")
           && markDeleted(database, identifiers) && database.run("COMMIT");
}

} // namespace platform
