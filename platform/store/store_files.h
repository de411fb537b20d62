// The files of the settings store: one method for each step that can fail.
#pragma once

#include <cerrno>
#include <chrono>
#include <cstddef>
#include <string>

#include "platform/descriptor.h"

namespace camera {

inline constexpr char kSettingsFolder[] = "/var/lib/camera/settings";

// Names are those of files in the store's folder. Each int result is 0 or an errno value.
class StoreFiles {
 public:
  virtual ~StoreFiles() = default;

  // Waits until no other process holds the lock; EBUSY if one holds it for too long. Removes what a killed
  // process left of a replacement.
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

  // Replaces the folder as a whole. The store must be locked. From begin to end, all methods but read are
  // about a new folder, which begins with the old one's files; end puts it into the old one's place in one
  // step, or drops it. The lock is then that of the folder in place.
  virtual int beginReplacement() { return ENOSYS; }
  virtual int endReplacement(bool /*isWanted*/) { return ENOSYS; }

  // For messages.
  virtual std::string path(const char* name) const = 0;
};

// Files in a folder. The lock is on the folder itself, so that no lock file lies among the records.
class PosixStoreFiles : public StoreFiles {
 public:
  // Waits so long for a lock, less than the ten seconds in which a client expects an answer. Once that was in
  // vain, it waits no more.
  explicit PosixStoreFiles(std::string folder, std::chrono::milliseconds patience = std::chrono::seconds(8))
      : folder_(std::move(folder) + "/"), patience_(patience) {}

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

 protected:
  std::string newFolder() const;  // with its slash, like folder()
  void removeNewFolder() const;
  void removeLeftovers() const;
  int syncParent() const;
  const std::string& folder() const { return folder_; }
  Descriptor& locked() { return lock_; }

 private:
  int lockOnce();

  std::string folder_;
  std::chrono::milliseconds patience_;
  std::string readPath_;  // of the last read; kept so that the next one need not allocate
  Descriptor lock_;       // the folder, while it is locked
  Descriptor file_;       // the file that is being written
};

// The same for a program that replaces the folder, which needs a writable parent. Endpoints do not.
class ReplaceableStoreFiles final : public PosixStoreFiles {
 public:
  using PosixStoreFiles::PosixStoreFiles;

  int syncFolder() override;
  int beginReplacement() override;
  int endReplacement(bool isWanted) override;
  std::string path(const char* name) const override;

 private:
  Descriptor new_;  // the new folder, which is locked too, during a replacement
};

}  // namespace camera
