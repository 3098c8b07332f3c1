#include "tools/sample_disk/photo_library.h"

#include "tools/sample_disk/photo_catalogue.h"
#include "tools/sample_disk/picture_file.h"
#include "tools/sample_disk/scenes.h"

#include <algorithm>
#include <ctime>
#include <iterator>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace sample_disk {

namespace {

using enum Scene;
enum Format { jpeg, png, film };

/// Differences of an asset from a visible one whose file is in the library.
enum Mark : unsigned {
    favorite = 1,
    hidden = 2,
    trashed = 4,
    inCloud = 8,  ///< the file is not on the disk
    reduced = 16, ///< only a small rendition of the file is on the disk
};

struct Copy {
    std::string_view name;
    unsigned marks = 0;
};

/// One picture or film, and its copies in the library. Equal dates, dimensions and sizes make them
/// duplicates.
struct Shot {
    Scene scene;
    Format format;
    int bytes; ///< of each file; most of it is a hole after the picture
    std::optional<double> daysAgo;
    Copy copies[4]; ///< those with a name
};

constexpr auto undated = std::nullopt;

constexpr Shot shots[] = {
    {shore, jpeg, 3'214'880, 96.598, {{"IMG_0042.HEIC", favorite}, {"IMG_0042 (1).HEIC"}}},
    {portrait, jpeg, 2'871'406, 141.462, {{"IMG_0117.JPG"}, {"IMG_0117.JPG"}, {"IMG_0117.JPG"}}},
    {blossom, jpeg, 4'907'133, 530.742, {{"DSC_1873.JPG"}, {"DSC_1873 2.JPG"}, {"Rose for the card.jpg"}}},
    {night, film, 83'330'112, 325.999, {{"IMG_0358.MOV"}, {"IMG_0358.MOV"}}},
    {portrait, film, 17'204'668, 871.927, {{"Première danse.mov"}, {"VID-0007.mp4"}, {"IMG_2970.MOV"}}},
    {hills, jpeg, 3'660'291, 702.397, {{"Été à Collioure.jpeg"}, {"夏の山.jpeg"}, {"Лето.JPG"}}},
    {meal, jpeg, 1'988'474, 63.543, {{"🍝 dimanche.HEIC"}, {"Lunch after the move, before the dishes.HEIC"}}},
    {screenshot, png, 904'215, undated, {{"Scan 14.png"}, {"Scan 14.png"}, {"Scan 14 copie.png"}}},
    {screenshot, png, 1'402'377, undated, {{"image.png"}, {"image.png"}}},
    {screenshot, png, 2'240'519, 34.695, {{"IMG_5120.PNG"}, {"IMG_5120.PNG"}, {"IMG_5120 (1).PNG"}}},
    {night, jpeg, 2'506'038, 18.881, {{"IMG_5391.HEIC"}, {"IMG_5391 (1).HEIC"}}},
    {portrait, jpeg, 1'120'774, 13'050.5, {{"Oma 1988.jpg"}, {"scan0007.jpg"}}},
    {shore, jpeg, 1'064'902, 19'800.25, {{"New year.jpg"}, {"New year 2.jpg"}}},
    {hills, jpeg, 4'118'640, 411.342, {{"IMG_3302.HEIC", inCloud}, {"IMG_3302 (1).HEIC", inCloud}}},
    {blossom, jpeg, 3'377'925, 468.648, {{"IMG_3010.HEIC"}, {"3010.HEIC", reduced}}},
    {meal, jpeg, 2'090'316, 212.823, {{"IMG_4127.HEIC"}, {"IMG_4127.HEIC", hidden}, {"IMG_4127 (1).HEIC"}}},
    {shore, jpeg, 3'850'027, 389.751, {{"IMG_3377.HEIC", trashed}, {"IMG_3377.HEIC"}, {"IMG_3377 (1).HEIC"}}},
    {portrait, jpeg, 2'655'180, 251.434, {{"IMG_3911.HEIC"}, {"IMG_3911 (1).HEIC", favorite}}},
    {hills, jpeg, 5'203'461, 1'290.5, {{"P1040877.JPG", inCloud}, {"P1040877.JPG"}}},
    // No duplicates: hidden or trashed copies don't count, and sizes and dates differ.
    {portrait, jpeg, 2'380'112, 120.834, {{"IMG_4690.HEIC"}, {"IMG_4690.HEIC", hidden}}},
    {blossom, jpeg, 2'999'054, 129.361, {{"IMG_4655.HEIC"}, {"IMG_4655.HEIC", trashed}}},
    {meal, jpeg, 1'777'215, 620.840, {{"IMG_2481.HEIC"}}},
    {meal, jpeg, 1'777'216, 620.840, {{"IMG_2481 (1).HEIC"}}},
};

class Library {
public:
    Library(DiskWriter& disk, Random& random) : m_disk(disk), m_random(random) {}

    void add(const Shot& shot) {
        const Canvas canvas = paint(shot.scene, m_random);
        const std::string picture = shot.format == png ? pngFile(canvas) : jpegFile(canvas);
        const int ageDays = std::clamp(static_cast<int>(shot.daysAgo.value_or(oldest)) + 1, newest, oldest);
        for (const Copy& copy : shot.copies) {
            if (copy.name.empty())
                break;
            const std::string uuid = m_random.uuid();
            const std::string folder = uuid.substr(0, 1) + '/';
            const std::string file = uuid + extensions[shot.format];
            // For a film, the library has a rendition of one frame. Nothing decodes the film itself.
            if ((copy.marks & (inCloud | reduced)) == 0)
                m_disk.file(place + "originals/" + folder + file, shot.bytes, ageDays,
                            shot.format == film ? std::string() : picture);
            if ((copy.marks & reduced) != 0 || (shot.format == film && (copy.marks & inCloud) == 0))
                m_disk.text(place + "resources/derivatives/" + folder + uuid + "_1_105_c.jpeg", picture,
                            ageDays);
            m_rows.push_back({.uuid = uuid,
                              .size = std::to_string(shot.bytes),
                              .created = created(shot),
                              .width = std::to_string(canvas.width()),
                              .height = std::to_string(canvas.height()),
                              .kind = shot.format == film ? "1" : "0",
                              .name = quoted(copy.name),
                              .favorite = (copy.marks & favorite) != 0 ? "1" : "0",
                              .hidden = (copy.marks & hidden) != 0 ? "1" : "0",
                              .trashed = (copy.marks & trashed) != 0 ? "1" : "0",
                              .directory = quoted(uuid.substr(0, 1)),
                              .file = quoted(file)});
        }
    }

    /// Writes the rows in random order: in a library, copies are added long after their originals.
    void writeCatalogue() {
        for (std::size_t left = m_rows.size(); left > 1; --left)
            std::swap(m_rows[left - 1], m_rows[m_random.next() % left]);
        const std::string path = place + "database/Photos.sqlite";
        PhotoCatalogueWriter catalogue(m_disk.hostPath(path, newest));
        catalogue.run("BEGIN");
        for (const CataloguedAsset& row : m_rows)
            catalogue.add(row);
        catalogue.run("COMMIT");
        catalogue.close();
        m_disk.setAge(path, newest);
    }

private:
    std::string created(const Shot& shot) const {
        if (!shot.daysAgo)
            return "NULL";
        constexpr std::time_t from1970To2001 = 978'307'200;
        constexpr double secondsPerDay = 86'400;
        return std::to_string(static_cast<double>(m_disk.today() - from1970To2001)
                              - secondsPerDay * *shot.daysAgo);
    }

    static constexpr int newest = 1; ///< in days, the ages that a file of the library can have
    static constexpr int oldest = 3'000;
    static constexpr const char* extensions[] = {".jpeg", ".png", ".mov"};
    static inline const std::string place = "~/Pictures/Photos Library.photoslibrary/";

    DiskWriter& m_disk;
    Random& m_random;
    std::vector<CataloguedAsset> m_rows;
};

/// Returns one of the photos that are in the library once, each of another day. `name` is for its file name.
Shot otherShot(int number, std::string& name, Random& random) {
    constexpr Scene scenes[] = {shore, hills, portrait, portrait, night, blossom, meal, screenshot};
    const Scene scene = scenes[random.next() % std::size(scenes)];
    const Format format = scene == screenshot ? png : random.chance(8) ? film : jpeg;
    constexpr const char* extensions[] = {".HEIC", ".PNG", ".MOV"};
    name = "IMG_" + std::to_string(5'600 - 19 * number - random.between(0, 18)) + extensions[format];
    const int percent = random.between(1, 100);
    const unsigned marks = percent <= 12 ? inCloud : percent <= 18 ? reduced : percent <= 28 ? favorite : 0U;
    return {scene,
            format,
            random.between(900'000, 5'400'000),
            8 * number + 3 + random.between(1, 99) / 100.0,
            {{name, marks}}};
}

} // namespace

void makePhotoLibrary(DiskWriter& disk, Random& random) {
    Library library(disk, random);
    for (const Shot& shot : shots)
        library.add(shot);
    constexpr int otherShots = 200;
    for (int number = 0; number < otherShots; ++number) {
        std::string name;
        library.add(otherShot(number, name, random));
    }
    library.writeCatalogue();
}

} // namespace sample_disk
