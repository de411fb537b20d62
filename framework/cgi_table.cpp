// The dispatcher's table: one line per CGI name, with its handler class.
#include "framework/cgi_table.h"

namespace camera {

// Naming a class here declares it.
constexpr CgiEntry kTable[] = {
    {"camera_info.cgi", create<class CameraInfoCgilet>},
    {"datetime.cgi", create<class DatetimeCgilet>},
    {"ddns.cgi", create<class DDNSCgilet>},
    {"httpport.cgi", create<class HttpPortCgilet>},
    {"info.cgi", create<class InfoCgilet>},
    {"dgtalkie_info.cgi", create<class DgtalkieInfoCgilet>},
    {"network.cgi", create<class NetworkCgilet>},
    {"pppoe.cgi", create<class PPPoECgilet>},
    {"system_reboot.cgi", create<class SystemRebootCgilet>},
    {"system_reset.cgi", create<class SystemResetCgilet>},
    {"wireless.cgi", create<class WirelessCgilet>},
    {"wlansignal.cgi", create<class WlanSignalCgilet>},
    {"wlansurvey.cgi", create<class WlanSurveyCgilet>},
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
