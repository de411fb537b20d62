// The settings store's files in a folder of the file system.
#include "platform/store/store_files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "platform/descriptor.h"

namespace camera {
namespace {

constexpr unsigned kPauseMicroseconds = 2000;  // a write takes about as long

int errorOf(int result) {
  return result < 0 ? errno : 0;
}

}  // namespace

std::string PosixStoreFiles::path(const char* name) const {
  std::string path;
  const std::size_t length = std::strlen(name);
  path.reserve(folder_.size() + length);
  path.append(folder_).append(name, length);
  return path;
}

// Whoever waited for the lock may have got that of a folder which was replaced meanwhile.
int PosixStoreFiles::lock() {
  struct stat locked;
  struct stat inPlace;
  do {
    if (const int error = lockOnce(); error != 0) return error;
    if (fstat(lock_.number(), &locked) != 0 || stat(folder_.c_str(), &inPlace) != 0) {
      const int error = errno;
      unlock();
      return error;
    }
  } while (locked.st_ino != inPlace.st_ino || locked.st_dev != inPlace.st_dev);
  removeLeftovers();
  return 0;
}

int PosixStoreFiles::lockOnce() {
  lock_ = Descriptor(::open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!lock_.isOpen()) return errno;
  const auto end = std::chrono::steady_clock::now() + patience_;
  while (flock(lock_.number(), LOCK_EX | LOCK_NB) != 0) {
    int error = errno;
    if (error == EINTR) continue;
    if (error == EWOULDBLOCK && std::chrono::steady_clock::now() >= end) {
      patience_ = {};
      error = EBUSY;
    }
    if (error != EWOULDBLOCK) {
      unlock();
      return error;
    }
    usleep(kPauseMicroseconds);
  }
  return 0;
}

void PosixStoreFiles::unlock() {
  lock_.close();
}

int PosixStoreFiles::read(const char* name, void* buffer, std::size_t size, std::size_t* length) {
  readPath_.assign(folder_).append(name);
  // A pipe or a device in a record's place must not keep the reader waiting.
  constexpr int kFlags = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
  Descriptor file(::open(readPath_.c_str(), kFlags));
  // If the folder was replaced while its path was resolved, the file is no longer in the old one.
  if (!file.isOpen() && errno == ENOENT) file = Descriptor(::open(readPath_.c_str(), kFlags));
  return file.isOpen() ? readOnce(file.number(), buffer, size, length) : errno;
}

int PosixStoreFiles::create(const char* name) {
  file_ = Descriptor(::open(path(name).c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
  return errorOf(file_.number());
}

int PosixStoreFiles::write(const void* data, std::size_t size) {
  return writeAll(file_.number(), data, size);
}

int PosixStoreFiles::sync() {
  return errorOf(fsync(file_.number()));
}

void PosixStoreFiles::close() {
  file_.close();
}

int PosixStoreFiles::rename(const char* from, const char* to) {
  return errorOf(std::rename(path(from).c_str(), path(to).c_str()));
}

int PosixStoreFiles::remove(const char* name) {
  return errorOf(unlink(path(name).c_str()));
}

int PosixStoreFiles::syncFolder() {
  return errorOf(fsync(lock_.number()));
}

}  // namespace camera
