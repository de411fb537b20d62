// The pan/tilt head: where it is, where it goes, and what it remembers. Its coordinates are the daemon's.
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

// What a product's head can do.
struct HeadDesign {
  int pmax = 170;
  int pmin = -170;
  int tmax = 90;
  int tmin = -30;
  int speed = 40;  // units a second, of each axis
  int dwell = 3;   // seconds that a patrol stays at a preset
};

// Reads lines "pmax = 170"; a # starts a comment, and what is not given stays. False for any other line, or a
// head that could not move.
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

  // Each ends what the head was doing. False, and nothing changes, for what it cannot do.
  bool moveTo(Position target);
  void moveBy(Position step);  // as far as the limits let it
  void stop();
  void goHome();
  bool goToPreset(int slot);
  void autoPan();
  bool patrol(const std::vector<int>& slots);  // visits those that are used, over and over

  void setHome();  // to where it is, or where it is going; sweeping and patrolling have no such place
  void resetHome();
  // Stores the position under a name of at most 15 printable characters; an empty one clears the slot.
  bool storePreset(int slot, const std::string& name);

  // Home and presets as lines of text. A line that is none is left out.
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
  double rest_ = 0;  // seconds that it stays where it is
};

}  // namespace camera::simulator
