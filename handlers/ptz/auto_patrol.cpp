// auto_patrol.cgi: lets the pan/tilt head visit the presets of its route, over and over.
#include "handlers/ptz/sweep.h"

namespace camera {

class AutoPatrolCgilet final : public SweepEndpoint {
 public:
  AutoPatrolCgilet() : SweepEndpoint(PtzCode::kStartPatrol) {}
};

template InfCgilet* create<AutoPatrolCgilet>();

}  // namespace camera
