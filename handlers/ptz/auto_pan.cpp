// auto_pan.cgi: lets the pan/tilt head sweep from side to side.
#include "handlers/ptz/sweep.h"

namespace camera {

class AutoPanCgilet final : public SweepEndpoint {
 public:
  AutoPanCgilet() : SweepEndpoint(PtzCode::kStartAutoPan) {}
};

template InfCgilet* create<AutoPanCgilet>();

}  // namespace camera
