// A list of the names in a folder.
#include "platform/card/name_list.h"

#include <algorithm>
#include <cstring>

namespace camera {
namespace {

// Blocks never grow: copying one would need its memory twice.
constexpr std::size_t kBlockSize = std::size_t{64} * 1024;

bool precedes(const char* left, const char* right) {
  return std::strcmp(left + 1, right + 1) < 0;
}

}  // namespace

bool isVisible(std::string_view name) {
  return !name.starts_with('.');
}

void NameList::add(std::string_view name, EntryKind kind) {
  const std::size_t size = name.size() + 2;
  if (size > left_) {
    left_ = std::max(size, kBlockSize);
    blocks_.emplace_back(new char[left_]);
  }
  char* entry = blocks_.back().get() + std::max(size, kBlockSize) - left_;
  entry[0] = static_cast<char>(kind);
  std::memcpy(entry + 1, name.data(), name.size());
  entry[size - 1] = '\0';
  left_ -= size;
  entries_.push_back(entry);
}

void NameList::sort(std::size_t first, std::size_t count) {
  const auto begin = entries_.begin() + static_cast<std::ptrdiff_t>(first);
  if (first > 0) std::nth_element(entries_.begin(), begin, entries_.end(), precedes);
  std::partial_sort(begin, begin + static_cast<std::ptrdiff_t>(count), entries_.end(), precedes);
}

}  // namespace camera
