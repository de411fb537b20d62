// Reading files whole.
#include "platform/file.h"

#include <fcntl.h>

#include <cerrno>

#include "platform/descriptor.h"
#include "platform/log.h"
#include "platform/text.h"

namespace camera {

int readFile(const char* path, std::string* text, int expected) {
  text->clear();
  const Descriptor file(open(path, O_RDONLY | O_CLOEXEC));
  const int error = file.isOpen() ? readAll(file.number(), text) : errno;
  if (error == 0) return 0;
  text->clear();
  if (error != expected) logDebug(joined({path, ": ", errorText(error)}));
  return error;
}

}  // namespace camera
