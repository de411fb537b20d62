// The dispatcher's table: one line per CGI name, with its handler class.
#include "framework/cgi_table.h"

// At global scope, where the handler classes are: naming one here declares it.
constexpr camera::CgiEntry kTable[] = {
    {"camera_info.cgi", camera::create<class CameraInfoCgilet>},
    {"datetime.cgi", camera::create<class DatetimeCgilet>},
    {"ddns.cgi", camera::create<class DDNSCgilet>},
    {"httpport.cgi", camera::create<class HttpPortCgilet>},
    {"info.cgi", camera::create<class InfoCgilet>},
    {"dgtalkie_info.cgi", camera::create<class DgtalkieInfoCgilet>},
    {"network.cgi", camera::create<class NetworkCgilet>},
    {"pppoe.cgi", camera::create<class PPPoECgilet>},
    {"system_reboot.cgi", camera::create<class SystemRebootCgilet>},
    {"system_reset.cgi", camera::create<class SystemResetCgilet>},
    {"wireless.cgi", camera::create<class WirelessCgilet>},
    {"wlansignal.cgi", camera::create<class WlanSignalCgilet>},
    {"wlansurvey.cgi", camera::create<class WlanSurveyCgilet>},
};

namespace camera {

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
