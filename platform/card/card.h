// The SD card: the product's folder and its entries. No path leads outside of that folder, and symbolic links
// on the card are not followed.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/card/card_path.h"
#include "platform/card/name_list.h"
#include "platform/descriptor.h"

namespace camera {

struct ProductFolder {
  std::string_view model;
  std::string_view card = kCardFolder;
};

// Paths begin at the product's folder, with or without a slash. An int result is 0 or an errno value: ENOENT
// also if a path leads outside or through a link, or if opening it is denied.

class CardFolder {
 public:
  int open(const ProductFolder& product, std::string_view path);
  // Adds the entries, in no order; the kind of some may be unknown. "." and ".." are left out.
  int list(NameFilter wanted, NameList* names) const;

  // Finds out the kind of a listed entry, if unknown, and a number: the size of a file in bytes, or how many
  // visible entries a folder has. The number is 0 for any other entry, also for one that is gone. Fails only
  // for lack of memory.
  int examine(const char* name, EntryKind* kind, std::int64_t* number) const;

 private:
  Descriptor descriptor_;
};

int findEntry(const ProductFolder& product, std::string_view path, EntryKind* kind);
bool canReadFile(const ProductFolder& product, std::string_view path);
int removeFile(const ProductFolder& product, std::string_view path);
// Removes a folder with its contents by the shell command rm -rf, which begins at the open folder that it is
// in.
int removeFolder(const ProductFolder& product, std::string_view path);

// Gives the system a second to mount the card again after formatting.
void awaitMount();

// Creates the folder with all permissions. An existing folder is accepted; a failure is only logged.
void makeCardFolder(const std::string& path);

}  // namespace camera
