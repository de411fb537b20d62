// The states of the SD card, by their codes in the record, and what they are called.
#pragma once

#include <cstdint>
#include <string_view>

namespace camera {

enum CardState : std::uint8_t { kReady = 2, kProtected = 3, kFull = 5, kFormatting = 9, kRecording = 10 };

// Codes without a word tell of no card that could be used.
inline constexpr std::string_view kCardWords[] = {"",
                                                  "",
                                                  "ready",
                                                  "protected",
                                                  "invalid",
                                                  "full",
                                                  "over_capacity",
                                                  "",
                                                  "need_reinitialize",
                                                  "formatting",
                                                  "recording"};

}  // namespace camera
