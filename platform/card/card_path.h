// Paths of the SD card, as texts: what a client's path means, and where a path leads.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace camera {

// Where the card is mounted; the product's folder on it carries the model's name.
inline constexpr std::string_view kCardFolder = "/mnt/usb/";

// Whether a folder can have the name: it is neither empty nor "." or "..", and holds no slash.
bool isFolderName(std::string_view name);

// What a client's path means: the path from the product's folder, empty or with a slash before it. The client
// may name the whole path, begin at the model's name, or at the product's folder. Nothing for a path that
// means no folder, or for a model whose name no folder can have. It may still lead outside.
std::optional<std::string> folderFromClient(std::string_view path, std::string_view model);

// Where a path leads, without ".", ".." and needless slashes; empty: where it begins. Nothing for one that
// leads out on its way, or holds a NUL. Links, which are not followed on the card, count as names.
std::optional<std::string> plainPath(std::string_view path);

// Where an entry of a folder lies, both paths from the product's folder. Nothing for a name that leads
// outside or to the folder itself or one around it: that is no entry of it.
std::optional<std::string> entryPath(std::string_view folder, std::string_view name);

}  // namespace camera
