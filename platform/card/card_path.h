// Paths on the SD card, as texts only.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace camera {

// Where the card is mounted; the product's folder on it has the model's name.
inline constexpr std::string_view kCardFolder = "/mnt/usb/";

// False for an empty name, "." and "..", and a name with a slash.
bool isFolderName(std::string_view name);

// Turns a client's path into the path from the product's folder, empty or with a slash at its start. The
// client's path may begin at the root, at the model's name or at the product's folder. Nothing if it names
// another folder of the card, if it has "Musics" after more than one character, or if the model cannot be a
// folder's name. The result may still lead outside.
std::optional<std::string> folderFromClient(std::string_view path, std::string_view model);

// The same path without ".", ".." and needless slashes; empty if it leads back to its start. Nothing if any
// step leads outside, or for a NUL. Links count as names, because they are not followed on the card.
std::optional<std::string> plainPath(std::string_view path);

// The path of an entry of a folder. Both paths begin at the product's folder. Nothing if the name leads
// outside, to the folder itself or to one that contains it.
std::optional<std::string> entryPath(std::string_view folder, std::string_view name);

}  // namespace camera
