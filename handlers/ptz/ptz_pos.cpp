// ptz_pos.cgi: the current position of the pan/tilt head.
#include "handlers/ptz/ptz_endpoint.h"

namespace camera {

class PtzPosEndpoint final : public PtzEndpoint<ReadOnlyEndpoint> {
  bool ask() override { return ptzRead(&position_) && ptzRead(&limits_); }

  int reply() override {
    replyPosition(limits_, position_);
    return 200;
  }

  PtzPosition position_{};
  PtzLimits limits_{};
};

template <>
const Api kApi<PtzPosEndpoint> = {
    .subsystem = Subsystem::kPanTilt,
    .summary = "The position of the pan/tilt head, also while it moves.",
    .feature = &ProductInfo::has_pan_tilt,
    .reply = {{"p", ApiType::kNumber, "The pan, within the limits that ptz_info.cgi reports."},
              {"t", ApiType::kNumber, "The tilt, within the limits that ptz_info.cgi reports."},
              kZoomKey}};
template struct EndpointOf<PtzPosEndpoint>;

}  // namespace camera
