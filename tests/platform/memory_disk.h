// A disk in memory on which any step can fail, or be the last one before a crash, and which knows what was
// synced.
#pragma once

#include <cerrno>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "platform/store/store_files.h"

namespace camera::test {

// Killed: the disk is as it was. Power lost: what was not synced is gone. Data lost: names had reached the
// disk, contents that were not synced had not.
enum class Crash { kKilled, kPowerLost, kDataLost };

class MemoryDisk : public StoreFiles {
 public:
  std::string failing;              // the step that fails with EIO; a write has then written half
  int replacementError = 0;         // what a file system answers that cannot exchange folders
  int stepsToLive = kUnthreatened;  // that succeed; the process dies at the next one, halfway through a write

  int lock() override { return step("lock"); }
  void unlock() override {}

  int read(const char* name, void* buffer, std::size_t size, std::size_t* length) override {
    if (step("read") != 0) return EIO;
    if (!has(name)) return ENOENT;
    *length = content(name).copy(static_cast<char*>(buffer), size);
    return 0;
  }

  int create(const char* name) override {
    if (step("create") != 0) return EIO;
    if (has(name)) return EEXIST;
    open_ = names_[name] = std::make_shared<File>();
    return 0;
  }

  int write(const void* data, std::size_t size) override {
    const bool wasDead = dead();
    const int error = step("write");
    if (!wasDead) open_->data.append(static_cast<const char*>(data), error == 0 ? size : size / 2);
    return error;
  }

  int sync() override {
    if (step("sync") != 0) return EIO;
    open_->synced = open_->data.size();
    return 0;
  }

  void close() override { open_.reset(); }

  int rename(const char* from, const char* to) override {
    if (step("rename") != 0) return EIO;
    names_[to] = names_.extract(from).mapped();
    return 0;
  }

  int remove(const char* name) override {
    if (step("remove") != 0) return EIO;
    return names_.erase(name) == 1 ? 0 : ENOENT;
  }

  int syncFolder() override {
    if (step("syncFolder") != 0) return EIO;
    if (!isReplacing_) durable_ = names_;
    return 0;
  }

  int beginReplacement() override {
    if (replacementError != 0 || step("begin") != 0) return replacementError != 0 ? replacementError : EIO;
    old_ = names_;
    isReplacing_ = true;
    return 0;
  }

  int endReplacement(bool isWanted) override {
    isReplacing_ = false;
    const int error = step("end");
    if (!isWanted || error != 0)
      names_ = old_;
    else
      durable_ = names_;
    return error;
  }

  std::string path(const char* name) const override { return std::string("disk/") + name; }

  bool dead() const { return stepsToLive < 0; }
  bool has(const char* name) const { return names_.contains(name); }
  std::string& content(const char* name) { return names_[name]->data; }

  // What the next process finds.
  void restartAfter(Crash crash) {
    stepsToLive = kUnthreatened;
    if (std::exchange(isReplacing_, false)) names_ = old_;
    if (crash == Crash::kKilled) return;
    if (crash == Crash::kPowerLost) names_ = durable_;
    for (auto& [name, file] : names_) file->data.resize(file->synced);
  }

 private:
  static constexpr int kUnthreatened = 1'000'000;
  struct File {
    std::string data;
    std::size_t synced = 0;
  };

  int step(const char* name) { return --stepsToLive < 0 || failing == name ? EIO : 0; }

  std::map<std::string, std::shared_ptr<File>> names_;
  std::map<std::string, std::shared_ptr<File>> durable_;
  std::map<std::string, std::shared_ptr<File>> old_;  // what is in place during a replacement
  bool isReplacing_ = false;
  std::shared_ptr<File> open_;
};

}  // namespace camera::test
