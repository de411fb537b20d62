// Base of the endpoints that access the SD card's files: the product's folder, paths in requests, and lists
// of entries ("NAME|TYPE|...:NAME|TYPE|...").
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "framework/form.h"
#include "handlers/storage/card_endpoint.h"
#include "platform/card/card.h"
#include "platform/shell.h"
#include "platform/store/records/system.h"

namespace camera {

inline constexpr char kItemSeparator = ':';
inline constexpr char kFieldSeparator = '|';

// True if the name holds a separator, so that a list cannot show where it ends.
inline bool isUnlistable(std::string_view name) {
  return name.find(kItemSeparator) != name.npos || name.find(kFieldSeparator) != name.npos;
}

inline bool staysBelow(std::string_view path) {
  return path.find("../") == path.npos;
}

// A client's path, stored in a std::string_view.
template <auto... kPath>
constexpr auto cardPathParam(const char* name, int min) {
  return textParam<kPath...>(name, min, INT32_MAX, "", kAnyBytes)
      .also(staysBelow, min == 0 ? "a path without ../" : "a path without ../, not empty");
}

template <const auto& kParams, Takes kTakes = Takes::kChanges>
class CardFilesEndpoint : public CardEndpoint<ParamEndpoint<kParams, kTakes>> {
 protected:
  CardFilesEndpoint() { this->keepsBytes = true; }

  int load() override {
    const int result = CardEndpoint<ParamEndpoint<kParams, kTakes>>::load();
    return result == 200 ? this->read(system_) : result;
  }

  ProductFolder productFolder() const { return {.model = system_.model}; }

  // Returns the size in bytes of an entry's whole path. The given path is relative to the product's folder.
  std::size_t wholePathSize(std::string_view path) const {
    return kCardFolder.size() + productFolder().model.size() + path.size();
  }

  // True if the path names a file. sdcard_delete.cgi treats such a path as an empty folder, sdcard_list.cgi
  // only while the card cannot be used.
  bool isFile(const std::optional<std::string>& path) const {
    return path && canReadFile(productFolder(), *path);
  }

  // Adds an item to a list for replyItems: the item's text or, in JSON, its object.
  void addItem(std::string* items, std::string_view item) const {
    if (!items->empty()) *items += this->isJson() ? ',' : kItemSeparator;
    *items += item;
  }

  void replyItems(const std::string& items) {
    this->isJson() ? this->value("items", joined({"[", items, "]"})) : this->pair("items", items);
  }

  void replyPath(std::string_view key, std::string_view path) {
    this->pair(key, this->isJson() ? std::string{path} : shownName(shellQuoted(path)));
  }

  std::optional<std::string> folderOf(std::string_view path) const {
    return folderFromClient(path, productFolder().model);
  }

 private:
  SystemSettings system_;
};

// The schema of a client's path.
inline constexpr char kCardPathSchema[] = R"("type":"string","not":{"pattern":"\\.\\./"})";

inline constexpr ApiKey kCardStatusKey{"sd_status", ApiType::kText,
                                       "The state of the card, as `status` of sdcard.cgi."};
inline constexpr ApiKey kCardPathKey{"path", ApiType::kText,
                                     "The path as given; in text with each `'` as `'\\''`."};

}  // namespace camera
