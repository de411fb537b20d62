// The dispatcher's table: one line per CGI name, with its handler class.
#include "framework/cgi_table.h"

namespace camera {

// Naming a class here declares it.
constexpr CgiEntry kTable[] = {
    {"action_ftp.cgi", create<class ActionFTPCgilet>},
    {"action_mail.cgi", create<class ActionMailCgilet>},
    {"audio.cgi", create<class AudioCgilet>},
    {"camera_info.cgi", create<class CameraInfoCgilet>},
    {"datetime.cgi", create<class DatetimeCgilet>},
    {"ddns.cgi", create<class DDNSCgilet>},
    {"group_list.cgi", create<class GroupListCgilet>},
    {"httpport.cgi", create<class HttpPortCgilet>},
    {"icr.cgi", create<class ICRCgilet>},
    {"info.cgi", create<class InfoCgilet>},
    {"dgtalkie_info.cgi", create<class DgtalkieInfoCgilet>},
    {"irled.cgi", create<class IRLEDCgilet>},
    {"mic.cgi", create<class MicCgilet>},
    {"network.cgi", create<class NetworkCgilet>},
    {"pppoe.cgi", create<class PPPoECgilet>},
    {"privacy.cgi", create<class PrivacyCgilet>},
    {"rtspurl.cgi", create<class RtspURLCgilet>},
    {"speaker.cgi", create<class SpeakerCgilet>},
    {"stream_auth.cgi", create<class StreamAuthCgilet>},
    {"system_reboot.cgi", create<class SystemRebootCgilet>},
    {"system_reset.cgi", create<class SystemResetCgilet>},
    {"timestamp.cgi", create<class TimeStampCgilet>},
    {"user_del.cgi", create<class UserDelCgilet>},
    {"user_list.cgi", create<class UserListCgilet>},
    {"user_mod.cgi", create<class UserModCgilet>},
    {"wireless.cgi", create<class WirelessCgilet>},
    {"wlansignal.cgi", create<class WlanSignalCgilet>},
    {"wlansurvey.cgi", create<class WlanSurveyCgilet>},
    {"motion.cgi", create<class MotionCgilet>},
};

std::span<const CgiEntry> cgiTable() {
  return kTable;
}

const CgiEntry* findCgi(std::string_view name) {
  for (const CgiEntry& entry : kTable) {
    if (name == entry.name) return &entry;
  }
  return nullptr;
}

}  // namespace camera
