// The state that the simulated daemons report and change.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "virtual-camera/simulator/event_log.h"
#include "virtual-camera/simulator/head.h"

namespace camera::simulator {

enum class Storage : unsigned char { kOk, kFull, kFailed };

// A detection that is reported until a given time.
struct Detection {
  int value = 0;
  double until = 0;  // seconds since the simulator started
};

struct CameraState {
  static constexpr std::size_t kLines = 4;  // the protocols have codes for no more

  double now = 0;  // seconds since the simulator started

  // The product's parts.
  bool hasPir = true;
  bool hasMic = true;
  bool hasSpeaker = true;
  bool hasCard = true;
  bool hasHead = true;
  std::size_t inputCount = kLines;
  std::size_t outputCount = kLines;

  Head head{HeadDesign{}};
  std::array<bool, kLines> inputs{};
  std::array<bool, kLines> outputs{};
  bool softwareInput = false;

  Detection motion;
  Detection pir;
  Detection sound;
  int soundLevel = 30;  // while no sound is detected
  bool recording = false;
  Storage storage = Storage::kOk;
  bool speakerOccupied = false;
  bool micMuted = false;

  bool sendsStatus = true;
  EventLog log;

  // What the daemons need of the camera.
  std::function<std::string()> route = [] { return std::string{}; };  // the stored route: "1,4,2"
  std::function<void()> headChanged = [] {};                          // stores home and presets

  // Moves the clock, and the head with it.
  void passTo(double seconds) {
    head.advance(seconds - now);
    now = seconds;
  }
  bool isNoticed(const Detection& detection) const { return now < detection.until; }
};

}  // namespace camera::simulator
