// The records of the settings store, a line each. The order is that of their index, and that in which the
// action programs of a request run.
#pragma once

// RECORD(short name, struct): the file in the store and the action program have the short name.
#define CAMERA_RECORDS(RECORD)                   \
  RECORD(curtime, ClockSettings)                 \
  RECORD(ntp, NtpSettings)                       \
  RECORD(tzone, TimeZoneSettings)                \
  RECORD(ddns, DdnsSettings)                     \
  RECORD(lan, LanSettings)                       \
  RECORD(pppoe, PppoeSettings)                   \
  RECORD(upnp, UpnpSettings)                     \
  RECORD(gpio, GpioSettings)                     \
  RECORD(host, HostSettings)                     \
  RECORD(system, SystemSettings)                 \
  RECORD(httpsvr, HttpServerSettings)            \
  RECORD(rtspsvr, RtspServerSettings)            \
  RECORD(wireless, WirelessSettings)             \
  RECORD(account, AccountSettings)               \
  RECORD(audio, AudioSettings)                   \
  RECORD(audiodetection, AudioDetectionSettings) \
  RECORD(ftp, FtpSettings)                       \
  RECORD(snapshot, SnapshotSettings)             \
  RECORD(motiond, MotionSettings)                \
  RECORD(image, ImageSettings)                   \
  RECORD(ir, IrSettings)                         \
  RECORD(osd, OsdSettings)                       \
  RECORD(privacy, PrivacySettings)               \
  RECORD(profile, ProfileSettings)               \
  RECORD(record, RecordingSettings)              \
  RECORD(sd, CardSettings)                       \
  RECORD(smtp, SmtpSettings)                     \
  RECORD(route, RouteSettings)
