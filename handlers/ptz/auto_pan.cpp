// auto_pan.cgi: starts or stops the sweep of the pan/tilt head from side to side.
#include "handlers/ptz/sweep.h"

namespace camera {

class AutoPanEndpoint final : public SweepEndpoint {
 public:
  AutoPanEndpoint() : SweepEndpoint(PtzCode::kStartAutoPan) {}
};

template <>
const Api kApi<AutoPanEndpoint> = describes<kSweepParams>(
    {.subsystem = Subsystem::kPanTilt,
     .summary = "Makes the pan/tilt head sweep from side to side until it is stopped or moved elsewhere.",
     .feature = &ProductInfo::has_pan_tilt,
     .params = {{"act", "`go` starts the sweep; `stop` stops any movement."}}});
template struct EndpointOf<AutoPanEndpoint>;

}  // namespace camera
