// auto_patrol.cgi: lets the pan/tilt head visit the presets of its route, over and over.
#include "handlers/ptz/sweep.h"

namespace camera {

class AutoPatrolEndpoint final : public SweepEndpoint {
 public:
  AutoPatrolEndpoint() : SweepEndpoint(PtzCode::kStartPatrol) {}
};

template void serve<AutoPatrolEndpoint>();

}  // namespace camera
