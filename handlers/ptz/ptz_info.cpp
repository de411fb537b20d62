// ptz_info.cgi: the limits of the pan/tilt head.
#include "handlers/ptz/ptz_endpoint.h"

namespace camera {

class PtzInfoEndpoint final : public PtzEndpoint<ReadOnlyEndpoint> {
  bool ask() override { return ptzRead(&limits_); }

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

template struct EndpointOf<PtzInfoEndpoint>;

}  // namespace camera
