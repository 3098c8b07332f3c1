#pragma once

#include "tools/sample_disk/pictures/canvas.h"
#include "tools/sample_disk/random.h"

namespace SampleDisk {

/// What a picture shows, plain enough to be known at the size of a thumbnail.
enum class Scene { shore, hills, night, blossom, meal, portrait, receipt, screenshot };

struct PictureSize {
    int width;
    int height;
};

/// A picture is as wide and high as its scene asks for.
constexpr PictureSize sizeOf(Scene scene) {
    const bool upright = scene == Scene::portrait || scene == Scene::receipt;
    return upright ? PictureSize{192, 256} : PictureSize{256, 192};
}

/// No two are alike: colours and places are drawn from `random`.
Canvas paint(Scene scene, Random& random);

} // namespace SampleDisk
