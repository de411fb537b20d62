// The SD card: the product's folder and what lies in it. Whatever a path holds, nothing outside of that
// folder is reached, and a symbolic link on the card leads nowhere.
#pragma once

#include <cstdint>
#include <string_view>

#include "platform/card/card_path.h"
#include "platform/card/name_list.h"

namespace camera {

struct ProductFolder {
  std::string_view model;
  std::string_view card = kCardFolder;
};

// Paths begin at the product's folder, with or without a slash. Results are 0 or an errno value; ENOENT for
// all that is not there: what does not exist, leads outside or through a link, or may not be read.

class CardFolder {
 public:
  CardFolder() = default;
  ~CardFolder();
  CardFolder(const CardFolder&) = delete;
  CardFolder& operator=(const CardFolder&) = delete;

  int open(const ProductFolder& product, std::string_view path);
  // Adds the entries, in no order; the kind of some may be unknown. "." and ".." are none.
  int list(NameFilter wanted, NameList* names) const;

  // Of a listed entry its kind, which may have been unknown, and of a file its size in bytes, of a folder the
  // number of its visible entries; 0 when it cannot be examined or is gone. Fails only for want of memory.
  int examine(const char* name, EntryKind* kind, std::int64_t* number) const;

 private:
  int descriptor_ = -1;
};

int findEntry(const ProductFolder& product, std::string_view path, EntryKind* kind);
bool canReadFile(const ProductFolder& product, std::string_view path);
int removeFile(const ProductFolder& product, std::string_view path);

}  // namespace camera
