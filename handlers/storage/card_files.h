// What the endpoints share that reach the files of the SD card: the product's folder, paths and names in
// requests, and lists of entries: "NAME|TYPE|..." with colons between them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "handlers/storage/card_endpoint.h"
#include "platform/card/card.h"
#include "platform/store/records/system.h"

namespace camera {

inline constexpr char kItemSeparator = ':';
inline constexpr char kFieldSeparator = '|';

// Whether nobody could tell in a list where the name ends.
inline bool isUnlistable(std::string_view name) {
  return name.find(kItemSeparator) != name.npos || name.find(kFieldSeparator) != name.npos;
}

inline std::string& nextItem(std::string* items) {
  if (!items->empty()) *items += kItemSeparator;
  return *items;
}

inline bool staysBelow(std::string_view path) {
  return path.find("../") == path.npos;
}

// A path as a client gives it, into a view.
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

  // The length of the whole path of what lies at a path from the product's folder, in bytes.
  std::size_t wholePathSize(std::string_view path) const {
    return kCardFolder.size() + productFolder().model.size() + path.size();
  }

  // Whether the path, which opened as no folder, is a file's: one may be given, and nothing lies in it.
  bool isFile(const std::optional<std::string>& path) const {
    return path && canReadFile(productFolder(), *path);
  }

  std::optional<std::string> folderOf(std::string_view path) const {
    return folderFromClient(path, productFolder().model);
  }

 private:
  SystemSettings system_;
};

}  // namespace camera
