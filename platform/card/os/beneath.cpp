// Opening beneath a folder: by the kernel where it can, or else part by part.
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

int failed(int error) {
  errno = error;
  return -1;
}

// The folders from the first to where the walk is; ".." goes back to one of them, never to what the file
// system says lies above.
class Trail {
 public:
  explicit Trail(int folder) : first_(folder) {}
  ~Trail() {
    while (!opened_.empty()) back();
  }
  Trail(const Trail&) = delete;
  Trail& operator=(const Trail&) = delete;

  int end() const { return opened_.empty() ? first_ : opened_.back(); }
  bool back() {
    if (opened_.empty()) return false;
    close(opened_.back());
    opened_.pop_back();
    return true;
  }
  bool enter(const std::string& name) {
    const int folder = openat(end(), name.c_str(), O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (folder >= 0) opened_.push_back(folder);
    return folder >= 0;
  }

 private:
  int first_;
  std::vector<int> opened_;
};

// A link is opened as itself where only a path is asked for.
int refuseLink(int descriptor) {
  struct stat found {};
  if (descriptor < 0 || (fstat(descriptor, &found) == 0 && !S_ISLNK(found.st_mode))) return descriptor;
  close(descriptor);
  return failed(ELOOP);
}

}  // namespace

int walkBeneath(int folder, const char* path, int flags) {
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
      if (isLast) return refuseLink(openat(trail.end(), part.c_str(), flags | O_NOFOLLOW | O_CLOEXEC));
      if (!trail.enter(part)) return -1;
    }
  }
  return openat(trail.end(), ".", flags | O_CLOEXEC);
}

int openBeneath(int folder, const char* path, int flags) {
#if defined(SYS_openat2) && defined(RESOLVE_BENEATH)
  // Unlike open, the call itself knows nothing of large files, and takes few flags with O_PATH.
  open_how how{};
  how.flags = static_cast<unsigned>(flags | O_CLOEXEC);
  if ((flags & O_PATH) == 0) how.flags |= O_LARGEFILE;
  how.resolve = RESOLVE_BENEATH | RESOLVE_NO_SYMLINKS;
  const long descriptor = syscall(SYS_openat2, folder, path, &how, sizeof how);
  // An old kernel, an old sandbox, or folders that moved meanwhile.
  const bool isUnable = descriptor < 0 && (errno == ENOSYS || errno == EPERM || errno == EAGAIN);
  if (!isUnable) return static_cast<int>(descriptor);
#endif
  return walkBeneath(folder, path, flags);
}

}  // namespace camera
