// The settings store as endpoints use it: load a whole record, change the copy, store it.
#pragma once

#include <cstdint>

#include "platform/store/record.h"

namespace camera {

// The records that a transaction has stored, whose action programs are still to run.
struct Actions {
  std::uint64_t records = 0;  // bit i: record i of CAMERA_RECORDS
};

// Fills the record with what is stored, or with the factory defaults if nothing is stored. Returns kDone, or
// kFailed with the record untouched and the reason in the log.
StoreResult loadRecord(RecordIndex index, void* record);

// Stores what differs from this process's last load of the record, and adds the record to the actions. kDone
// once it is stored and synced; kRefused for an unterminated text, a value outside its bounds, or a decision
// on values that another process changed since; kFailed for an error of the operating system.
StoreResult storeRecord(RecordIndex index, const void* record, Actions* actions);

// The same by type.
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

// Locks the store, so that a write finds what is loaded from now on. releaseStore, runActions and the end of
// the process release it. If the store cannot be locked, the next write fails.
void holdStore();
void releaseStore();

// Releases the store, since an action program may write it. Then runs the action programs of the records in
// record order and waits at most 10 s for each. A record needs no program.
void runActions(const Actions& actions);

// Stores the product's factory settings of the image, whatever was stored, and runs their action program.
StoreResult resetImage(const ImageSettings& factory);

}  // namespace camera
