// The daemons' protocols: the answer of each to the bytes of one request. An unknown request gets the result
// 1, from the event log an empty text.
#pragma once

#include <string>

#include "virtual-camera/simulator/camera_state.h"

namespace camera::simulator {

inline constexpr std::size_t kHeadRequest = 44;  // bytes
inline constexpr std::size_t kShortRequest = 12;

std::string answerHead(CameraState& camera, const std::string& request);    // 427 bytes
std::string answerIo(CameraState& camera, const std::string& request);      // 140 bytes
std::string answerEvents(CameraState& camera, const std::string& request);  // 140 bytes
std::string answerLog(CameraState& camera, const std::string& request);     // text, of any length

// Logs an event if the input switches on.
void setInput(CameraState& camera, std::size_t index, bool on);

}  // namespace camera::simulator
