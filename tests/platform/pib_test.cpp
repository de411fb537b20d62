// Product information: which texts are read, as what, and which are refused.
#include "platform/pib.h"

#include <gtest/gtest.h>

namespace {

using Words = std::vector<std::string>;

bool readable(const std::string& text) {
  PIB product;
  try {
    product.parse(text);
  } catch (const PIBError&) {
    return false;
  }
  return true;
}

TEST(Product, IsReadFromKeysAndValues) {
  PIB product;
  product.parse(
      "# a camera\n\n  has_pir = 1 # a comment\ninput_count=4294967295\r\n\thas_zoom\t=\t255\nhas_h264 = 0\n"
      "region = 2147483647\nwireless = 1\nsensor = ov9710_720p\nsensor_caps =  a   b,c \nmac_address = "
      "00:11=22\n"
      "modules = one, two,,three\ndisplay_systems = PAL-25 720p NTSC\nmax_exposure_times = 1/5 1/30\n"
      "interface.eth0 = lan0\ninterface.ra0 =\noutput_count = 2");
  EXPECT_EQ(product.has_pir, 1U);
  EXPECT_EQ(product.input_count, 4294967295U);
  EXPECT_EQ(product.output_count, 2U);
  EXPECT_EQ(product.has_zoom, 255);
  EXPECT_EQ(product.has_mic, 0);
  EXPECT_EQ(product.getRegion(), 2147483647);
  EXPECT_TRUE(product.probeWireless());
  EXPECT_EQ(product.getSensor(), "ov9710_720p");
  EXPECT_EQ(product.getSensorCaps(), "a b,c");
  EXPECT_EQ(product.getMacAddress(), "00:11=22");
  EXPECT_EQ(product.displaySystems(), (Words{"PAL-25", "720p", "NTSC"}));
  EXPECT_EQ(product.maxExposureTimes(), (Words{"1/5", "1/30"}));
  EXPECT_EQ(product.interfaceName("eth0"), "lan0");
  EXPECT_EQ(product.interfaceName("ppp0"), "ppp0");
  EXPECT_EQ(product.interfaceName("ra0"), "ra0");
  EXPECT_TRUE(product.hasModule("two") && product.hasModule("three"));
  EXPECT_FALSE(product.hasModule("") || product.hasModule("on"));
}

TEST(Product, WithoutALineHasNothing) {
  PIB product;
  product.parse("");
  EXPECT_EQ(product.has_pir + product.input_count + product.output_count + product.has_speaker +
                product.has_mic + product.has_pan_tilt + product.has_zoom + product.has_privacy +
                product.has_sdcard + product.has_irled + product.has_icr + product.has_h264,
            0U);
  EXPECT_EQ(product.getRegion(), 0);
  EXPECT_FALSE(product.probeWireless());
  EXPECT_EQ(product.getSensor() + product.getSensorCaps() + product.getMacAddress(), "");
  EXPECT_TRUE(product.displaySystems().empty() && product.maxExposureTimes().empty());
  EXPECT_EQ(product.interfaceName("eth0"), "eth0");
}

TEST(Product, IsRefusedWhereALineIsNotUnderstood) {
  struct Row {
    const char* text;
    bool readable;
  };
  const Row rows[] = {
      {"has_mic = 1\nhas_speaker = 1\n", true},
      {"has_mic = 1\nhas_mic = 1\n", false},
      {"has_microphone = 1\n", false},
      {"HAS_MIC = 1\n", false},
      {"has_mic\n", false},
      {"has_mic # = 1\n", false},
      {"= 1\n", false},
      {"has_mic =\n", false},
      {"has_mic = yes\n", false},
      {"has_mic = 1 1\n", false},
      {"has_mic = +1\n", false},
      {"has_mic = -1\n", false},
      {"has_mic = 256\n", false},
      {"input_count = 4294967296\n", false},
      {"region = 2147483648\n", false},
      {"region = -1\n", false},
      {"wireless = 2\n", false},
      {"interface.wlan0 = x\n", false},
      {"display_systems =\n", true},
      {"display_systems = VGA 720p 1080p\n", true},
      {"display_systems = VGA 720p 1080p WXGA\n", false},
      {"display_systems = vga\n", false},
      {"max_exposure_times =\n", true},
  };
  for (const Row& row : rows) EXPECT_EQ(readable(row.text), row.readable) << row.text;
}

}  // namespace
