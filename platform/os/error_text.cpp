// What an errno value means.
#include <cstring>

#include "platform/log.h"

namespace camera {

// GNU's strerror would link the translation of messages, an eighth of the program.
const char* errorText(int error) {
#ifdef __GLIBC__
  return strerrordesc_np(error);
#else
  return std::strerror(error);
#endif
}

}  // namespace camera
