// Paths on the SD card, as texts only.
#include "platform/card/card_path.h"

#include "platform/text.h"

namespace camera {
namespace {

constexpr std::string_view kMount = kCardFolder.substr(0, kCardFolder.size() - 1);
constexpr std::string_view kMusics = "Musics";

std::string joined(std::string_view path) {
  std::string whole = path.starts_with('/') ? "" : "/";
  return whole += path;
}

}  // namespace

bool isFolderName(std::string_view name) {
  return !name.empty() && name != "." && name != ".." && name.find('/') == name.npos;
}

std::optional<std::string> folderFromClient(std::string_view path, std::string_view model) {
  if (!isFolderName(model)) return std::nullopt;
  if (const std::size_t at = path.find(model); at != path.npos) return joined(path.substr(at + model.size()));
  if (path.find(kMount) != path.npos) {
    if (path.size() > kCardFolder.size()) return std::nullopt;
    return "";
  }
  if (const std::size_t at = path.find(kMusics); at != path.npos) {
    if (at > 1) return std::nullopt;
    return joined(path.substr(at));
  }
  return path.empty() || path == "/" ? "" : joined(path);
}

std::optional<std::string> plainPath(std::string_view path) {
  if (path.find('\0') != path.npos) return std::nullopt;
  std::string plain;
  while (!path.empty()) {
    const std::string_view part = takeUntil('/', &path);
    if (part == "..") {
      if (plain.empty()) return std::nullopt;
      plain.resize(plain.find('/') == plain.npos ? 0 : plain.rfind('/'));
    } else if (!part.empty() && part != ".") {
      if (!plain.empty()) plain += '/';
      plain += part;
    }
  }
  return plain;
}

std::optional<std::string> entryPath(std::string_view folder, std::string_view name) {
  const std::optional<std::string> around = plainPath(folder);
  std::optional<std::string> entry = plainPath(std::string{folder} + '/' + std::string{name});
  if (!around || !entry || entry->empty() || (*around + '/').starts_with(*entry + '/')) return std::nullopt;
  return entry;
}

}  // namespace camera
