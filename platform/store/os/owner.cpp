// The settings folder's owner, as whom the store is used.
#include "platform/store/owner.h"

#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/log.h"
#include "platform/text.h"

namespace camera {

void actAsOwner(const char* folder) {
  struct stat found {};
  if (geteuid() != 0 || stat(folder, &found) != 0 || found.st_uid == 0) return;
  if (setgroups(0, nullptr) != 0 || setgid(found.st_gid) != 0 || setuid(found.st_uid) != 0)
    logDebug(joined({folder, ": cannot act as its owner: ", errorText(errno)}));
}

}  // namespace camera
