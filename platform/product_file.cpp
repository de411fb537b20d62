// Where the product information lies.
#include "platform/product_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "platform/descriptor.h"
#include "platform/log.h"

namespace camera {

bool readProductFile(std::string* text) {
  const int descriptor = open(kProductFile, O_RDONLY | O_CLOEXEC);
  int error = descriptor < 0 ? errno : 0;
  if (descriptor >= 0) {
    error = readAll(descriptor, text);
    close(descriptor);
  }
  if (error != 0) dbg_log("%s: %s", kProductFile, std::strerror(error));
  return error == 0;
}

}  // namespace camera
