// The dispatcher's table: one line per CGI name, with its handler class.
#include "framework/cgi_table.h"

namespace camera {

// Naming a class here declares it.
constexpr CgiEntry kTable[] = {
    {"audio.cgi", create<class AudioCgilet>},
    {"audio_detection.cgi", create<class AudioDetectionCgilet>},
    {"camera_info.cgi", create<class CameraInfoCgilet>},
    {"datetime.cgi", create<class DatetimeCgilet>},
    {"ddns.cgi", create<class DDNSCgilet>},
    {"event_info.cgi", create<class EventInfoCgilet>},
    {"httpport.cgi", create<class HttpPortCgilet>},
    {"icr.cgi", create<class ICRCgilet>},
    {"info.cgi", create<class InfoCgilet>},
    {"dgtalkie_info.cgi", create<class DgtalkieInfoCgilet>},
    {"io.cgi", create<class IOCgilet>},
    {"irled.cgi", create<class IRLEDCgilet>},
    {"mic.cgi", create<class MicCgilet>},
    {"network.cgi", create<class NetworkCgilet>},
    {"notify.cgi", create<class NotifyCgilet>},
    {"pppoe.cgi", create<class PPPoECgilet>},
    {"privacy.cgi", create<class PrivacyCgilet>},
    {"rtspurl.cgi", create<class RtspURLCgilet>},
    {"speaker.cgi", create<class SpeakerCgilet>},
    {"stream_auth.cgi", create<class StreamAuthCgilet>},
    {"sw_input.cgi", create<class SwInputCgilet>},
    {"system_reboot.cgi", create<class SystemRebootCgilet>},
    {"system_reset.cgi", create<class SystemResetCgilet>},
    {"timestamp.cgi", create<class TimeStampCgilet>},
    {"wireless.cgi", create<class WirelessCgilet>},
    {"wlansignal.cgi", create<class WlanSignalCgilet>},
    {"wlansurvey.cgi", create<class WlanSurveyCgilet>},
    {"motion.cgi", create<class MotionCgilet>},
    {"event_log.cgi", create<class EventLogCgilet>},
    {"env_sound_lv.cgi", create<class EnvSoundLevelCgilet>},
    {"detection_push.cgi", create<class DetectionPushCgilet>},
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
