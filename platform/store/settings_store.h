// The settings store: records in files that are replaced atomically. Changes of two processes are merged.
//
// A request is a process that reads records, decides, and writes them back, while others do the same. So the
// store remembers what this process read, and a write compares it with what is stored now:
//
// Usually it writes only the fields (of an array, the elements) that the writer changed. Two processes that
// change different fields both succeed; of changes to the same field, the later one stays.
//
// It does not merge an indivisible record: it refuses the write if another process changed the record since
// this one read it. It also refuses the write of a record that depends on others if another process changed
// one of them since then.
//
// overtaken() tells such a refusal from others, so that the request can decide again on what is stored now.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "platform/store/record.h"
#include "platform/store/store_files.h"

namespace camera {

// A record that replaces what is stored; without its bytes, the factory defaults do.
struct Replacement {
  const RecordInfo* info;
  const void* record;
};

// One per process; not thread-safe. Every record that is read is validated. Only overwrite and reset replace
// a file that cannot be read.
class SettingsStore {
 public:
  // The bits of RecordInfo::dependsOn are positions in records.
  SettingsStore(StoreFiles& files, std::span<const RecordInfo* const> records)
      : files_(files), records_(records) {
    known_.reserve(records.size());
  }

  // Fills the record with what is stored, or with the factory defaults if there is no file. A failure leaves
  // it untouched.
  StoreResult read(const RecordInfo& info, void* record);
  // The same, but it does not count as this process's last read of the record.
  StoreResult peek(const RecordInfo& info, void* record);

  // Stores the elements that differ from this process's last read or write of the record; all of them if
  // there was none. Returns kDone only after the disk has the data.
  StoreResult write(const RecordInfo& info, const void* record);

  // Stores the whole record, whatever the file holds and whoever changed it.
  StoreResult overwrite(const RecordInfo& info, const void* record);

  // Restores the factory defaults, whatever the file holds.
  StoreResult reset(const RecordInfo& info);

  // Overwrites or resets these records in one step: afterwards, also after a power failure, either all or
  // none are replaced. On a file system that cannot exchange two folders, it replaces one after the other.
  StoreResult replaceAll(std::span<const Replacement> replacements);

  // Locks the store until release or the end of this process, so that nobody else changes what is read from
  // now on. If the store cannot be locked, nothing is held, and each
  // write tries again.
  void hold();
  void release();

  // The reason of the last refusal or failure; for a failure with the path of the file.
  const std::string& fault() const { return fault_; }
  // The errno value of the last failure; 0 if the operating system did not report it.
  int error() const { return error_; }
  // Whether the last write was refused only because another process changed the record, or one on which it
  // depends, after this process read it.
  bool overtaken() const { return overtaken_; }

  // Refuses a record by a rule of the caller's. Returns kRefused.
  StoreResult refuse(const RecordInfo& info, const char* reason);

  std::span<const RecordInfo* const> records() const { return records_; }

 private:
  using Bytes = std::vector<std::uint8_t>;
  // What this process knows of a record. When this process writes, the merge takes over what others changed.
  // Only the stored copy has these changes, since the caller has not seen them.
  struct Known {
    const RecordInfo* info;
    Bytes callersCopy;  // as the caller last read or wrote it; the next write stores what differs from it.
                        // Empty if it equals storedCopy
    Bytes storedCopy;   // what the file held then; if it now holds something else, another process wrote it
    const Bytes& callersBytes() const { return callersCopy.empty() ? storedCopy : callersCopy; }
  };
  class Lock;

  StoreResult begin(const Lock& lock);
  StoreResult load(const RecordInfo& info, Bytes* record);
  StoreResult checkDependencies(const RecordInfo& info);
  StoreResult replace(const RecordInfo& info, const Bytes& record);
  StoreResult putAll(std::span<const Replacement> replacements);
  StoreResult replaceFolder(std::span<const Replacement> replacements, bool* isPossible);
  StoreResult finish(const RecordInfo& info, Bytes callersCopy, Bytes storedCopy);
  const Known* known(const RecordInfo& info) const;
  void remember(const RecordInfo& info, Bytes callersCopy, Bytes storedCopy);
  StoreResult refuseOvertaken(const RecordInfo& info);
  StoreResult refuseInvalid(const RecordInfo& info, const std::string& field);
  StoreResult fail(const char* name, const std::string& reason, int error = 0);
  StoreResult fail(const char* name, int error);

  StoreFiles& files_;
  std::span<const RecordInfo* const> records_;
  std::vector<Known> known_;
  std::string fault_;
  int error_ = 0;
  bool overtaken_ = false;
  bool isHeld_ = false;
};

}  // namespace camera
