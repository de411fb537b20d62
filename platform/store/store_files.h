// What the settings store asks of the disk, one method for each step that can fail.
#pragma once

#include <cstddef>
#include <string>

namespace camera {

inline constexpr char kSettingsFolder[] = "/var/lib/camera/settings";

// Names are those of files in the store's folder. What returns an int returns 0 or an errno value.
class StoreFiles {
 public:
  virtual ~StoreFiles() = default;

  // Waits until no other process holds the store.
  virtual int lock() = 0;
  virtual void unlock() = 0;

  // Reads up to size bytes; length becomes their number. ENOENT without the file or the folder.
  virtual int read(const char* name, void* buffer, std::size_t size, std::size_t* length) = 0;

  // Creates a file that must not exist, for the owner alone, and holds it open for write and sync until
  // close.
  virtual int create(const char* name) = 0;
  virtual int write(const void* data, std::size_t size) = 0;
  virtual int sync() = 0;
  virtual void close() = 0;

  virtual int rename(const char* from, const char* to) = 0;
  virtual int remove(const char* name) = 0;
  // Makes what was renamed and removed durable; the store is locked.
  virtual int syncFolder() = 0;

  // For messages.
  virtual std::string path(const char* name) const = 0;
};

// The files of a folder. The lock is on the folder's own descriptor, so that no lock file lies among the
// records.
class PosixStoreFiles final : public StoreFiles {
 public:
  explicit PosixStoreFiles(std::string folder) : folder_(std::move(folder) + "/") {}
  ~PosixStoreFiles() override;
  PosixStoreFiles(const PosixStoreFiles&) = delete;
  PosixStoreFiles& operator=(const PosixStoreFiles&) = delete;

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
  std::string readPath_;  // that of the last read, for the room that it takes
  int folderDescriptor_ = -1;
  int fileDescriptor_ = -1;
};

}  // namespace camera
