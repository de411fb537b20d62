// ptz_preset_list.cgi: the presets of the pan/tilt head and where they are.
#include "handlers/ptz/preset_names.h"
#include "handlers/ptz/ptz_endpoint.h"

namespace camera {

class PtzPresetListEndpoint final : public PtzEndpoint<ReadOnlyEndpoint> {
  int reply() override {
    PtzPresets presets{};
    PtzLimits limits{};
    if (!ptzCommand(PtzCode::kReadPresets, &presets) || !ptzCommand(PtzCode::kReadLimits, &limits)) {
      return resultOf(false);
    }
    std::string names;
    for (const PtzPreset& preset : presets.slots) {
      if (!nameOf(preset).empty()) appendItem(&names, nameOf(preset));
    }
    pair("presets", names);
    for (const PtzPreset& preset : presets.slots) {
      if (!nameOf(preset).empty()) replyPreset(limits, preset);
    }
    return 200;
  }

  void replyPreset(const PtzLimits& limits, const PtzPreset& preset) {
    std::string position;
    appendItem(&position, Decimal(mirrorPan(limits, preset.position.pan)).text());
    appendItem(&position, Decimal(preset.position.tilt).text());
    pair(std::string{nameOf(preset)}, position);
  }
};

template void serve<PtzPresetListEndpoint>();

}  // namespace camera
