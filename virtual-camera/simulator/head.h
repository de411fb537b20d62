// The pan/tilt head: its movement, home and presets, in the daemon's coordinates.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace camera::simulator {

struct Position {
  int pan = 0;
  int tilt = 0;
  bool operator==(const Position&) const = default;
};

// The limits and the speed of a product's head.
struct HeadDesign {
  int pmax = 170;
  int pmin = -170;
  int tmax = 90;
  int tmin = -30;
  int speed = 40;  // units a second, of each axis
  int dwell = 3;   // seconds that a patrol stays at a preset
};

// Parses lines such as "pmax = 170" into the design; # starts a comment. False, with the design untouched, if
// a line is malformed or the design does not fit the protocol.
bool readHeadDesign(std::string_view text, HeadDesign* design);

struct Preset {
  std::string name;  // empty: unused
  Position at;
};

class Head {
 public:
  static constexpr std::size_t kPresets = 10;
  static constexpr std::size_t kNameSize = 16;

  explicit Head(const HeadDesign& design);

  void advance(double seconds);
  Position position() const;
  bool moves() const { return mode_ != Mode::kResting; }
  const HeadDesign& design() const { return design_; }
  Position home() const { return home_; }
  const std::array<Preset, kPresets>& presets() const { return presets_; }

  // Each ends the current movement. Returns false, with nothing changed, if the target cannot be reached.
  bool moveTo(Position target);
  void moveBy(Position step);  // up to the limits
  void stop();
  void goHome();
  bool goToPreset(int slot);
  void autoPan();
  bool patrol(const std::vector<int>& slots);  // visits the used slots, again and again

  void setHome();  // to the target of a move (not of auto pan or patrol), else to the current position
  void resetHome();
  // Stores the position under a name of at most 15 printable characters without spaces; an empty name clears
  // the slot. Returns false, with nothing changed, if the slot or the name is invalid.
  bool storePreset(int slot, const std::string& name);

  // Home and presets as lines of text. remember ignores malformed lines.
  std::string memory() const;
  void remember(std::string_view memory);

 private:
  enum class Mode : unsigned char { kResting, kGoing, kSweeping, kPatrolling };

  bool reaches(Position target) const;
  Position limited(Position target) const;
  double secondsToTarget() const;
  void go(Position target, Mode mode);
  void approach(double seconds);
  void arrive();
  void goToNextStop();

  HeadDesign design_;
  double pan_ = 0;
  double tilt_ = 0;
  Position home_{};
  std::array<Preset, kPresets> presets_;

  Mode mode_ = Mode::kResting;
  Position target_{};
  std::vector<int> stops_;
  std::size_t nextStop_ = 0;
  double rest_ = 0;  // seconds until a patrol moves on
};

}  // namespace camera::simulator
