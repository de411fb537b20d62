// ptz_info.cgi: how far the pan/tilt head goes.
#include "handlers/ptz/ptz_endpoint.h"

namespace camera {

class PtzInfoEndpoint final : public PtzEndpoint<ReadOnlyEndpoint> {
  bool ask() override { return ptzCommand(PtzCode::kReadLimits, &limits_); }

  int reply() override {
    pair("pmax", limits_.pmax);
    pair("pmin", limits_.pmin);
    pair("tmax", limits_.tmax);
    pair("tmin", limits_.tmin);
    pair("customizedhome", "yes");
    return 200;
  }

  PtzLimits limits_{};
};

template void serve<PtzInfoEndpoint>();

}  // namespace camera
