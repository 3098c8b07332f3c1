#include "tools/sample_disk/data/photos.h"
#include "tools/sample_disk/areas.h"
#include "tools/sample_disk/photo_catalogue.h"
#include "tools/sample_disk/pictures/formats.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace SampleDisk {

namespace {

constexpr double secondsPerDay = 86'400;

std::string_view extensionOf(PhotoFormat format) {
    switch (format) {
    case PhotoFormat::jpeg:
        return "jpeg";
    case PhotoFormat::png:
        return "png";
    case PhotoFormat::film:
        return "mov";
    }
    return {};
}

std::string contentOf(const Shot& shot, PhotoFormat format, Random& random) {
    switch (format) {
    case PhotoFormat::jpeg:
        return jpeg(paint(shot.scene, random));
    case PhotoFormat::png:
        return png(paint(shot.scene, random));
    case PhotoFormat::film:
        return film(shot.bytes);
    }
    return {};
}

/// A photo library being filled.
class Library {
public:
    Library(Folder& folder, Random& random)
        : m_originals(folder.folder("originals", newest)),
          m_renditions(folder.folder("resources/derivatives", newest)),
          m_today(static_cast<double>(folder.today())),
          m_random(random) {}

    void add(const Shot& shot) {
        const Random ownRandom(m_random.next(), "picture");
        const std::optional<double> date = dateOf(shot.taken);
        std::string content; // the same in all copies, and made when the first of them needs it
        for (const PhotoCopy& copy : shot.copies) {
            if (copy.name.empty())
                continue;
            const PhotoAsset& asset = catalogue(shot, copy, date);
            const int ageDays = ageOf(asset);
            const bool isHere = (copy.marks & (cloud | thinned | outside)) == 0;
            if (isHere) {
                if (content.empty()) {
                    Random random = ownRandom;
                    content = contentOf(shot, shot.format, random);
                }
                m_originals.folder(asset.directory, newest).file(asset.file, content, shot.bytes, ageDays);
            }
            // Of a film the library keeps one frame, to show it by.
            if ((copy.marks & thinned) != 0 || (isHere && asset.isFilm)) {
                Random random = ownRandom;
                const std::string file = asset.uuid + "_1_105_c.jpeg";
                m_renditions.folder(asset.directory, newest)
                    .text(file, contentOf(shot, PhotoFormat::jpeg, random), ageDays);
            }
        }
    }

    /// In an order of its own: copies come in long after what they are copies of.
    std::vector<PhotoAsset> assets() && {
        for (std::size_t left = m_assets.size(); left > 1; --left)
            std::swap(m_assets[left - 1], m_assets[m_random.next() % left]);
        return std::move(m_assets);
    }

private:
    static constexpr int newest = 1; ///< days; what the library did last
    static constexpr int oldest = 3'000;

    const PhotoAsset& catalogue(const Shot& shot, const PhotoCopy& copy, std::optional<double> date) {
        PhotoAsset asset;
        asset.uuid = m_random.uuid();
        const bool isOutside = (copy.marks & outside) != 0;
        asset.directory = isOutside ? "/Volumes/Backup/Photos" : asset.uuid.substr(0, 1);
        asset.file =
            isOutside ? std::string(copy.name) : asset.uuid + '.' + std::string(extensionOf(shot.format));
        asset.name = copy.name;
        if ((copy.marks & anyBytes) == 0)
            asset.bytes = (copy.marks & noBytes) != 0 ? 0 : shot.bytes;
        asset.pixels = sizeOf(shot.scene);
        if (date)
            asset.created = *date + copy.later;
        if ((copy.marks & trashed) != 0)
            asset.trashed = m_today - m_random.between(2, 20) * secondsPerDay + 36'000.5;
        asset.isFilm = shot.format == PhotoFormat::film;
        asset.isFavourite = (copy.marks & favourite) != 0;
        asset.isHidden = (copy.marks & hidden) != 0;
        asset.isShared = (copy.marks & shared) != 0;
        return m_assets.emplace_back(std::move(asset));
    }

    std::optional<double> dateOf(const Taken& taken) const {
        switch (taken.from) {
        case Taken::From::nothing:
            return std::nullopt;
        case Taken::From::today:
            return m_today - taken.day * secondsPerDay + taken.second;
        case Taken::From::year1970:
            return taken.day * secondsPerDay + taken.second;
        }
        return std::nullopt;
    }

    /// A file is as old as its photo, but no older than the library.
    int ageOf(const PhotoAsset& asset) const {
        const double days =
            asset.created ? std::floor((m_today - *asset.created) / secondsPerDay) + 1 : oldest;
        return static_cast<int>(std::clamp<double>(days, newest, oldest));
    }

    Folder m_originals;
    Folder m_renditions;
    double m_today;
    Random& m_random;
    std::vector<PhotoAsset> m_assets;
};

/// One of the photos that there is nothing to say about.
void addOther(Library& library, int number, Random& random) {
    constexpr Scene scenes[] = {Scene::shore,   Scene::hills, Scene::portrait, Scene::portrait,  Scene::night,
                                Scene::blossom, Scene::meal,  Scene::receipt,  Scene::screenshot};
    const Scene scene = scenes[random.next() % std::size(scenes)];
    Shot shot = {scene, PhotoFormat::jpeg, random.between(900'000, 5'400'000), undated, {}};
    std::string name = "IMG_" + std::to_string(5'600 - 19 * number - random.between(0, 18));
    if (scene == Scene::screenshot) {
        shot.format = PhotoFormat::png;
        name += ".PNG";
    } else if (random.chance(8)) {
        shot.format = PhotoFormat::film;
        shot.bytes *= 8;
        name += ".MOV";
    } else {
        name += random.chance(70) ? ".HEIC" : ".JPG";
    }
    // On a day of its own, so that no two can be taken for copies.
    shot.taken = ago(daysBetweenShots * number + 3, random.between(7, 22), random.between(0, 59),
                     random.between(0, 59));
    const int place = random.between(1, 100);
    const unsigned stored = place <= 12 ? cloud : place <= 18 ? thinned : 0U;
    const unsigned shown = random.chance(12) ? favourite : random.chance(3) ? hidden : 0U;
    shot.copies[0] = {name, stored | shown, random.between(0, 999) / 1'000.0};
    library.add(shot);
}

} // namespace

void makePhotos(Folder&, Folder& home, Random& random) {
    Folder folder = home.folder("Pictures/Photos Library.photoslibrary", 1);
    folder.file("database/search/psi.sqlite", 33_MB, 1);
    Library library(folder, random);
    for (const Shot& shot : duplicates)
        library.add(shot);
    for (const Shot& shot : nearMisses)
        library.add(shot);
    for (int number = 0; number < otherShots; ++number)
        addOther(library, number, random);
    folder.text("database/Photos.sqlite", photoCatalogue(std::move(library).assets()), 1);
}

} // namespace SampleDisk
