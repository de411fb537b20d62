// The files of the settings store: one method for each step that can fail.
#pragma once

#include <cstddef>
#include <string>

#include "platform/descriptor.h"

namespace camera {

inline constexpr char kSettingsFolder[] = "/var/lib/camera/settings";

// Names are those of files in the store's folder. Each int result is 0 or an errno value.
class StoreFiles {
 public:
  virtual ~StoreFiles() = default;

  // Waits until no other process holds the lock.
  virtual int lock() = 0;
  virtual void unlock() = 0;

  // Reads at most size bytes; length is set to their number. ENOENT if there is no such file or no folder.
  virtual int read(const char* name, void* buffer, std::size_t size, std::size_t* length) = 0;

  // Creates a file, which must not exist, readable by its owner alone. It stays open for write and sync until
  // close.
  virtual int create(const char* name) = 0;
  virtual int write(const void* data, std::size_t size) = 0;
  virtual int sync() = 0;
  virtual void close() = 0;

  virtual int rename(const char* from, const char* to) = 0;
  virtual int remove(const char* name) = 0;
  // Makes renames and removals durable. The store must be locked.
  virtual int syncFolder() = 0;

  // For messages.
  virtual std::string path(const char* name) const = 0;
};

// Files in a folder. The lock is on the folder itself, so that no lock file lies among the records.
class PosixStoreFiles final : public StoreFiles {
 public:
  explicit PosixStoreFiles(std::string folder) : folder_(std::move(folder) + "/") {}

  int lock() override;
  void unlock() override;
  int read(const char* name, void* buffer, std::size_t size, std::size_t* length) override;
  int create(const char* name) override;
  int write(const void* data, std::size_t size) override;
  int sync() override;
  void close() override;
  int rename(const char* from, const char* to) override;
  int remove(const char* name) override;
  int syncFolder() override;
  std::string path(const char* name) const override;

 private:
  std::string folder_;    // with its slash
  std::string readPath_;  // of the last read; kept so that the next one need not allocate
  Descriptor lock_;       // the folder, while it is locked
  Descriptor file_;       // the file that is being written
};

}  // namespace camera
