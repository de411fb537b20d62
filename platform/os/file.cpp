// Reading files whole.
#include "platform/file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "platform/descriptor.h"
#include "platform/log.h"

namespace camera {

int readFile(const char* path, std::string* text, int expected) {
  text->clear();
  const int descriptor = open(path, O_RDONLY | O_CLOEXEC);
  int error = descriptor < 0 ? errno : 0;
  if (descriptor >= 0) {
    error = readAll(descriptor, text);
    close(descriptor);
  }
  if (error == 0) return 0;
  text->clear();
  if (error != expected) logDebug("%s: %s", path, std::strerror(error));
  return error;
}

}  // namespace camera
