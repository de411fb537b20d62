// The settings store: records in files, replaced atomically, and merged where two processes change one
// record.
//
// A request is a process that reads records, decides, and writes them back, while others do the same. So the
// store remembers of each record what this process knows, and a write looks at what was stored since:
//   - Usually a field (of an array, an element) goes into the file only when the writer changed it. Two
//     processes that change different fields both win; of one field, the later wins.
//   - A record that is indivisible is not merged: a write is refused when another process has changed it.
//   - A write of a record that depends on others is refused when another process has changed one of those
//     that this one read, since what goes together was decided on them.
// Such a refusal is told apart (overtaken), so that the request can be decided again on what is stored now.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "platform/store/record.h"
#include "platform/store/store_files.h"

namespace camera {

// One per process and not thread-safe. Every record that is read is validated. A file that cannot be read is
// never replaced but by overwrite and reset.
class SettingsStore {
 public:
  // The bits of RecordInfo::dependsOn are positions in records.
  SettingsStore(StoreFiles& files, std::span<const RecordInfo* const> records)
      : files_(files), records_(records) {
    known_.reserve(records.size());
  }

  // Fills the record with what is stored, or the factory defaults without a file. A failure leaves it
  // untouched.
  StoreResult read(const RecordInfo& info, void* record);
  // The same, but the next write of the record does not count it as this process's last read.
  StoreResult peek(const RecordInfo& info, void* record);

  // Stores what differs from this process's last read or write of the record; all of it where there was none.
  // Returns kDone only after the disk has it.
  StoreResult write(const RecordInfo& info, const void* record);

  // Stores the whole record, whatever the file holds and whoever changed it.
  StoreResult overwrite(const RecordInfo& info, const void* record);

  // Goes back to the factory defaults, whatever the file holds.
  StoreResult reset(const RecordInfo& info);

  // Keeps other processes from writing until release or the end of this process, so that what is read from
  // now on is what a write finds. Where the lock cannot be had, the next write says so.
  void hold();
  void release();

  // What the last refusal or failure was about: for a failure the file and why.
  const std::string& fault() const { return fault_; }
  // Whether the last refusal came only because another process changed the record, or one that it depends on,
  // since this process read it.
  bool overtaken() const { return overtaken_; }

  // Refuses for a rule that is not the store's own. Returns kRefused.
  StoreResult refuse(const RecordInfo& info, const char* reason);

  std::span<const RecordInfo* const> records() const { return records_; }

 private:
  using Bytes = std::vector<std::uint8_t>;
  // What this process knows of a record. The two copies differ by what other processes had changed when this
  // one wrote, which its handler has not seen.
  struct Known {
    const RecordInfo* info;
    Bytes callersCopy;  // last read or written here: what differs from it in the next write is a change;
                        // empty where it is the stored one
    Bytes storedCopy;   // what the file held after that: when it holds another, another process wrote it
    const Bytes& callersBytes() const { return callersCopy.empty() ? storedCopy : callersCopy; }
  };
  class Lock;

  StoreResult begin(const Lock& lock);
  StoreResult load(const RecordInfo& info, Bytes* record);
  StoreResult checkDependencies(const RecordInfo& info);
  StoreResult replace(const RecordInfo& info, const Bytes& record);
  StoreResult finish(const RecordInfo& info, Bytes callersCopy, Bytes storedCopy);
  const Known* known(const RecordInfo& info) const;
  void remember(const RecordInfo& info, Bytes callersCopy, Bytes storedCopy);
  StoreResult refuseOvertaken(const RecordInfo& info);
  StoreResult refuseInvalid(const RecordInfo& info, const std::string& field);
  StoreResult fail(const char* name, const std::string& reason);
  StoreResult fail(const char* name, int error);

  StoreFiles& files_;
  std::span<const RecordInfo* const> records_;
  std::vector<Known> known_;
  std::string fault_;
  bool overtaken_ = false;
  bool isHeld_ = false;
};

}  // namespace camera
