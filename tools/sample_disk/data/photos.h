#pragma once

#include "tools/sample_disk/contents.h"
#include "tools/sample_disk/pictures/scenes.h"

#include <chrono>
#include <string_view>

namespace SampleDisk {

enum class PhotoFormat { jpeg, png, film };

/// When a photo was taken.
struct Taken {
    enum class From { nothing, today, year1970 } from = From::nothing;
    int day = 0; ///< back from today, or on from 1970
    int second = 0;
};

constexpr Taken undated = {};
constexpr Taken ago(int days, int hour, int minute, int second) {
    return {Taken::From::today, days, 3'600 * hour + 60 * minute + second};
}
constexpr Taken on(std::chrono::year_month_day date, int second) {
    return {Taken::From::year1970, static_cast<int>(std::chrono::sys_days(date).time_since_epoch().count()),
            second};
}

/// How a copy differs from a visible one whose file lies in the library.
enum PhotoMark : unsigned {
    favourite = 1,
    hidden = 2,
    trashed = 4,
    shared = 8,    ///< visible in a shared album only
    cloud = 16,    ///< its file is in the cloud
    thinned = 32,  ///< its file is in the cloud, a small rendition is here
    outside = 64,  ///< its file is left where it was imported from, on a disk that isn't here
    noBytes = 128, ///< the catalogue gives its size as 0, whatever its file has
    anyBytes = 256 ///< the catalogue gives no size
};

struct PhotoCopy {
    std::string_view name;
    unsigned marks = 0;
    double later = 0; ///< seconds
};

/// One picture, and the copies that a library has of it.
struct Shot {
    Scene scene;
    PhotoFormat format;
    std::int64_t bytes; ///< of each copy's file, most of them a hole behind the picture
    Taken taken;
    PhotoCopy copies[5]; ///< those with a name
};

inline constexpr auto jpegFile = PhotoFormat::jpeg;
inline constexpr auto pngFile = PhotoFormat::png;
inline constexpr auto filmFile = PhotoFormat::film;

/// Of two copies and more that count, each is a group of duplicates.
inline constexpr Shot duplicates[] = {
    {Scene::shore,
     jpegFile,
     3'214'880,
     ago(96, 14, 20, 31),
     {{"IMG_0042.HEIC", favourite}, {"IMG_0042 (1).HEIC"}}},
    {Scene::portrait,
     jpegFile,
     2'871'406,
     ago(141, 11, 5, 9),
     {{"IMG_0117.JPG"}, {"IMG_0117.JPG"}, {"IMG_0117.JPG"}}},
    {Scene::blossom,
     jpegFile,
     4'907'133,
     ago(530, 17, 48, 2),
     {{"DSC_1873.JPG"},
      {"DSC_1873 2.JPG"},
      {"DSC_1873 copie.JPG"},
      {"Rose for the card.jpg"},
      {"IMG_4410.JPG"}}},
    {Scene::night, filmFile, 83'330'112, ago(325, 23, 58, 40), {{"IMG_0358.MOV"}, {"IMG_0358.MOV"}}},
    {Scene::portrait,
     filmFile,
     17'204'668,
     ago(871, 22, 14, 17),
     {{"Première danse.mov"}, {"VID-0007.mp4"}, {"IMG_2970.MOV"}}},
    {Scene::hills,
     jpegFile,
     3'660'291,
     ago(702, 9, 31, 55),
     {{"Été à Collioure.jpeg"}, {"夏の山.jpeg"}, {"Лето.JPG"}, {"الصيف.jpg"}}},
    {Scene::meal,
     jpegFile,
     1'988'474,
     ago(63, 13, 2, 26),
     {{"🍝 dimanche.HEIC"},
      {"Lunch with everybody who came to help with the move, before the dishes were done.HEIC"}}},
    {Scene::receipt,
     jpegFile,
     904'215,
     undated,
     {{"Scan 14.jpeg"}, {"Scan 14.jpeg"}, {"Scan 14 copie.jpeg"}}},
    {Scene::screenshot, pngFile, 1'402'377, undated, {{"image.png"}, {"image.png"}}},
    {Scene::screenshot,
     pngFile,
     2'240'519,
     ago(34, 16, 40, 12),
     {{"IMG_5120.PNG"}, {"IMG_5120.PNG"}, {"IMG_5120 (1).PNG"}}},
    // Within one second, and the later one first.
    {Scene::night,
     jpegFile,
     2'506'038,
     ago(18, 21, 7, 44),
     {{"IMG_5391.HEIC", 0, 0.875}, {"IMG_5391 (1).HEIC", 0, 0.125}}},
    {Scene::portrait,
     jpegFile,
     1'120'774,
     on(std::chrono::year(1988) / 6 / 18, 43'200),
     {{"Oma 1988.jpg"}, {"scan0007.jpg"}}},
    // Both sides of the moment that seconds are counted from.
    {Scene::shore,
     jpegFile,
     1'064'902,
     on(std::chrono::year(1970) / 1 / 1, 0),
     {{"New year.jpg", 0, -0.375}, {"New year 2.jpg", 0, 0.375}}},
    {Scene::hills,
     jpegFile,
     4'118'640,
     ago(411, 8, 12, 3),
     {{"IMG_3302.HEIC", cloud}, {"IMG_3302 (1).HEIC", cloud}}},
    {Scene::blossom,
     jpegFile,
     3'377'925,
     ago(468, 15, 33, 18),
     {{"IMG_3010.HEIC"}, {"IMG_3010 (1).HEIC", cloud}, {"IMG_3010 (2).HEIC", thinned}}},
    {Scene::meal,
     jpegFile,
     2'090'316,
     ago(212, 19, 45, 50),
     {{"IMG_4127.HEIC"}, {"IMG_4127.HEIC", hidden}, {"IMG_4127 (1).HEIC"}}},
    {Scene::shore,
     jpegFile,
     3'850'027,
     ago(389, 18, 1, 37),
     {{"IMG_3377.HEIC", trashed}, {"IMG_3377.HEIC"}, {"IMG_3377 (1).HEIC"}}},
    {Scene::portrait,
     jpegFile,
     2'655'180,
     ago(251, 10, 26, 8),
     {{"IMG_3911.HEIC"}, {"IMG_3911 (1).HEIC", favourite}}},
    {Scene::hills, jpegFile, 5'203'461, ago(1'290, 12, 0, 0), {{"P1040877.JPG", outside}, {"P1040877.JPG"}}},
};

/// What comes close to a duplicate, and is none.
inline constexpr Shot nearMisses[] = {
    {Scene::shore,
     jpegFile,
     2'914'337,
     ago(177, 7, 59, 59),
     {{"IMG_4300.HEIC"}, {"IMG_4300 (1).HEIC", 0, 1}}},
    {Scene::hills,
     jpegFile,
     2'730'661,
     ago(180, 16, 4, 11),
     {{"IMG_4288.HEIC", 0, 0.875}, {"IMG_4289.HEIC", 0, 1.125}}},
    // A photo and a film with equal numbers.
    {Scene::night, jpegFile, 6'041'952, ago(290, 22, 30, 6), {{"IMG_3702.HEIC"}}},
    {Scene::night, filmFile, 6'041'952, ago(290, 22, 30, 6), {{"IMG_3702.MOV"}}},
    // Equal but for the pixels, for one byte, and for a date.
    {Scene::shore, jpegFile, 2'222'040, ago(610, 12, 9, 30), {{"IMG_2500.HEIC"}}},
    {Scene::portrait, jpegFile, 2'222'040, ago(610, 12, 9, 30), {{"IMG_2500 (1).HEIC"}}},
    {Scene::meal, jpegFile, 1'777'215, ago(620, 20, 10, 14), {{"IMG_2481.HEIC"}}},
    {Scene::meal, jpegFile, 1'777'216, ago(620, 20, 10, 14), {{"IMG_2481 (1).HEIC"}}},
    {Scene::receipt, jpegFile, 888'640, ago(75, 9, 15, 0), {{"Scan 15.jpeg"}}},
    {Scene::receipt, jpegFile, 888'640, undated, {{"Scan 15.jpeg"}}},
    // One name, two pictures.
    {Scene::blossom, jpegFile, 3'105'778, ago(830, 14, 14, 14), {{"IMG_0001.JPG"}}},
    {Scene::hills, jpegFile, 2'440'926, ago(1'104, 10, 50, 29), {{"IMG_0001.JPG"}}},
    // Of two copies, one doesn't count.
    {Scene::portrait,
     jpegFile,
     2'380'112,
     ago(120, 20, 2, 2),
     {{"IMG_4690.HEIC"}, {"IMG_4690.HEIC", hidden}}},
    {Scene::blossom,
     jpegFile,
     2'999'054,
     ago(129, 8, 41, 20),
     {{"IMG_4655.HEIC"}, {"IMG_4655.HEIC", trashed}}},
    {Scene::meal, jpegFile, 1'650'483, ago(133, 12, 44, 10), {{"IMG_4640.HEIC"}, {"IMG_4640.HEIC", shared}}},
    // Nobody knows how large they are.
    {Scene::night,
     jpegFile,
     2'010'700,
     ago(950, 21, 21, 21),
     {{"IMG_1702.HEIC", noBytes}, {"IMG_1702.HEIC", noBytes}}},
    {Scene::shore,
     jpegFile,
     2'860'401,
     ago(955, 6, 30, 0),
     {{"IMG_1690.HEIC", anyBytes}, {"IMG_1690.HEIC", anyBytes}}},
    {Scene::hills,
     filmFile,
     9'300'000,
     ago(958, 6, 30, 0),
     {{"IMG_1688.MOV", cloud | noBytes}, {"IMG_1688.MOV", cloud | anyBytes}}},
};

/// All the other photos of the years, each once.
inline constexpr int otherShots = 240;
inline constexpr int daysBetweenShots = 8;

} // namespace SampleDisk
