// ptz_preset_list.cgi: the presets of the pan/tilt head and their positions.
#include "handlers/ptz/preset_names.h"
#include "handlers/ptz/ptz_endpoint.h"

namespace camera {

class PtzPresetListEndpoint final : public PtzEndpoint<ReadOnlyEndpoint> {
  int reply() override {
    if (!ptzRead(&presets_) || !ptzRead(&limits_)) return resultOf(false);
    if (isJson()) return replyPresets();
    std::string names;
    for (const PtzPreset& preset : presets_.slots) {
      if (!nameOf(preset).empty()) appendItem(&names, nameOf(preset));
    }
    pair("presets", names);
    // A preset may be named "presets", as clients have stored it: the first line is the list, any other a
    // preset. In JSON the names are no keys.
    for (const PtzPreset& preset : presets_.slots) {
      if (!nameOf(preset).empty()) replyPreset(preset);
    }
    return 200;
  }

  int replyPresets() {
    JsonArray presets;
    for (const PtzPreset& preset : presets_.slots) {
      if (nameOf(preset).empty()) continue;
      JsonObject entry;
      entry.add("name", nameOf(preset));
      entry.add("p", mirrorPan(limits_, preset.position.pan));
      entry.add("t", preset.position.tilt);
      presets.add(entry.text());
    }
    value("presets", presets.text());
    return 200;
  }

  void replyPreset(const PtzPreset& preset) {
    const Decimal pan(mirrorPan(limits_, preset.position.pan));
    const Decimal tilt(preset.position.tilt);
    pair(nameOf(preset), joined({pan.text(), ",", tilt.text()}));
  }

  PtzPresets presets_{};
  PtzLimits limits_{};
};

constexpr ApiKey kPreset[] = {{"name", ApiType::kText, "The preset's name."},
                              {"p", ApiType::kNumber, "Its pan."},
                              {"t", ApiType::kNumber, "Its tilt."}};
template <>
const Api kApi<PtzPresetListEndpoint> = {
    .subsystem = Subsystem::kPanTilt,
    .summary = "The presets and their positions.",
    .feature = &ProductInfo::has_pan_tilt,
    .reply = {{"presets",
               ApiType::kObjects,
               "The presets. In text, the names separated by commas, then a line for each with its name as "
               "key, and pan and tilt separated by a comma.",
               {},
               kPreset}}};
template struct EndpointOf<PtzPresetListEndpoint>;

}  // namespace camera
