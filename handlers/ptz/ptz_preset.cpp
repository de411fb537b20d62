// ptz_preset.cgi: stores the position of the pan/tilt head under a name, moves to it, or deletes it.
#include "handlers/ptz/preset_names.h"
#include "handlers/ptz/ptz_endpoint.h"

namespace camera {
namespace {

enum Act : std::int32_t { kAdd, kGo, kDelete };
constexpr const char* kActs[] = {"add", "go", "del"};

struct Order {
  std::string_view name;
  std::int32_t act;
};

constexpr auto kParams =
    paramRows<Order>(textParam<&Order::name>("name", 1, kMostPresetName, "_-").required(),
                     choiceParam<&Order::act>("act", kActs).required());

// The last slot of that name, or, to add a new name, the first free slot. -1 if there is none.
int slotFor(const Order& order, const PtzPresets& presets) {
  int found = -1;
  int free = -1;
  for (int slot = 0; slot < kPtzPresets; ++slot) {
    const std::string_view name = nameOf(presets.slots[slot]);
    if (name == order.name) found = slot;
    if (name.empty() && free < 0) free = slot;
  }
  return found < 0 && order.act == kAdd ? free : found;
}

}  // namespace

class PtzPresetEndpoint final : public PtzEndpoint<StateEndpoint<kParams, Takes::kCommand>> {
  int carryOut(Order& wanted) override {
    PtzPresets presets{};
    if (!ptzRead(&presets)) return resultOf(false);
    const int slot = slotFor(wanted, presets);
    if (slot < 0) return refuse("name", wanted.act == kAdd ? "all ten presets are in use" : "no such preset");
    if (wanted.act == kGo) return resultOf(ptzGoToPreset(slot));
    return resultOf(ptzStorePreset(slot, wanted.act == kAdd ? wanted.name : ""));
  }
};

template <>
const Api kApi<PtzPresetEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kPanTilt,
     .summary = "Stores the position of the pan/tilt head under a name, moves the head to it, or deletes it.",
     .feature = &ProductInfo::has_pan_tilt,
     .dependent = "name act",
     .params =
         {{"name", "The preset.", nullptr, "door"},
          {"act",
           "`add` stores the current position, also under an existing name; `go` moves the head there; `del` "
           "deletes the preset."}},
     .codes = {{400, "The preset of `go` or `del` does not exist, or `add` needs an eleventh preset."}}});
template struct EndpointOf<PtzPresetEndpoint>;

}  // namespace camera
