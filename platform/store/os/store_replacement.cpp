// Replaces the settings store's folder as a whole.
#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <string>
#include <string_view>
#include <utility>

#include "platform/descriptor.h"
#include "platform/store/store_files.h"

namespace camera {
namespace {

constexpr unsigned kExchange = 2;  // RENAME_EXCHANGE, which not every libc declares

int errorOf(long result) {
  return result < 0 ? errno : 0;
}

// Calls a function with each name in the folder until it returns an errno value, and returns that.
template <class Visit>
int forEachName(const std::string& folder, Visit visit) {
  DIR* names = opendir(folder.c_str());
  if (names == nullptr) return errno;
  int error = 0;
  while (error == 0) {
    errno = 0;
    const dirent* entry = readdir(names);
    if (entry == nullptr) {
      error = errno;
      break;
    }
    const std::string_view name = entry->d_name;
    if (name != "." && name != "..") error = visit(entry->d_name);
  }
  closedir(names);
  return error;
}

// A folder cannot be linked; that is not for the lack of links.
int link(int from, int to, const char* name) {
  if (linkat(from, name, to, name, 0) == 0) return 0;
  const int error = errno;
  struct stat old;
  return fstatat(from, name, &old, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(old.st_mode) ? EISDIR : error;
}

// Who may use the old folder may use the new one.
int copyAccess(int from, int to) {
  struct stat old;
  struct stat made;
  if (fstat(from, &old) != 0 || fstat(to, &made) != 0) return errno;
  const bool isSameOwner = old.st_uid == made.st_uid && old.st_gid == made.st_gid;
  if (!isSameOwner && fchown(to, old.st_uid, old.st_gid) != 0) return errno;
  return errorOf(fchmod(to, old.st_mode & 07777));
}

}  // namespace

int ReplaceableStoreFiles::beginReplacement() {
  const std::string path = newFolder();
  if (mkdir(path.c_str(), 0700) != 0) return errno;
  Descriptor made(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  int error = errorOf(made.number());
  // Nobody else knows the folder yet, so this does not wait.
  if (error == 0) error = errorOf(flock(made.number(), LOCK_EX));
  if (error == 0) error = copyAccess(locked().number(), made.number());
  if (error == 0) {
    error =
        forEachName(folder(), [&](const char* name) { return link(locked().number(), made.number(), name); });
  }
  if (error == 0)
    new_ = std::move(made);
  else
    removeNewFolder();
  return error;
}

int ReplaceableStoreFiles::endReplacement(bool isWanted) {
  const std::string made = newFolder();
  int error = isWanted ? errorOf(fsync(new_.number())) : 0;
  if (isWanted && error == 0) {
    error = errorOf(syscall(SYS_renameat2, AT_FDCWD, made.c_str(), AT_FDCWD, folder().c_str(), kExchange));
    if (error == 0) {
      locked() = std::move(new_);
      // The old files stay until it is certain that a power failure does not bring their folder back.
      error = syncParent();
      if (error != 0) return error;
    }
  }
  new_.close();
  removeNewFolder();
  return error;
}

int ReplaceableStoreFiles::syncFolder() {
  return new_.isOpen() ? errorOf(fsync(new_.number())) : PosixStoreFiles::syncFolder();
}

std::string ReplaceableStoreFiles::path(const char* name) const {
  return new_.isOpen() ? newFolder() + name : PosixStoreFiles::path(name);
}

}  // namespace camera
