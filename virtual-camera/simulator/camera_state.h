// All that the simulated daemons know: the truth that endpoints report.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "virtual-camera/simulator/event_log.h"
#include "virtual-camera/simulator/head.h"

namespace camera::simulator {

enum class Storage : unsigned char { kOk, kFull, kFailed };

// Something that was noticed, and goes on being reported for a while.
struct Detection {
  int value = 0;
  double until = 0;  // seconds, on the clock of CameraState
};

struct CameraState {
  static constexpr std::size_t kLines = 4;  // as many as the protocols have codes for

  double now = 0;  // seconds since the simulator started

  Head head{HeadDesign{}};
  std::size_t inputCount = kLines;
  std::size_t outputCount = kLines;
  std::array<bool, kLines> inputs{};
  std::array<bool, kLines> outputs{};
  bool softwareInput = false;

  Detection motion;
  Detection pir;
  Detection sound;
  int soundLevel = 30;  // while nothing louder is detected
  bool recording = false;
  Storage storage = Storage::kOk;
  bool speakerOccupied = false;
  bool micMuted = false;

  bool sendsStatus = true;
  EventLog log;

  // The camera around the daemons.
  std::function<std::string()> route = [] { return std::string{}; };  // "1,4,2": slots from 1, in order
  std::function<void()> headChanged = [] {};                          // home and presets are to be kept

  // Lets time pass until then.
  void passTo(double seconds) {
    head.advance(seconds - now);
    now = seconds;
  }
  bool isNoticed(const Detection& detection) const { return now < detection.until; }
};

}  // namespace camera::simulator
