// ptz_preset.cgi: stores the position of the pan/tilt head under a name, returns to it, forgets it.
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

// The slot that holds the name, of several the last; to add a name that none holds, the first unused one; -1
// without such a slot.
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
    if (!ptzCommand(PtzCode::kReadPresets, &presets)) return resultOf(false);
    std::int32_t slot = slotFor(wanted, presets);
    if (slot < 0) return refuse("name", wanted.act == kAdd ? "all ten presets are in use" : "no such preset");
    if (wanted.act == kGo) return resultOf(ptzCommand(PtzCode::kGoToPreset, &slot));
    PtzRequest request{};
    request.slot = static_cast<std::int16_t>(slot);
    if (wanted.act == kAdd) setText(request.name, wanted.name);
    return resultOf(ptzCommand(PtzCode::kStorePreset, &request));
  }
};

template void serve<PtzPresetEndpoint>();

}  // namespace camera
