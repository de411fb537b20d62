// Reading and writing a descriptor past interruptions and short transfers; each returns 0 or an errno value.
#pragma once

#include <cstddef>
#include <string>

namespace camera {

// One read of at most size bytes; of a regular file, fewer than size are all there are.
int readOnce(int descriptor, void* buffer, std::size_t size, std::size_t* length);

// Appends everything up to the end of the file.
int readAll(int descriptor, std::string* text);

int writeAll(int descriptor, const void* data, std::size_t size);

}  // namespace camera
