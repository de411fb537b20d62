// info.cgi: the camera's identity, network address and features.
#include <algorithm>
#include <cstring>
#include <iterator>

#include "handlers/endpoint.h"
#include "platform/network/interface.h"
#include "platform/store/records/gpio.h"
#include "platform/store/records/host.h"
#include "platform/store/records/system.h"

namespace camera {
namespace {

constexpr char kInterfaceVersion[] = "1.9.5";                   // of this HTTP interface, for clients
constexpr const char* kInterfaces[] = {"ppp0", "eth0", "ra0"};  // in order of preference
constexpr std::string_view kVideoOutSensor = "vx1128";  // sensors of this family have an analogue output

std::string ipv4Text(in_addr address) {
  std::uint8_t bytes[4];
  std::memcpy(bytes, &address, sizeof bytes);
  return joined({Decimal(bytes[0]).text(), ".", Decimal(bytes[1]).text(), ".", Decimal(bytes[2]).text(), ".",
                 Decimal(bytes[3]).text()});
}

}  // namespace

class InfoEndpoint final : public ReadOnlyEndpoint {
  int reply() override {
    GpioSettings gpio;  // read only so that a broken store is reported as 500
    if (read(system_, host_, gpio) != 200) return 500;
    const ProductInfo* info = product();
    if (info == nullptr) return 500;
    if (!findInterface()) return fail(500, "no network interface is active");
    replyNames(*info);
    replyFeatures(*info);
    return 200;
  }

  bool findInterface() {
    return std::any_of(std::begin(kInterfaces), std::end(kInterfaces), [this](const char* name) {
      interface_ = activeInterface(name);
      return interface_.has_value();
    });
  }

  void replyNames(const ProductInfo& product) {
    pair("model", system_.model);
    pair("product", system_.product);
    pair("brand", system_.brand);
    pair("version", system_.version);
    pair("build", system_.build);
    pair("brixa", kInterfaceVersion);
    pair("name", host_.name);
    pair("location", host_.location);
    pair("macaddr", product.mac_address);
    pair("ipaddr", ipv4Text(interface_->address));
    pair("netmask", ipv4Text(interface_->netmask));
    pair("gateway", ipv4Text(interface_->gateway));
  }

  void replyFeatures(const ProductInfo& product) {
    replyFeature("wireless", product.wireless);
    if (product.has_pan_tilt) list("ptz", product.has_zoom ? "P,T,Z" : "P,T");
    pair("inputs", product.input_count);
    pair("outputs", product.output_count);
    replyFeature("speaker", product.has_speaker);
    replyFeature("videoout", product.sensor.starts_with(kVideoOutSensor));
    replyFeature("pir", product.has_pir);
    replyFeature("icr", product.has_icr);
    replyFeature("ir", product.has_irled);
    replyFeature("mic", product.has_mic);
  }

  void replyFeature(const char* name, bool present) { pair(name, kNoYes[present ? 1 : 0]); }

  SystemSettings system_;
  HostSettings host_;
  std::optional<InterfaceInfo> interface_;
};

template <>
const Api kApi<InfoEndpoint> = {
    .subsystem = Subsystem::kDevice,
    .summary = "What the camera is, how it is reached and which features it has.",
    .records = "none; reads `gpio`, `host`, `system`",
    .reply = {{"model", ApiType::kText, "The model's name."},
              {"product", ApiType::kText, "The product's description."},
              {"brand", ApiType::kText, "The brand's name."},
              {"version", ApiType::kText, "The version of the firmware."},
              {"build", ApiType::kText, "The build of the firmware."},
              {"brixa", ApiType::kText, "The version of this interface."},
              {"name", ApiType::kText, "The camera's name, as camera_info.cgi sets it."},
              {"location", ApiType::kText, "Where the camera is, as camera_info.cgi sets it."},
              {"macaddr", ApiType::kText, "The MAC address of the wired interface."},
              {"ipaddr", ApiType::kText, "The IPv4 address of the interface in use."},
              {"netmask", ApiType::kText, "The netmask of the interface in use."},
              {"gateway", ApiType::kText,
               "The default gateway of the interface in use; `0.0.0.0` without a default route."},
              {"wireless", ApiType::kText, "Whether the camera has a wireless interface.", kNoYes},
              {.name = "ptz",
               .type = ApiType::kTexts,
               .meaning = "The movements of the pan/tilt head: `P` and `T`, and `Z` if it also zooms; "
                          "missing without a head. In text, separated by commas.",
               .isOptional = true},
              {"inputs", ApiType::kNumber, "The number of digital inputs."},
              {"outputs", ApiType::kNumber, "The number of digital outputs."},
              {"speaker", ApiType::kText, "Whether the camera has a speaker.", kNoYes},
              {"videoout", ApiType::kText, "Whether the camera has an analogue video output.", kNoYes},
              {"pir", ApiType::kText, "Whether the camera has a passive infrared sensor.", kNoYes},
              {"icr", ApiType::kText, "Whether the camera has a day/night switch.", kNoYes},
              {"ir", ApiType::kText, "Whether the camera has infrared LEDs.", kNoYes},
              {"mic", ApiType::kText, "Whether the camera has a microphone.", kNoYes}},
    .codes = {{500, "Also if none of the network interfaces is up and running and has an IPv4 address."}}};
template struct EndpointOf<InfoEndpoint>;

}  // namespace camera
