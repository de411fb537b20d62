// The dispatcher's table: one line per CGI name, with its handler class.
#include "framework/cgi_table.h"

namespace camera {

// Naming a class here declares it.
constexpr CgiEntry kTable[] = {
    {"action_ftp.cgi", create<class ActionFTPCgilet>},
    {"action_mail.cgi", create<class ActionMailCgilet>},
    {"audio.cgi", create<class AudioCgilet>},
    {"audio_detection.cgi", create<class AudioDetectionCgilet>},
    {"auto_pan.cgi", create<class AutoPanCgilet>},
    {"auto_patrol.cgi", create<class AutoPatrolCgilet>},
    {"camera_info.cgi", create<class CameraInfoCgilet>},
    {"config_auto_patrol.cgi", create<class ConfigAutoPatrolCgilet>},
    {"datetime.cgi", create<class DatetimeCgilet>},
    {"ddns.cgi", create<class DDNSCgilet>},
    {"event_info.cgi", create<class EventInfoCgilet>},
    {"group_list.cgi", create<class GroupListCgilet>},
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
    {"ptz_direction.cgi", create<class PtzDirectionCgilet>},
    {"ptz_home.cgi", create<class PtzHomeCgilet>},
    {"ptz_info.cgi", create<class PtzInfoCgilet>},
    {"ptz_move.cgi", create<class PtzMovementCgilet>},
    {"ptz_move_rel.cgi", create<class PtzMoveRelCgilet>},
    {"ptz_pos.cgi", create<class PtzPosCgilet>},
    {"ptz_preset.cgi", create<class PtzPresetCgilet>},
    {"ptz_preset_list.cgi", create<class PtzPresetListCgilet>},
    {"rtspurl.cgi", create<class RtspURLCgilet>},
    {"sdcard.cgi", create<class SdcardCgilet>},
    {"sdcard_delete.cgi", create<class SdcardDeleteCgilet>},
    {"sdcard_download.cgi", create<class SdcardDownloadCgilet>},
    {"sdcard_format.cgi", create<class SdcardFormatCgilet>},
    {"sdcard_list.cgi", create<class SdcardListCgilet>},
    {"sensor.cgi", create<class SensorCgilet>},
    {"sensor_info.cgi", create<class SensorInfoCgilet>},
    {"sensor_output.cgi", create<class SensorOutputCgilet>},
    {"sensor_reset.cgi", create<class SensorResetCgilet>},
    {"speaker.cgi", create<class SpeakerCgilet>},
    {"stream_auth.cgi", create<class StreamAuthCgilet>},
    {"stream_info.cgi", create<class StreamInfoCgilet>},
    {"sw_input.cgi", create<class SwInputCgilet>},
    {"system_reboot.cgi", create<class SystemRebootCgilet>},
    {"system_reset.cgi", create<class SystemResetCgilet>},
    {"timestamp.cgi", create<class TimeStampCgilet>},
    {"user_del.cgi", create<class UserDelCgilet>},
    {"user_list.cgi", create<class UserListCgilet>},
    {"user_mod.cgi", create<class UserModCgilet>},
    {"video.cgi", create<class VideoCgilet>},
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
    if (entry.name == name) return &entry;
  }
  return nullptr;
}

}  // namespace camera
