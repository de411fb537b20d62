// Product information: what the camera knows about its own hardware.
#pragma once

#include <cstdint>
#include <exception>
#include <memory>
#include <string>
#include <string_view>

// Raised by ProductInfo::init when the product information is missing or malformed; the log says where.
class ProductInfoError : public std::exception {
 public:
  const char* what() const noexcept override;
};

// Read-only data; construct, init, read, destroy. The constructor reads nothing and leaves every field 0.
class ProductInfo {
 public:
  ProductInfo();
  ~ProductInfo();

  // Reads /etc/camera/product.conf, the first time that this process asks. Raises ProductInfoError. Returns
  // 0.
  int init();

  // What init does with the file's text; on a fresh object.
  void parse(std::string text);

  std::uint32_t has_pir;       // a passive infrared sensor
  std::uint32_t input_count;   // digital inputs
  std::uint32_t output_count;  // digital outputs
  std::uint8_t has_speaker;
  std::uint8_t has_mic;
  std::uint8_t has_pan_tilt;
  std::uint8_t has_zoom;  // only looked at when has_pan_tilt is 1
  std::uint8_t has_privacy;
  std::uint8_t has_sdcard;
  std::uint8_t has_irled;
  std::uint8_t has_icr;  // a day/night switch
  std::uint8_t has_h264;

  int getRegion() const;              // index of the regulatory region, which limits the wireless channels
  std::string getSensor() const;      // model name of the image sensor
  std::string getSensorCaps() const;  // names of the sensor's capabilities, separated by single spaces
  std::string getMacAddress() const;  // of the wired interface
  bool probeWireless() const;         // a wireless interface exists

  // Separated by single spaces.
  std::string displaySystems() const;  // supported names; empty: only the one in use
  std::string maxExposureTimes() const;
  // The system's own name of one of the camera's interfaces "eth0", "ppp0", "ra0"; good for as long as the
  // object.
  std::string_view interfaceName(std::string_view name) const;
  bool hasModule(std::string_view name) const;

  ProductInfo(const ProductInfo&) = delete;

 private:
  struct Data;
  ProductInfo& operator=(const ProductInfo& other);
  const Data& data() const;

  std::shared_ptr<const Data> data_;  // null before parse
};

// 1 when the named optional software module is installed on the product, otherwise 0. Raises
// ProductInfoError.
int check_extra_modules(const char* name);
