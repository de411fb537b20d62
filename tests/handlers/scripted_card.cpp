// The SD card on the scripted platform: the product's folder, every entry of which can be made to fail.
#include <cerrno>

#include "platform/card/card.h"
#include "tests/handlers/scripted_platform.h"

namespace camera {
namespace {

using test::scripted;

std::vector<std::string>& opened() {
  static std::vector<std::string> folders;
  return folders;
}

// What is at the path, null when nothing is.
const std::string* contentAt(std::string_view path) {
  static const std::string kFolder = "folder";
  const auto plain = plainPath(path);
  const auto entry = plain ? scripted().card.find(*plain) : scripted().card.end();
  if (plain == "") return &kFolder;
  return entry == scripted().card.end() ? nullptr : &entry->second;
}

EntryKind kindOf(const std::string& content) {
  return content == "folder" ? EntryKind::kFolder : content == "pipe" ? EntryKind::kOther : EntryKind::kFile;
}

template <class Take>
void forEachEntry(const std::string& folder, Take take) {
  const std::string start = folder.empty() ? "" : folder + "/";
  for (const auto& [path, content] : scripted().card)
    if (path.starts_with(start) && path.size() > start.size() && path.find('/', start.size()) == path.npos)
      take(path.substr(start.size()), kindOf(content));
}

}  // namespace

CardFolder::~CardFolder() = default;

int CardFolder::open(const ProductFolder& /*product*/, std::string_view path) {
  const int error = scripted().answer("get card folder");
  const std::string* content = contentAt(path);
  if (error != 0 || content == nullptr || *content != "folder") return error == EIO ? EIO : ENOENT;
  descriptor_ = static_cast<int>(opened().size());
  opened().push_back(*plainPath(path));
  return 0;
}

int CardFolder::list(NameFilter wanted, NameList* names) const {
  forEachEntry(opened()[static_cast<std::size_t>(descriptor_)], [&](const std::string& name, EntryKind kind) {
    if (wanted(name)) names->add(name, kind);
  });
  const int error = scripted().answer("get card names");
  return error == 0 ? 0 : error == ENOTDIR ? ENOENT : EIO;
}

int CardFolder::examine(const char* name, EntryKind* kind, std::int64_t* number) const {
  const std::string folder = opened()[static_cast<std::size_t>(descriptor_)];
  const std::string path = (folder.empty() ? "" : folder + "/") + name;
  *number = 0;
  const int result = scripted().answer(std::string{"ask to examine "} + name);
  if (result != 0) return result == ENOMEM ? ENOMEM : 0;
  if (*kind == EntryKind::kFile) *number = std::stoll(scripted().card[path]);
  if (*kind == EntryKind::kFolder)
    forEachEntry(path, [&](const std::string& entry, EntryKind) { *number += isVisible(entry) ? 1 : 0; });
  return 0;
}

int findEntry(const ProductFolder& /*product*/, std::string_view path, EntryKind* kind) {
  const std::string* content = contentAt(path);
  const int result = scripted().answer("ask for entry " + std::string{path});
  if (result == 0 && content != nullptr) *kind = kindOf(*content);
  return content == nullptr ? ENOENT : result;
}

bool canReadFile(const ProductFolder& /*product*/, std::string_view path) {
  return scripted().answer("ask to read " + std::string{path}) == 0 && *contentAt(path) != "locked";
}

int removeFile(const ProductFolder& /*product*/, std::string_view path) {
  return scripted().answer("run remove " + std::string{path});
}

}  // namespace camera
