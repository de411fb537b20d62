// The pan/tilt head: its movement, home and presets.
#include "virtual-camera/simulator/head.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <sstream>

#include "platform/text.h"

namespace camera::simulator {
namespace {

constexpr struct {
  std::string_view name;
  int HeadDesign::*value;
} kKeys[] = {{"pmax", &HeadDesign::pmax}, {"pmin", &HeadDesign::pmin},   {"tmax", &HeadDesign::tmax},
             {"tmin", &HeadDesign::tmin}, {"speed", &HeadDesign::speed}, {"dwell", &HeadDesign::dwell}};
constexpr int kFarthest = 32767;  // the protocol has 16 bits for a limit

bool fitsTheProtocol(const HeadDesign& design) {
  const auto inOrder = [](int low, int high) {
    return -kFarthest <= low && low <= high && high <= kFarthest;
  };
  return inOrder(design.pmin, design.pmax) && inOrder(design.tmin, design.tmax) && design.speed > 0 &&
         design.dwell > 0;
}

bool isName(const std::string& name) {
  return name.size() < Head::kNameSize &&
         std::all_of(name.begin(), name.end(), [](char c) { return c > ' ' && c <= '~'; });
}

// Returns the position of an axis after it moved that many units towards its target.
double nearer(double from, double target, double units) {
  return std::abs(target - from) <= units ? target : from + std::copysign(units, target - from);
}

}  // namespace

bool readHeadDesign(std::string_view text, HeadDesign* design) {
  HeadDesign read = *design;
  while (!text.empty()) {
    std::string_view line = takeUntil('\n', &text);
    std::istringstream words{std::string{takeUntil('#', &line)}};
    std::string name;
    std::string equals;
    if (!(words >> name)) continue;
    const auto* key =
        std::find_if(std::begin(kKeys), std::end(kKeys), [&](const auto& k) { return k.name == name; });
    if (key == std::end(kKeys) || !(words >> equals >> read.*key->value) || equals != "=" ||
        !(words >> std::ws).eof()) {
      return false;
    }
  }
  if (!fitsTheProtocol(read)) return false;
  *design = read;
  return true;
}

Head::Head(const HeadDesign& design) : design_(design) {
  resetHome();
  pan_ = home_.pan;
  tilt_ = home_.tilt;
}

Position Head::position() const {
  return {static_cast<int>(std::lround(pan_)), static_cast<int>(std::lround(tilt_))};
}

bool Head::reaches(Position target) const {
  return target == limited(target);
}

Position Head::limited(Position target) const {
  return {std::clamp(target.pan, design_.pmin, design_.pmax),
          std::clamp(target.tilt, design_.tmin, design_.tmax)};
}

double Head::secondsToTarget() const {
  return std::max(std::abs(target_.pan - pan_), std::abs(target_.tilt - tilt_)) / design_.speed;
}

void Head::advance(double seconds) {
  while (seconds > 0 && mode_ != Mode::kResting) {
    const double pause = std::min(rest_, seconds);
    rest_ -= pause;
    seconds -= pause;
    if (rest_ > 0) return;
    if (pause > 0) goToNextStop();
    const double way = std::min(secondsToTarget(), seconds);
    approach(way);
    seconds -= way;
    if (target_.pan == pan_ && target_.tilt == tilt_) arrive();
  }
}

void Head::approach(double seconds) {
  pan_ = nearer(pan_, target_.pan, seconds * design_.speed);
  tilt_ = nearer(tilt_, target_.tilt, seconds * design_.speed);
}

// Ensures that the next step takes time or that the head rests; otherwise advance would loop forever.
void Head::arrive() {
  if (mode_ == Mode::kPatrolling) rest_ = design_.dwell;
  if (mode_ == Mode::kSweeping) target_.pan = target_.pan == design_.pmax ? design_.pmin : design_.pmax;
  const bool stuck = mode_ == Mode::kSweeping && design_.pmin == design_.pmax;
  if (mode_ == Mode::kGoing || stuck) mode_ = Mode::kResting;
}

void Head::goToNextStop() {
  for (std::size_t tries = 0; tries < stops_.size(); ++tries) {
    const Preset& stop = presets_[static_cast<std::size_t>(stops_[nextStop_])];
    nextStop_ = (nextStop_ + 1) % stops_.size();
    if (stop.name.empty()) continue;
    target_ = stop.at;
    return;
  }
  mode_ = Mode::kResting;
}

void Head::go(Position target, Mode mode) {
  target_ = target;
  mode_ = mode;
  rest_ = 0;
}

bool Head::moveTo(Position target) {
  if (!reaches(target)) return false;
  go(target, Mode::kGoing);
  return true;
}

void Head::moveBy(Position step) {
  const Position from = position();
  go(limited({from.pan + std::clamp(step.pan, -2 * kFarthest, 2 * kFarthest),
              from.tilt + std::clamp(step.tilt, -2 * kFarthest, 2 * kFarthest)}),
     Mode::kGoing);
}

void Head::stop() {
  go(position(), Mode::kResting);
  pan_ = target_.pan;
  tilt_ = target_.tilt;
}

void Head::goHome() {
  go(home_, Mode::kGoing);
}

// Clients move the head and set the home at once; they do not wait until the head arrives.
void Head::setHome() {
  home_ = mode_ == Mode::kGoing ? target_ : position();
}

void Head::resetHome() {
  home_ = limited({0, 0});
}

bool Head::storePreset(int slot, const std::string& name) {
  if (slot < 0 || slot >= static_cast<int>(kPresets) || !isName(name)) return false;
  presets_[static_cast<std::size_t>(slot)] = {name, name.empty() ? Position{} : position()};
  return true;
}

bool Head::goToPreset(int slot) {
  const bool used = slot >= 0 && slot < static_cast<int>(kPresets) &&
                    !presets_[static_cast<std::size_t>(slot)].name.empty();
  return used && moveTo(presets_[static_cast<std::size_t>(slot)].at);
}

void Head::autoPan() {
  go({design_.pmax, position().tilt}, Mode::kSweeping);
}

bool Head::patrol(const std::vector<int>& slots) {
  const auto isUsed = [&](int slot) { return !presets_[static_cast<std::size_t>(slot)].name.empty(); };
  std::vector<int> stops;
  for (const int slot : slots) {
    if (slot >= 0 && slot < static_cast<int>(kPresets) && isUsed(slot)) stops.push_back(slot);
  }
  if (stops.empty()) return false;
  stops_ = stops;
  nextStop_ = 0;
  go(position(), Mode::kPatrolling);
  goToNextStop();
  return true;
}

std::string Head::memory() const {
  std::ostringstream lines;
  lines << "home " << home_.pan << " " << home_.tilt << "\n";
  for (std::size_t slot = 0; slot < kPresets; ++slot) {
    const auto& [name, at] = presets_[slot];
    if (!name.empty()) lines << "preset" << slot << " " << at.pan << " " << at.tilt << " " << name << "\n";
  }
  return lines.str();
}

void Head::remember(std::string_view memory) {
  while (!memory.empty()) {
    std::istringstream words{std::string{takeUntil('\n', &memory)}};
    std::string what;
    std::string name;
    Position at{};
    words >> what >> at.pan >> at.tilt;
    if (!words || !reaches(at)) continue;
    words >> name;
    if (what == "home") home_ = at;
    int slot = 0;
    if (what.starts_with("preset") && readNumber(std::string_view{what}.substr(6), &slot) && slot >= 0 &&
        slot < static_cast<int>(kPresets) && isName(name)) {
      presets_[static_cast<std::size_t>(slot)] = {name, at};
    }
  }
  pan_ = home_.pan;
  tilt_ = home_.tilt;
}

}  // namespace camera::simulator
