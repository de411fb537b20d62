// The dispatcher's table: one line per CGI name, with its handler class.
#include "framework/cgi_table.h"

namespace camera {

// Naming a class here declares it.
constexpr CgiEntry kTable[] = {
    {"action_ftp.cgi", create<class ActionFtpEndpoint>},
    {"action_mail.cgi", create<class ActionMailEndpoint>},
    {"audio.cgi", create<class AudioEndpoint>},
    {"audio_detection.cgi", create<class AudioDetectionEndpoint>},
    {"auto_pan.cgi", create<class AutoPanEndpoint>},
    {"auto_patrol.cgi", create<class AutoPatrolEndpoint>},
    {"camera_info.cgi", create<class CameraInfoEndpoint>},
    {"config_auto_patrol.cgi", create<class ConfigAutoPatrolEndpoint>},
    {"datetime.cgi", create<class DatetimeEndpoint>},
    {"ddns.cgi", create<class DdnsEndpoint>},
    {"event_info.cgi", create<class EventInfoEndpoint>},
    {"group_list.cgi", create<class GroupListEndpoint>},
    {"httpport.cgi", create<class HttpPortEndpoint>},
    {"icr.cgi", create<class IcrEndpoint>},
    {"info.cgi", create<class InfoEndpoint>},
    {"dgtalkie_info.cgi", create<class DgtalkieInfoEndpoint>},
    {"io.cgi", create<class IoEndpoint>},
    {"irled.cgi", create<class IrLedEndpoint>},
    {"mic.cgi", create<class MicEndpoint>},
    {"network.cgi", create<class NetworkEndpoint>},
    {"notify.cgi", create<class NotifyEndpoint>},
    {"pppoe.cgi", create<class PppoeEndpoint>},
    {"privacy.cgi", create<class PrivacyEndpoint>},
    {"ptz_direction.cgi", create<class PtzDirectionEndpoint>},
    {"ptz_home.cgi", create<class PtzHomeEndpoint>},
    {"ptz_info.cgi", create<class PtzInfoEndpoint>},
    {"ptz_move.cgi", create<class PtzMoveEndpoint>},
    {"ptz_move_rel.cgi", create<class PtzMoveRelEndpoint>},
    {"ptz_pos.cgi", create<class PtzPosEndpoint>},
    {"ptz_preset.cgi", create<class PtzPresetEndpoint>},
    {"ptz_preset_list.cgi", create<class PtzPresetListEndpoint>},
    {"rtspurl.cgi", create<class RtspUrlEndpoint>},
    {"sdcard.cgi", create<class SdcardEndpoint>},
    {"sdcard_delete.cgi", create<class SdcardDeleteEndpoint>},
    {"sdcard_download.cgi", create<class SdcardDownloadEndpoint>},
    {"sdcard_format.cgi", create<class SdcardFormatEndpoint>},
    {"sdcard_list.cgi", create<class SdcardListEndpoint>},
    {"sensor.cgi", create<class SensorEndpoint>},
    {"sensor_info.cgi", create<class SensorInfoEndpoint>},
    {"sensor_output.cgi", create<class SensorOutputEndpoint>},
    {"sensor_reset.cgi", create<class SensorResetEndpoint>},
    {"speaker.cgi", create<class SpeakerEndpoint>},
    {"stream_auth.cgi", create<class StreamAuthEndpoint>},
    {"stream_info.cgi", create<class StreamInfoEndpoint>},
    {"sw_input.cgi", create<class SwInputEndpoint>},
    {"system_reboot.cgi", create<class SystemRebootEndpoint>},
    {"system_reset.cgi", create<class SystemResetEndpoint>},
    {"timestamp.cgi", create<class TimeStampEndpoint>},
    {"user_del.cgi", create<class UserDelEndpoint>},
    {"user_list.cgi", create<class UserListEndpoint>},
    {"user_mod.cgi", create<class UserModEndpoint>},
    {"video.cgi", create<class VideoEndpoint>},
    {"wireless.cgi", create<class WirelessEndpoint>},
    {"wlansignal.cgi", create<class WlanSignalEndpoint>},
    {"wlansurvey.cgi", create<class WlanSurveyEndpoint>},
    {"motion.cgi", create<class MotionEndpoint>},
    {"event_log.cgi", create<class EventLogEndpoint>},
    {"env_sound_lv.cgi", create<class EnvSoundLevelEndpoint>},
    {"detection_push.cgi", create<class DetectionPushEndpoint>},
};

std::span<const CgiEntry> cgiTable() {
  return kTable;
}

const CgiEntry* findCgi(std::string_view name) {
  for (const CgiEntry& entry : kTable) {
    if (entry.name == name) return &entry;
  }
  return nullptr;
}

}  // namespace camera
