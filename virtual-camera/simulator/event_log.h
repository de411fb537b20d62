// The event log: the last 500 lines. Each line starts with the camera's local time.
#pragma once

#include <deque>
#include <functional>
#include <string>

namespace camera::simulator {

class EventLog {
 public:
  // The local time as "2024-02-29 13:05:00".
  std::function<std::string()> stamp = [] { return std::string{}; };

  void add(const std::string& line) {
    if (lines_.size() == kMostLines) lines_.pop_front();
    lines_.push_back(stamp() + " " + line + "\n");
  }
  std::string text() const {
    std::string all;
    for (const std::string& line : lines_) all += line;
    return all;
  }

 private:
  static constexpr std::size_t kMostLines = 500;
  std::deque<std::string> lines_;
};

}  // namespace camera::simulator
