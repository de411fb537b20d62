// What the simulator says: where the head points, and how much moves.
#pragma once

namespace camera::picture {

struct Senses {
  int pan = 0;  // as clients count it
  int tilt = 0;
  int motion = 0;  // 0: nothing moves

  // Asks the simulator. What it does not say stays as it was.
  void update();
};

}  // namespace camera::picture
