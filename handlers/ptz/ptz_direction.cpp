// ptz_direction.cgi: moves the pan/tilt head one step in one of eight directions, or stops it.
#include "handlers/ptz/ptz_endpoint.h"

namespace camera {
namespace {

constexpr const char* kDirections[] = {"",       "up",      "down",     "left",      "right",
                                       "upleft", "upright", "downleft", "downright", "stop"};
constexpr int kNowhere = 0;
constexpr int kStop = 9;
// One unit in each direction.
constexpr PtzStep kUnits[] = {{0, 0}, {0, 1}, {0, -1}, {-1, 0}, {1, 0}, {-1, 1}, {1, 1}, {-1, -1}, {1, -1}};

struct Order {
  std::int32_t direction;
  std::int32_t speed;  // position units of the step
};

constexpr auto kParams = paramRows<Order>(choiceParam<&Order::direction>("direction", kDirections).required(),
                                          integerParam<&Order::speed>("speed", 1, 10).required());

}  // namespace

class PtzDirectionEndpoint final : public PtzEndpoint<StateEndpoint<kParams, Takes::kCommand>> {
  int carryOut(Order& wanted) override {
    if (wanted.direction == kNowhere) return 200;
    if (wanted.direction == kStop) return resultOf(ptzCommand(PtzCode::kStop));
    PtzStep step = kUnits[wanted.direction];
    step.pan *= wanted.speed;
    step.tilt *= wanted.speed;
    return resultOf(ptzMakeStep(&step));
  }
};

template <>
const Api kApi<PtzDirectionEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kPanTilt,
     .summary = "Moves the pan/tilt head one step in a direction, or stops it.",
     .feature = &ProductInfo::has_pan_tilt,
     .params = {{"direction", "The direction; `stop` stops any movement."},
                {"speed", "The size of the step in units of each axis, also required to stop."}}});
template struct EndpointOf<PtzDirectionEndpoint>;

}  // namespace camera
