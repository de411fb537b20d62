// Paths of the SD card, as texts: what a client's path means, and where a path leads.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace camera {

// Where the card is mounted; the product's folder on it has the model's name.
inline constexpr std::string_view kCardFolder = "/mnt/usb/";

// False if empty, "." or "..", or with a slash.
bool isFolderName(std::string_view name);

// What a client's path means: the path from the product's folder, empty or beginning with a slash. The client
// may name the whole path, or begin at the model's name or at the product's folder. Nothing if the path means
// no folder, or if the model cannot be a folder's name. The result may still lead outside.
std::optional<std::string> folderFromClient(std::string_view path, std::string_view model);

// Where a path leads, without ".", ".." and needless slashes; empty: where it begins. Nothing if it leads out
// on its way or holds a NUL. Links count as names: they are not followed on the card.
std::optional<std::string> plainPath(std::string_view path);

// Where an entry of a folder lies, both paths from the product's folder. Nothing for a name that leads
// outside, to the folder itself or to one around it.
std::optional<std::string> entryPath(std::string_view folder, std::string_view name);

}  // namespace camera
