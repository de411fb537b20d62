// info.cgi: the identity card: what the camera is, where it is reached and which features it has.
#include <arpa/inet.h>

#include <algorithm>
#include <iterator>

#include "framework/param_table.h"
#include "handlers/product.h"
#include "handlers/read_only_cgilet.h"
#include "platform/network/if_info.h"
#include "platform/store/cam.h"
#include "platform/store/records/gpio.h"
#include "platform/store/records/host.h"
#include "platform/store/records/system.h"

namespace {

constexpr char kInterfaceVersion[] = "1.9.5";                   // of this HTTP interface, for clients
constexpr const char* kInterfaces[] = {"ppp0", "eth0", "ra0"};  // the one that leads outside first
constexpr const char* kHeads[] = {"P,T", "P,T,Z"};
constexpr std::string_view kVideoOutSensor = "vx1128";  // the sensor family with an analogue output

camera::ParamRow text(const char* name, const char* value) {
  return camera::textParam(name, 0, 0, {}).showing(value);
}

camera::ParamRow count(const char* name, std::uint32_t value) {
  return camera::integerParam(name, 0, UINT8_MAX).startingAt(static_cast<std::uint8_t>(value));
}

camera::ParamRow feature(const char* name, bool present, camera::Words words = camera::kNoYes) {
  return camera::choiceParam(name, words).startingAt(present ? 1 : 0);
}

std::string dotted(in_addr address) {
  return inet_ntoa(address);
}

}  // namespace

class InfoCgilet final : public camera::ReadOnlyCgilet {
  int answer() override {
    if (!readSettings() || !findInterface() || !camera::readProduct(product_)) return 500;
    replyFeatures();
    return 200;
  }

  bool readSettings() {
    _gpio_setting gpio;  // nothing of it is reported, but a camera whose store fails is not well
    return cam_get_system(&system_) == 0 && cam_get_host(&host_) == 0 && cam_get_gpio(&gpio) == 0;
  }

  bool findInterface() {
    return std::any_of(std::begin(kInterfaces), std::end(kInterfaces),
                       [this](const char* name) { return GetActiveIFInfo(name, &interface_); });
  }

  void replyFeatures() {
    const std::string mac = product_.getMacAddress();
    const std::string address = dotted(interface_.address);
    const std::string netmask = dotted(interface_.netmask);
    const std::string gateway = dotted(interface_.gateway);
    camera::ParamTable{
        {
            text("model", system_.model),
            text("product", system_.product),
            text("brand", system_.brand),
            text("version", system_.version),
            text("build", system_.build),
            text("brixa", kInterfaceVersion),
            text("name", host_.name),
            text("location", host_.location),
            text("macaddr", mac.c_str()),
            text("ipaddr", address.c_str()),
            text("netmask", netmask.c_str()),
            text("gateway", gateway.c_str()),
            feature("wireless", product_.probeWireless()),
            feature("ptz", product_.has_zoom != 0, kHeads).unhandledIf(product_.has_pan_tilt != 1),
            count("inputs", product_.input_count),
            count("outputs", product_.output_count),
            feature("speaker", product_.has_speaker != 0),
            feature("videoout", product_.getSensor().starts_with(kVideoOutSensor)),
            feature("pir", product_.has_pir != 0),
            feature("icr", product_.has_icr != 0),
            feature("ir", product_.has_irled != 0),
            feature("mic", product_.has_mic != 0),
        }}
        .reply(*this);
  }

  _system_setting system_;
  _host_setting host_;
  IF_INFO interface_{};
  PIB product_;
};

template InfCgilet* camera::create<InfoCgilet>();
