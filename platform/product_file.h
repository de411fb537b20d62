// Where the product information lies.
#pragma once

#include <string>

namespace camera {

inline constexpr char kProductFile[] = "/etc/camera/product.conf";

// Reads it. False when that cannot be done; the log says why.
bool readProductFile(std::string* text);

}  // namespace camera
