// The event log: the last 500 lines. Each line starts with the camera's local time.
#pragma once

#include <cstdint>
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
    size_ += lines_.back().size();
  }
  // Bytes that were added so far.
  std::size_t size() const { return size_; }
  std::string text() const { return textAfter(0); }
  // The lines that were added after so many bytes; all lines if that was not between two of them.
  std::string textAfter(std::int64_t bytes) const {
    const auto after = static_cast<std::size_t>(bytes);
    std::size_t begin = size_;
    auto line = lines_.end();
    while (line != lines_.begin() && begin > after) begin -= (--line)->size();
    std::string all;
    for (line = begin == after ? line : lines_.begin(); line != lines_.end(); ++line) all += *line;
    return all;
  }

 private:
  static constexpr std::size_t kMostLines = 500;
  std::deque<std::string> lines_;
  std::size_t size_ = 0;
};

}  // namespace camera::simulator
