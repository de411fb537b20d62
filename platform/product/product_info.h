// Product information: the features of the camera, from product.conf.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace camera {

// A list of words in product.conf. Blanks around a word and empty words are ignored.
struct WordList {
  std::string_view text;
  char separator;

  // Takes the next word off the text; empty at the end.
  std::string_view next();
  // The words, or the first of them, separated by single spaces.
  std::string spaced(std::size_t most = SIZE_MAX) const;
};

inline constexpr char kProductFile[] = "/etc/camera/product.conf";

struct ProductInfo {
  // Parses the text of a product.conf. False if a line is malformed or a display system is unknown; the log
  // has the line's number or the key. Only for a new object.
  bool parse(std::string file);

  bool has_pir = false;  // a passive infrared sensor
  bool has_speaker = false;
  bool has_mic = false;
  bool has_pan_tilt = false;
  bool has_zoom = false;  // only matters with has_pan_tilt
  bool has_privacy = false;
  bool has_sdcard = false;
  bool has_irled = false;
  bool has_icr = false;  // a day/night switch
  bool has_h264 = false;
  bool wireless = false;
  std::uint8_t input_count = 0;   // digital inputs, 0 to 255; only the first four can be read
  std::uint8_t output_count = 0;  // digital outputs
  std::int32_t region = 0;        // the regulatory region, which limits the wireless channels

  // Parts of the text.
  std::string_view sensor;       // model name of the image sensor
  std::string_view mac_address;  // of the wired interface
  WordList sensor_caps{{}, ' '};
  WordList modules{{}, ','};
  WordList display_systems{{}, ' '};  // empty: the sensor supports only the one in use
  WordList max_exposure_times{{}, ' '};
  // The system's own names of the camera's interfaces.
  std::string_view eth0 = "eth0";
  std::string_view ppp0 = "ppp0";
  std::string_view ra0 = "ra0";

  // The system's own name of the interface that the camera calls "eth0", "ppp0" or "ra0".
  std::string_view interfaceName(std::string_view name) const;
  // Whether the optional software module is installed.
  bool hasModule(std::string_view name) const;

  ProductInfo() = default;
  ProductInfo(const ProductInfo&) = delete;
  ProductInfo& operator=(const ProductInfo&) = delete;

 private:
  std::string text_;
};

// The camera's product information, read and parsed at the first call. Null on failure; the log has the
// reason.
const ProductInfo* productInfo();

}  // namespace camera
