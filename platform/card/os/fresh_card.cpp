// What a card needs that was just formatted.
#include "platform/card/fresh_card.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "platform/log.h"

namespace camera {

void awaitMount() {
  sleep(1);
}

void makeCardFolder(const char* path) {
  if (mkdir(path, 0777) != 0 && errno != EEXIST) logDebug("%s: %s", path, std::strerror(errno));
}

}  // namespace camera
