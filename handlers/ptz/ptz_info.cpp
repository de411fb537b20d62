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

constexpr const char* kYes[] = {"yes"};
template <>
const Api kApi<PtzInfoEndpoint> = {
    .subsystem = Subsystem::kPanTilt,
    .summary = "The limits of the pan/tilt head.",
    .feature = &ProductInfo::has_pan_tilt,
    .reply = {{"pmax", ApiType::kNumber, "The highest pan, furthest to the right."},
              {"pmin", ApiType::kNumber, "The lowest pan, furthest to the left."},
              {"tmax", ApiType::kNumber, "The highest tilt, furthest up."},
              {"tmin", ApiType::kNumber, "The lowest tilt, furthest down."},
              {"customizedhome", ApiType::kText, "Whether the home position can be set.", kYes}}};
template struct EndpointOf<PtzInfoEndpoint>;

}  // namespace camera
