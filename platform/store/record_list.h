// The records of the settings store: one line each, in the order of their index, which is also the order in
// which the action programs of a transaction run.
#pragma once

// RECORD(short name, struct): the file in the store, the action program and cam_get_/cam_set_ carry the short
// name.
#define CAMERA_RECORDS(RECORD)      \
  RECORD(curtime, _curtime_setting) \
  RECORD(ntp, _ntp_setting)         \
  RECORD(tzone, _tzone_setting)     \
  RECORD(ddns, _ddns_setting)       \
  RECORD(lan, _lan_setting)         \
  RECORD(pppoe, _pppoe_setting)     \
  RECORD(upnp, _upnp_setting)       \
  RECORD(gpio, _gpio_setting)       \
  RECORD(host, _host_setting)       \
  RECORD(system, _system_setting)   \
  RECORD(httpsvr, _httpsvr_setting) \
  RECORD(rtspsvr, _rtspsvr_setting) \
  RECORD(wireless, _wireless_setting)
