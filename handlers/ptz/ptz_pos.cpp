// ptz_pos.cgi: where the pan/tilt head is.
#include "handlers/ptz/ptz_endpoint.h"

namespace camera {

class PtzPosEndpoint final : public PtzEndpoint<ReadOnlyEndpoint> {
  bool ask() override {
    return ptzCommand(PtzCode::kReadPosition, &position_) && ptzCommand(PtzCode::kReadLimits, &limits_);
  }

  int reply() override {
    replyPosition(limits_, position_);
    return 200;
  }

  PtzPosition position_{};
  PtzLimits limits_{};
};

template void serve<PtzPosEndpoint>();

}  // namespace camera
