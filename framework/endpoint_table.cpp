// The dispatcher's table, one line per endpoint.
#include "framework/endpoint_table.h"

namespace camera {

// Each line also declares the class that it names.
constexpr EndpointEntry kTable[] = {
    {"action_ftp.cgi", serve<class ActionFtpEndpoint>},
    {"action_mail.cgi", serve<class ActionMailEndpoint>},
    {"audio.cgi", serve<class AudioEndpoint>},
    {"audio_detection.cgi", serve<class AudioDetectionEndpoint>},
    {"auto_pan.cgi", serve<class AutoPanEndpoint>},
    {"auto_patrol.cgi", serve<class AutoPatrolEndpoint>},
    {"camera_info.cgi", serve<class CameraInfoEndpoint>},
    {"config_auto_patrol.cgi", serve<class ConfigAutoPatrolEndpoint>},
    {"datetime.cgi", serve<class DatetimeEndpoint>},
    {"ddns.cgi", serve<class DdnsEndpoint>},
    {"event_info.cgi", serve<class EventInfoEndpoint>},
    {"group_list.cgi", serve<class GroupListEndpoint>},
    {"httpport.cgi", serve<class HttpPortEndpoint>},
    {"icr.cgi", serve<class IcrEndpoint>},
    {"info.cgi", serve<class InfoEndpoint>},
    {"dgtalkie_info.cgi", serve<class DgtalkieInfoEndpoint>},
    {"io.cgi", serve<class IoEndpoint>},
    {"irled.cgi", serve<class IrLedEndpoint>},
    {"mic.cgi", serve<class MicEndpoint>},
    {"network.cgi", serve<class NetworkEndpoint>},
    {"notify.cgi", serve<class NotifyEndpoint>},
    {"pppoe.cgi", serve<class PppoeEndpoint>},
    {"privacy.cgi", serve<class PrivacyEndpoint>},
    {"ptz_direction.cgi", serve<class PtzDirectionEndpoint>},
    {"ptz_home.cgi", serve<class PtzHomeEndpoint>},
    {"ptz_info.cgi", serve<class PtzInfoEndpoint>},
    {"ptz_move.cgi", serve<class PtzMoveEndpoint>},
    {"ptz_move_rel.cgi", serve<class PtzMoveRelEndpoint>},
    {"ptz_pos.cgi", serve<class PtzPosEndpoint>},
    {"ptz_preset.cgi", serve<class PtzPresetEndpoint>},
    {"ptz_preset_list.cgi", serve<class PtzPresetListEndpoint>},
    {"rtspurl.cgi", serve<class RtspUrlEndpoint>},
    {"sdcard.cgi", serve<class SdcardEndpoint>},
    {"sdcard_delete.cgi", serve<class SdcardDeleteEndpoint>},
    {"sdcard_download.cgi", serve<class SdcardDownloadEndpoint>},
    {"sdcard_format.cgi", serve<class SdcardFormatEndpoint>},
    {"sdcard_list.cgi", serve<class SdcardListEndpoint>},
    {"sensor.cgi", serve<class SensorEndpoint>},
    {"sensor_info.cgi", serve<class SensorInfoEndpoint>},
    {"sensor_output.cgi", serve<class SensorOutputEndpoint>},
    {"sensor_reset.cgi", serve<class SensorResetEndpoint>},
    {"speaker.cgi", serve<class SpeakerEndpoint>},
    {"stream_auth.cgi", serve<class StreamAuthEndpoint>},
    {"stream_info.cgi", serve<class StreamInfoEndpoint>},
    {"sw_input.cgi", serve<class SwInputEndpoint>},
    {"system_reboot.cgi", serve<class SystemRebootEndpoint>},
    {"system_reset.cgi", serve<class SystemResetEndpoint>},
    {"timestamp.cgi", serve<class TimeStampEndpoint>},
    {"user_del.cgi", serve<class UserDelEndpoint>},
    {"user_list.cgi", serve<class UserListEndpoint>},
    {"user_mod.cgi", serve<class UserModEndpoint>},
    {"video.cgi", serve<class VideoEndpoint>},
    {"wireless.cgi", serve<class WirelessEndpoint>},
    {"wlansignal.cgi", serve<class WlanSignalEndpoint>},
    {"wlansurvey.cgi", serve<class WlanSurveyEndpoint>},
    {"motion.cgi", serve<class MotionEndpoint>},
    {"event_log.cgi", serve<class EventLogEndpoint>},
    {"env_sound_lv.cgi", serve<class EnvSoundLevelEndpoint>},
    {"detection_push.cgi", serve<class DetectionPushEndpoint>},
};

std::span<const EndpointEntry> endpointTable() {
  return kTable;
}

const EndpointEntry* findEndpoint(std::string_view name) {
  for (const EndpointEntry& entry : kTable) {
    if (entry.name == name) return &entry;
  }
  return nullptr;
}

}  // namespace camera
