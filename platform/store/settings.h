// The settings store for endpoints: load a whole record, change the copy, store it.
#pragma once

#include <cstdint>

#include "platform/store/record.h"

namespace camera {

// The stored records whose action programs have to run.
struct Actions {
  std::uint64_t records = 0;  // bit i: record i of CAMERA_RECORDS
};

// Fills the record with what is stored, or with the factory defaults if nothing is stored. Returns kDone, or
// kFailed with the record untouched and the reason in the log.
StoreResult loadRecord(RecordIndex index, void* record);

// Stores the fields that differ from this process's last load or store of the record, and adds the record to
// the actions. Returns kDone once they are stored and synced; kRefused for an unterminated text, a value
// outside its bounds, or a write decided on values that another process has changed since; kFailed for an
// error of the operating system, or a stored record that cannot be read.
StoreResult storeRecord(RecordIndex index, const void* record, Actions* actions);

// kIndexOf<HostSettings> is RecordIndex::host; for a type that is no record it is RecordIndex::count.
#define CAMERA_RECORD_INDEX_OF(name, type) \
  struct type;                             \
  template <>                              \
  inline constexpr RecordIndex kIndexOf<type> = RecordIndex::name;
template <class Record>
inline constexpr RecordIndex kIndexOf = RecordIndex::count;
CAMERA_RECORDS(CAMERA_RECORD_INDEX_OF)
#undef CAMERA_RECORD_INDEX_OF

template <class Record>
StoreResult loadRecord(Record* record) {
  return loadRecord(kIndexOf<Record>, record);
}

// True if the last storeRecord was refused only because another process changed the record, or one that it
// depends on, since this process loaded it. After another load and decision, the store may accept the change.
bool isStoreOvertaken();

// True if the last storeRecord failed because the disk, or the user's part of it, is full.
bool isStoreFull();

// Locks the store, so that nobody else changes what is loaded from now on. releaseStore, runActions and the
// end of the process release it. If the store cannot be locked, nothing is
// held, and each write tries again.
void holdStore();
void releaseStore();

// Releases the store, because an action program may write it. Then runs the action programs of the records in
// record order and waits at most 10 s for each. Not every record has a program.
void runActions(const Actions& actions);

// Replaces the record image, whatever is stored, and runs its action program.
StoreResult resetImage(const ImageSettings& factory);

}  // namespace camera
