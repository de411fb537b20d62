// The names of a folder, in little memory; any page of them can be sorted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace camera {

enum class EntryKind : std::uint8_t { kFolder, kFile, kOther, kUnknown };

// Whether to list an entry of that name.
using NameFilter = bool (*)(std::string_view name);
bool isVisible(std::string_view name);  // does not begin with a dot

class NameList {
 public:
  void add(std::string_view name, EntryKind kind);
  std::size_t size() const { return entries_.size(); }
  const char* name(std::size_t index) const { return entries_[index] + 1; }
  EntryKind kind(std::size_t index) const { return static_cast<EntryKind>(*entries_[index]); }

  // Puts the right entries, by the order of their bytes, at the positions first to first + count - 1.
  void sort(std::size_t first, std::size_t count);

 private:
  std::vector<std::unique_ptr<char[]>> blocks_;
  std::size_t left_ = 0;        // free bytes of the last block
  std::vector<char*> entries_;  // a byte for the kind, the name and its NUL
};

}  // namespace camera
