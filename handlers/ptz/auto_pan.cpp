// auto_pan.cgi: starts or stops the sweep of the pan/tilt head from side to side.
#include "handlers/ptz/sweep.h"

namespace camera {

class AutoPanEndpoint final : public SweepEndpoint {
 public:
  AutoPanEndpoint() : SweepEndpoint(PtzCode::kStartAutoPan) {}
};

template struct EndpointOf<AutoPanEndpoint>;

}  // namespace camera
