#include "tools/sample_disk/pictures/formats.h"
#include "tools/sample_disk/pictures/scenes.h"

#include <QImage>

#include <cstdlib>
#include <set>

#include <gtest/gtest.h>

using namespace SampleDisk;

namespace {

constexpr Scene scenes[] = {Scene::shore, Scene::hills,    Scene::night,   Scene::blossom,
                            Scene::meal,  Scene::portrait, Scene::receipt, Scene::screenshot};

/// What a decoder that isn't ours makes of a file that goes on after the picture.
QImage decoded(std::string file, const char* format) {
    file.append(100'000, '\0');
    return QImage::fromData(reinterpret_cast<const uchar*>(file.data()), static_cast<int>(file.size()),
                            format);
}

/// How far the parts of the pixels are from those that were painted, on average.
double difference(const QImage& image, const Canvas& picture) {
    if (image.width() != picture.width() || image.height() != picture.height())
        return 255;
    int sum = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb found = image.pixel(x, y);
            const Colour painted = picture.at(x, y);
            sum += std::abs(qRed(found) - painted.red) + std::abs(qGreen(found) - painted.green)
                   + std::abs(qBlue(found) - painted.blue);
        }
    }
    return sum / (3.0 * image.width() * image.height());
}

} // namespace

TEST(SamplePictures, AreWhatWasPainted) {
    Random random(7, "pictures");
    std::set<std::string> files;
    for (const Scene scene : scenes) {
        for (int i = 0; i < 5; ++i) {
            const Canvas picture = paint(scene, random);
            EXPECT_EQ(difference(decoded(png(picture), "png"), picture), 0);
            EXPECT_LT(difference(decoded(jpeg(picture), "jpeg"), picture), 6);
            EXPECT_TRUE(files.insert(jpeg(picture)).second) << "one like it was there before";
        }
    }
}
