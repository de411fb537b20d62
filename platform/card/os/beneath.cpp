// Opens beneath a folder: in one system call if the kernel has it, otherwise part by part.
#include "platform/card/beneath.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#if __has_include(<linux/openat2.h>)
#include <linux/openat2.h>
#endif

#include <cerrno>
#include <string>
#include <string_view>
#include <vector>

#include "platform/text.h"

namespace camera {
namespace {

Descriptor failed(int error) {
  errno = error;
  return Descriptor();
}

// The folders on the way. ".." goes back to one of them, never to the parent in the file system: that may
// have changed meanwhile.
class Trail {
 public:
  explicit Trail(int folder) : first_(folder) {}

  int end() const { return opened_.empty() ? first_ : opened_.back().number(); }
  bool back() {
    if (opened_.empty()) return false;
    opened_.pop_back();
    return true;
  }
  bool enter(const std::string& name) {
    Descriptor folder(openat(end(), name.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!folder.isOpen()) return false;
    opened_.push_back(std::move(folder));
    return true;
  }

 private:
  int first_;
  std::vector<Descriptor> opened_;
};

// With O_PATH, O_NOFOLLOW does not fail on a link but opens the link itself.
Descriptor refuseLink(Descriptor opened) {
  struct stat found {};
  const bool isLink = opened.isOpen() && (fstat(opened.number(), &found) != 0 || S_ISLNK(found.st_mode));
  return isLink ? failed(ELOOP) : std::move(opened);
}

}  // namespace

Descriptor walkBeneath(int folder, const char* path, int flags) {
  std::string_view rest = path;
  if (rest.empty()) return failed(ENOENT);
  if (rest.starts_with('/')) return failed(EXDEV);
  Trail trail(folder);
  while (!rest.empty()) {
    const bool isLast = rest.find('/') == rest.npos;
    const std::string part{takeUntil('/', &rest)};
    if (part == "..") {
      if (!trail.back()) return failed(EXDEV);
    } else if (!part.empty() && part != ".") {
      if (isLast)
        return refuseLink(Descriptor(openat(trail.end(), part.c_str(), flags | O_NOFOLLOW | O_CLOEXEC)));
      if (!trail.enter(part)) return Descriptor();
    }
  }
  return Descriptor(openat(trail.end(), ".", flags | O_CLOEXEC));
}

Descriptor openBeneath(int folder, const char* path, int flags) {
#if defined(SYS_openat2) && defined(RESOLVE_BENEATH)
  // Unlike open, the system call does not add O_LARGEFILE, and rejects it with O_PATH.
  open_how how{};
  how.flags = static_cast<unsigned>(flags | O_CLOEXEC);
  if ((flags & O_PATH) == 0) how.flags |= O_LARGEFILE;
  how.resolve = RESOLVE_BENEATH | RESOLVE_NO_SYMLINKS;
  const long descriptor = syscall(SYS_openat2, folder, path, &how, sizeof how);
  // The call fails like this on an old kernel, in an old sandbox, or if folders were moved meanwhile.
  const bool isUnable = descriptor < 0 && (errno == ENOSYS || errno == EPERM || errno == EAGAIN);
  if (!isUnable) return Descriptor(static_cast<int>(descriptor));
#endif
  return walkBeneath(folder, path, flags);
}

}  // namespace camera
