// The settings store's files in a folder of the file system.
#include "platform/store/store_files.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "platform/descriptor.h"

namespace camera {
namespace {

int errorOf(int result) {
  return result < 0 ? errno : 0;
}

void closeDescriptor(int* descriptor) {
  if (*descriptor >= 0) ::close(*descriptor);
  *descriptor = -1;
}

}  // namespace

PosixStoreFiles::~PosixStoreFiles() {
  close();
  unlock();
}

std::string PosixStoreFiles::path(const char* name) const {
  std::string path;
  const std::size_t length = std::strlen(name);
  path.reserve(folder_.size() + length);
  path.append(folder_).append(name, length);
  return path;
}

int PosixStoreFiles::lock() {
  folderDescriptor_ = ::open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folderDescriptor_ < 0) return errno;
  int error = 0;
  do {
    error = errorOf(flock(folderDescriptor_, LOCK_EX));
  } while (error == EINTR);
  if (error != 0) unlock();
  return error;
}

void PosixStoreFiles::unlock() {
  closeDescriptor(&folderDescriptor_);
}

int PosixStoreFiles::read(const char* name, void* buffer, std::size_t size, std::size_t* length) {
  readPath_.assign(folder_).append(name);
  int descriptor = ::open(readPath_.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return errno;
  const int error = readOnce(descriptor, buffer, size, length);
  closeDescriptor(&descriptor);
  return error;
}

int PosixStoreFiles::create(const char* name) {
  fileDescriptor_ = ::open(path(name).c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  return errorOf(fileDescriptor_);
}

int PosixStoreFiles::write(const void* data, std::size_t size) {
  return writeAll(fileDescriptor_, data, size);
}

int PosixStoreFiles::sync() {
  return errorOf(fsync(fileDescriptor_));
}

void PosixStoreFiles::close() {
  closeDescriptor(&fileDescriptor_);
}

int PosixStoreFiles::rename(const char* from, const char* to) {
  return errorOf(std::rename(path(from).c_str(), path(to).c_str()));
}

int PosixStoreFiles::remove(const char* name) {
  return errorOf(unlink(path(name).c_str()));
}

int PosixStoreFiles::syncFolder() {
  return errorOf(fsync(folderDescriptor_));
}

}  // namespace camera
