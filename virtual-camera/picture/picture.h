// One picture of the camera.
#pragma once

#include <cstdint>

#include "virtual-camera/picture/frame.h"
#include "virtual-camera/picture/look.h"
#include "virtual-camera/picture/scene.h"

namespace camera::picture {

struct Moment {
  std::int64_t instant = 0;  // local time in milliseconds since 1970-01-01 00:00
  int pan = 0;               // degrees, as clients count them
  int tilt = 0;
  int motion = 0;  // strength; 0: nothing moves
};

// Equal arguments give equal pictures. The scene only saves time when it is used again.
Frame take(const Look& look, const Moment& moment, Scene* scene);

}  // namespace camera::picture
