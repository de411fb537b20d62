// The names of presets: read from the daemon's table, and told as a list.
#pragma once

#include <string>
#include <string_view>

#include "handlers/ptz/ptz_channel.h"
#include "platform/text.h"

namespace camera {

inline constexpr int kMostPresetName = 15;  // characters of a name that a request gives

// Empty: an unused slot.
inline std::string_view nameOf(const PtzPreset& preset) {
  return textOf(preset.name);
}

inline void appendItem(std::string* list, std::string_view item) {
  if (!list->empty()) *list += ',';
  *list += item;
}

}  // namespace camera
