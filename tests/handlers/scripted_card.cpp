// The SD card on the scripted platform: the product's folder, every entry of which can be made to fail.
#include <fcntl.h>

#include <cerrno>

#include "platform/card/card.h"
#include "tests/handlers/scripted_platform.h"

namespace camera {
namespace {

using test::scripted;

// By descriptor of an opened folder: what the paths of its entries begin with.
std::map<int, std::string> opened;

// What is at the path, empty when nothing is.
std::string contentAt(std::string_view path) {
  const auto plain = plainPath(path);
  const auto entry = plain ? scripted().card.find(*plain) : scripted().card.end();
  if (plain == "") return "folder";
  return entry == scripted().card.end() ? "" : entry->second;
}

EntryKind kindOf(const std::string& content) {
  return content == "folder" ? EntryKind::kFolder : content == "pipe" ? EntryKind::kOther : EntryKind::kFile;
}

void list(const std::string& start, NameFilter wanted, NameList* names) {
  for (const auto& [path, content] : scripted().card) {
    const std::string name = path.starts_with(start) ? path.substr(start.size()) : "";
    if (!name.empty() && name.find('/') == name.npos && wanted(name)) names->add(name, kindOf(content));
  }
}

}  // namespace

int CardFolder::open(const ProductFolder& /*product*/, std::string_view path) {
  const int error = scripted().answer("get card folder");
  if (error != 0 || contentAt(path) != "folder") return error == EIO ? EIO : ENOENT;
  descriptor_ = Descriptor(::open("/", O_PATH));
  opened[descriptor_.number()] = plainPath(path) == "" ? "" : *plainPath(path) + "/";
  return 0;
}

int CardFolder::list(NameFilter wanted, NameList* names) const {
  camera::list(opened[descriptor_.number()], wanted, names);
  const int error = scripted().answer("get card names");
  return error == 0 ? 0 : error == ENOTDIR ? ENOENT : EIO;
}

int CardFolder::examine(const char* name, EntryKind* kind, std::int64_t* number) const {
  const std::string path = opened[descriptor_.number()] + name;
  const int result = scripted().answer(std::string{"ask to examine "} + name);
  NameList inside;
  camera::list(path + "/", isVisible, &inside);
  *number = result != 0                 ? 0
            : *kind == EntryKind::kFile ? std::stoll(contentAt(path))
                                        : static_cast<std::int64_t>(inside.size());
  return result == ENOMEM ? ENOMEM : 0;
}

int findEntry(const ProductFolder& /*product*/, std::string_view path, EntryKind* kind) {
  const int result = scripted().answer("ask for entry " + std::string{path});
  *kind = kindOf(contentAt(path));
  return contentAt(path).empty() ? ENOENT : result;
}

bool canReadFile(const ProductFolder& /*product*/, std::string_view path) {
  const std::string content = contentAt(path);
  const bool isFile = !content.empty() && kindOf(content) == EntryKind::kFile;
  return scripted().answer("ask to read " + std::string{path}) == 0 && isFile && content != "locked";
}

int removeFile(const ProductFolder& /*product*/, std::string_view path) {
  return scripted().answer("run remove " + std::string{path});
}

int removeFolder(const ProductFolder& /*product*/, std::string_view path) {
  return scripted().answer("run remove folder " + std::string{path});
}

}  // namespace camera
