// The settings store as handlers use it: read a record whole, change the copy, write it back in a
// transaction.
#pragma once

#include <cstddef>
#include <cstdint>

#include "platform/store/record_list.h"

// The side effects that one transaction collected: bit i stands for record i of CAMERA_RECORDS.
struct _cam_actions {
  std::uint64_t records;
};
static_assert(sizeof(_cam_actions) == 8);

// cam_get_X fills the whole record with the stored settings, or the factory defaults where nothing was
// stored.
//   0 done; 2 the record cannot be read (the log says why); the record is then untouched.
// cam_set_X stores what differs from this process's last read of the record and adds its action.
//   0 stored and synced; 1 refused: a text without an end, a field outside its bounds, or a decision made on
//   values that another process has changed since; 2 failed: what the operating system refused.
//   The flag, 0 or 1, is fixed per call site; both do the same.
#define CAMERA_DECLARE_RECORD(name, type)  \
  struct type;                             \
  int cam_get_##name(struct type* record); \
  int cam_set_##name(const struct type* record, _cam_actions* actions, unsigned char flag);
CAMERA_RECORDS(CAMERA_DECLARE_RECORD)
#undef CAMERA_DECLARE_RECORD

namespace camera {

// The short name and the calls of a record, by its type, for code that is written once for all records.
template <class Record>
struct RecordCalls;
#define CAMERA_RECORD_CALLS(record, type)           \
  template <>                                       \
  struct RecordCalls<type> {                        \
    static constexpr const char* kName = #record;   \
    static constexpr auto* get = &cam_get_##record; \
    static constexpr auto* set = &cam_set_##record; \
  };
CAMERA_RECORDS(CAMERA_RECORD_CALLS)
#undef CAMERA_RECORD_CALLS

}  // namespace camera

// True when the last cam_set_ of this process was refused only because another process changed the record, or
// one that it depends on, since this process read it: read again, decided again, it may be stored.
bool cam_overtaken();

// Keeps other processes from writing from now on, so that what is read now is what a write finds; released by
// cam_release, cam_work_actions and the end of the process. Where the store cannot be held, a write says so.
void cam_hold();
void cam_release();

// Empties an actions record before a transaction.
void cam_clean_actions(_cam_actions* actions);

// Runs the action programs of the collected records, in record order, and waits for none longer than 10 s.
// They may write the store, so it is released first.
// A missing program is no failure. Returns the number of programs that were started.
int cam_work_actions(_cam_actions* actions);

// The patrol route, a text of at most 63 characters; size counts the NUL. 0 done, 1 refused, 2 failed.
int cam_get_route(char* route, std::size_t size);
int cam_set_route(const char* route);

// The signal of the present wireless connection, in the driver's unit; 0 without one.
int cam_get_wireless_rssi();

// Stores the factory defaults of the image settings, whatever was stored, fills the record with them and runs
// their action program. 0 done; 2 failed, and the record is untouched.
int cam_reset_image(struct _image_setting* record);
