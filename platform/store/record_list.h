// The records of the settings store: one line each, in the order of their index, which is also the order in
// which the action programs of a transaction run.
#pragma once

// RECORD(short name, struct): the file in the store, the action program and cam_get_/cam_set_ carry the short
// name.
#define CAMERA_RECORDS(RECORD)                     \
  RECORD(curtime, _curtime_setting)                \
  RECORD(ntp, _ntp_setting)                        \
  RECORD(tzone, _tzone_setting)                    \
  RECORD(ddns, _ddns_setting)                      \
  RECORD(lan, _lan_setting)                        \
  RECORD(pppoe, _pppoe_setting)                    \
  RECORD(upnp, _upnp_setting)                      \
  RECORD(gpio, _gpio_setting)                      \
  RECORD(host, _host_setting)                      \
  RECORD(system, _system_setting)                  \
  RECORD(httpsvr, _httpsvr_setting)                \
  RECORD(rtspsvr, _rtspsvr_setting)                \
  RECORD(wireless, _wireless_setting)              \
  RECORD(account, _account_setting)                \
  RECORD(audio, _audio_setting)                    \
  RECORD(audiodetection, _audio_detection_setting) \
  RECORD(ftp, _ftp_setting)                        \
  RECORD(snapshot, _snapshot_setting)              \
  RECORD(motiond, _motiond_setting)                \
  RECORD(image, _image_setting)                    \
  RECORD(ir, _ir_setting)                          \
  RECORD(osd, _osd_setting)                        \
  RECORD(privacy, _privacy_setting)                \
  RECORD(profile, _profile_setting)                \
  RECORD(record, _record_setting)                  \
  RECORD(sd, _sd_setting)                          \
  RECORD(smtp, _smtp_setting)
