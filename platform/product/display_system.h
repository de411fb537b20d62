// The names of the display systems, by index; a display system fixes resolutions and frame rates.
#pragma once

inline constexpr int kDisplaySystemCount = 11;
extern const char* const DisplaySystem[kDisplaySystemCount];
