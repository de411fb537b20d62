// A list of the names in a folder. It needs little memory, and sorts no more than one page.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace camera {

enum class EntryKind : std::uint8_t { kFolder, kFile, kOther, kUnknown };

// True if an entry of that name is to be listed.
using NameFilter = bool (*)(std::string_view name);
bool isVisible(std::string_view name);  // does not begin with a dot

class NameList {
 public:
  void add(std::string_view name, EntryKind kind);
  std::size_t size() const { return entries_.size(); }
  const char* name(std::size_t index) const { return entries_[index] + 1; }
  EntryKind kind(std::size_t index) const { return static_cast<EntryKind>(*entries_[index]); }

  // Afterwards the positions first to first + count - 1 hold the same entries as after sorting all names by
  // their bytes.
  void sort(std::size_t first, std::size_t count);

 private:
  std::vector<std::unique_ptr<char[]>> blocks_;
  std::size_t left_ = 0;        // free bytes of the last block
  std::vector<char*> entries_;  // a byte for the kind, the name and its NUL
};

}  // namespace camera
