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

// Empties an actions record before a transaction.
void cam_clean_actions(_cam_actions* actions);

// Runs the action programs of the collected records, in record order, and waits for none longer than 10 s.
// A missing program is no failure. Returns the number of programs that were started.
int cam_work_actions(_cam_actions* actions);

// The patrol route, a text of at most 63 characters; size counts the NUL. 0 done, 1 refused, 2 failed.
int cam_get_route(char* route, std::size_t size);
int cam_set_route(const char* route);

// The signal of the present wireless connection, in the driver's unit; 0 without one.
int cam_get_wireless_rssi();
