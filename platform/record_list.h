// The records of the settings store: one line each, in the order of their index, which is also the order in
// which the action programs of a transaction run.
#pragma once

// RECORD(short name, struct): the file in the store, the action program and cam_get_/cam_set_ carry the short
// name.
#define CAMERA_RECORDS(RECORD)      \
  RECORD(httpsvr, _httpsvr_setting) \
  RECORD(rtspsvr, _rtspsvr_setting)
