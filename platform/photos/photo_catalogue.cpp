#include "platform/photos/photo_catalogue.h"

#include "platform/files/path.h"

#include <cmath>
#include <utility>

namespace platform {

namespace {

constexpr std::string_view identifierSuffix = "/L0/001";
constexpr double from1970To2001 = 978'307'200;
constexpr std::int64_t lumvaleApplicationId = 0x4C75'6D76; // "Lumv" (SQLite's application_id); a Mac's is 0

// Real libraries have shorter ones. The limit bounds the memory for a million assets.
constexpr std::size_t maxUuidBytes = 64;
constexpr std::size_t maxNameBytes = 1024;

/// Returns the name of the table of assets, or nullopt when the schema is unknown. Ignores views and virtual
/// tables, whose cost is unbounded.
std::optional<std::string> assetTable(const SqliteDatabase& database) {
    SqliteStatement tables(
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

/// Returns the UUID of an asset's identifier, or an empty string when `identifier` is malformed.
std::string_view uuidOf(std::string_view identifier) {
    if (!identifier.ends_with(identifierSuffix))
        return {};
    identifier.remove_suffix(identifierSuffix.size());
    return identifier;
}

/// Values of the column ZKIND.
enum Kind : std::int64_t { unknownKind = -1, imageKind = 0, videoKind = 1, audioKind = 2 };

PhotoMediaType mediaType(std::optional<std::int64_t> kind) {
    switch (kind.value_or(unknownKind)) {
    case imageKind:
        return PhotoMediaType::image;
    case videoKind:
        return PhotoMediaType::video;
    case audioKind:
        return PhotoMediaType::audio;
    default:
        return PhotoMediaType::unknown;
    }
}

/// Returns the type of an asset's original. Callers treat all types but photo and video the same.
PhotoResourceType originalType(PhotoMediaType type) {
    switch (type) {
    case PhotoMediaType::image:
        return PhotoResourceType::photo;
    case PhotoMediaType::video:
        return PhotoResourceType::video;
    default:
        return PhotoResourceType::audio;
    }
}

std::optional<Date> date(std::optional<double> secondsSince2001) {
    if (!secondsSince2001 || !std::isfinite(*secondsSince2001))
        return std::nullopt;
    return Date(Date::duration(*secondsSince2001 + from1970To2001));
}

/// Returns the statement that lists the assets, with the columns of `Column`.
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

/// Calls `visit` with the asset of a row, if it is visible. Returns false when `visit` does.
bool visitRow(const SqliteStatement& row, std::string& identifier,
              const std::function<bool(const PhotoAsset&)>& visit) {
    for (const Column column : {trashed, hidden, visibility})
        if (row.integer(column) != 0 && !row.isNull(column))
            return true;
    const auto id = row.text(uuid);
    const std::string_view filename = row.text(name).value_or("");
    if (!id || id->empty() || id->size() > maxUuidBytes || filename.size() > maxNameBytes)
        return true;
    identifier.assign(*id).append(identifierSuffix);
    PhotoAsset asset{identifier,
                     mediaType(row.integer(kind)),
                     row.integer(width).value_or(0),
                     row.integer(height).value_or(0),
                     date(row.real(created)),
                     row.integer(favorite).value_or(0) != 0,
                     {}};
    const PhotoResource original{originalType(asset.mediaType), filename, row.integer(size)};
    if (!row.isNull(owner))
        asset.resources = std::span(&original, 1);
    return visit(asset);
}

/// Visits all rows. Fails when keys don't ascend: a damaged file can have cyclic pages.
bool visitRows(SqliteStatement& row, const std::function<bool(const PhotoAsset&)>& visit) {
    constexpr int maxResources = 16;
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
        if (resources > maxResources)
            return false;
        last = current;
        if (resources == 0) // the first of several resources
            if (!visitRow(row, identifier, visit))
                return false;
    }
}

bool isSame(const std::optional<Attributes>& a, const std::optional<Attributes>& b) {
    if (!a || !b)
        return a.has_value() == b.has_value();
    return a->type == b->type && a->sizeBytes == b->sizeBytes && a->modified == b->modified;
}

/// Returns true for a catalogue with this program's application ID and without triggers.
bool isOurs(const SqliteDatabase& database) {
    return database.number("PRAGMA application_id") == lumvaleApplicationId
           && database.number("SELECT count(*) FROM sqlite_master WHERE type = 'trigger'") == 0;
}

/// Runs within a transaction, which the caller must roll back unless this returns `done`.
PhotoDeletion markDeleted(const SqliteDatabase& database, const std::vector<std::string>& identifiers,
                          Progress& progress) {
    if (!isOurs(database))
        return PhotoDeletion::failed;
    const std::optional<std::string> table = assetTable(database);
    if (!table)
        return PhotoDeletion::failed;
    SqliteStatement update(database, "UPDATE " + *table + " SET ZTRASHEDSTATE = 1, ZTRASHEDDATE = ?2"
                                         + " WHERE ZUUID = ?1 AND " + isShown);
    if (!update)
        return PhotoDeletion::failed;
    update.bind(2, secondsSince1970(now()) - from1970To2001);
    progress.beginPhase(static_cast<std::int64_t>(identifiers.size()));
    for (const std::string& identifier : identifiers) {
        update.bind(1, uuidOf(identifier));
        // An identifier must not match several assets: only one of them was chosen.
        if (update.step() != SqliteStatement::Step::done || database.changes() > 1)
            return PhotoDeletion::failed;
        update.reset();
        progress.add(1, 0);
        if (progress.isStopped())
            return PhotoDeletion::stopped;
    }
    return PhotoDeletion::done;
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
    else if (catalogue.m_asOpened[1].attributes) // an unreadable log: the database alone is outdated
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

/// A journal that isn't empty belongs to an unfinished transaction.
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

PhotoReading PhotoCatalogue::visitAssets(const std::function<bool(const PhotoAsset&)>& visit) const {
    const std::optional<std::string> table = *m_database ? assetTable(*m_database) : std::nullopt;
    if (!table)
        return reading(false);
    SqliteStatement rows(*m_database, listing(*table));
    return reading(rows && visitRows(rows, visit));
}

PhotoReading PhotoCatalogue::findOriginal(std::string_view identifier,
                                          std::optional<Original>& original) const {
    original.reset();
    const std::optional<std::string> table = *m_database ? assetTable(*m_database) : std::nullopt;
    if (!table)
        return reading(false);
    SqliteStatement row(*m_database, "SELECT ZDIRECTORY, ZFILENAME FROM " + *table + " WHERE ZUUID = ? AND "
                                         + isShown + " LIMIT 1");
    if (!row)
        return reading(false);
    row.bind(1, uuidOf(identifier));
    const SqliteStatement::Step step = row.step();
    if (step == SqliteStatement::Step::row)
        original = Original{std::string(row.text(0).value_or("")), std::string(row.text(1).value_or(""))};
    return reading(step != SqliteStatement::Step::failed);
}

bool PhotoCatalogue::isChangeable(const Disk& disk) {
    const Result<PhotoCatalogue> catalogue = open(disk);
    return !disk.isReadOnly() && catalogue && *catalogue->m_database && isOurs(*catalogue->m_database);
}

PhotoDeletion PhotoCatalogue::moveToRecentlyDeleted(const Disk& disk,
                                                    const std::vector<std::string>& identifiers,
                                                    Progress* progress) {
    // Checked before opening for writing, which alone can modify files, and before SQLite could find a
    // journal, which can name any file of the host for removal.
    const Result<PhotoCatalogue> catalogue = open(disk);
    if (!catalogue || !*catalogue->m_database || !isOurs(*catalogue->m_database) || !catalogue->isUnchanged())
        return PhotoDeletion::failed;
    // SQLite opens by path: the file there must still be the one that was checked.
    const std::string path = system::hostPath(catalogue->m_file.number());
    const SqliteDatabase database = SqliteDatabase::openToChange(path);
    if (!database || !catalogue->isUnchanged()
        || system::identityAtHost(path.c_str()) != catalogue->m_asOpened[0].identity)
        return PhotoDeletion::failed;
    // With a write-ahead log, an interrupted change needs no repair.
    if (!database.run("PRAGMA journal_mode = WAL") || !database.run("BEGIN IMMEDIATE"))
        return PhotoDeletion::failed;
    Progress uncounted;
    const PhotoDeletion outcome = markDeleted(database, identifiers, progress ? *progress : uncounted);
    if (outcome != PhotoDeletion::done)
        return outcome; // closing the database rolls back
    return database.run("COMMIT") ? PhotoDeletion::done : PhotoDeletion::failed;
}

} // namespace platform
