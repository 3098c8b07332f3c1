#pragma once

#include "tools/sample_disk/canvas.h"
#include "tools/sample_disk/random.h"

namespace sample_disk {

enum class Scene { shore, hills, night, blossom, meal, portrait, screenshot };

/// Paints a picture that is recognizable as a thumbnail. Colors and positions are drawn from `random`.
Canvas paint(Scene scene, Random& random);

} // namespace sample_disk
