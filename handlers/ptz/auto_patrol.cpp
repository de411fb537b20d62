// auto_patrol.cgi: starts or stops the patrol of the pan/tilt head along the presets of its route.
#include "handlers/ptz/sweep.h"

namespace camera {

class AutoPatrolEndpoint final : public SweepEndpoint {
 public:
  AutoPatrolEndpoint() : SweepEndpoint(PtzCode::kStartPatrol) {}
};

template void serve<AutoPatrolEndpoint>();

}  // namespace camera
