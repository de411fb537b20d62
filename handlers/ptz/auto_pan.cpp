// auto_pan.cgi: lets the pan/tilt head sweep from side to side.
#include "handlers/ptz/sweep.h"

namespace camera {

class AutoPanEndpoint final : public SweepEndpoint {
 public:
  AutoPanEndpoint() : SweepEndpoint(PtzCode::kStartAutoPan) {}
};

template void serve<AutoPanEndpoint>();

}  // namespace camera
