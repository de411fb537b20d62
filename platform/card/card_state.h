// The states of the SD card: their codes in the record sd, and their words in replies.
#pragma once

#include <cstdint>
#include <string_view>

namespace camera {

enum CardState : std::uint8_t { kReady = 2, kProtected = 3, kFull = 5, kFormatting = 9, kRecording = 10 };

// The words by code. In a state without a word the card cannot be used.
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
