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

template struct EndpointOf<PtzPosEndpoint>;

}  // namespace camera
