// Names of presets and lists of them.
#pragma once

#include <string>
#include <string_view>

#include "handlers/ptz/ptz_channel.h"
#include "platform/text.h"

namespace camera {

inline constexpr int kMostPresetName = 15;  // characters of a name in a request

// Empty if the slot is free.
inline std::string_view nameOf(const PtzPreset& preset) {
  return textOf(preset.name);
}

inline void appendItem(std::string* list, std::string_view item) {
  if (!list->empty()) *list += ',';
  *list += item;
}

}  // namespace camera
