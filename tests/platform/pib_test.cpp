// Product information: which texts are read, as what, and which are refused.
#include "platform/product/pib.h"

#include <gtest/gtest.h>

namespace {

TEST(Product, IsReadFromKeysAndValues) {
  PIB product;
  product.parse(
      "# a camera\n\n  has_pir = 1 # a comment\ninput_count=4294967295\r\n\thas_zoom\t=\t255\nhas_h264 = "
      "0\nregion = 2147483647\nwireless = 1\nsensor = ov9710_720p\nsensor_caps =  a   b,c \nmac_address = "
      "00:11=22\nmodules = one, two,,three\ndisplay_systems = PAL-704x576-25 HD-1280x720 "
      "NTSC-704x480\nmax_exposure_times = 1/5 1/30\ninterface.eth0 = lan0\ninterface.ra0 =\noutput_count = "
      "2");
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
  EXPECT_EQ(product.displaySystems(), "PAL-704x576-25 HD-1280x720 NTSC-704x480");
  EXPECT_EQ(product.maxExposureTimes(), "1/5 1/30");
  EXPECT_EQ(product.interfaceName("eth0"), "lan0");
  EXPECT_EQ(product.interfaceName("ppp0"), "ppp0");
  EXPECT_EQ(product.interfaceName("ra0"), "ra0");
  EXPECT_TRUE(product.hasModule("two") && product.hasModule("three"));
  EXPECT_FALSE(product.hasModule("") || product.hasModule("on"));
}

TEST(Product, IsRefusedWhereALineIsNotUnderstood) {
  for (const char* good :
       {"has_mic = 1\nhas_speaker = 1\n", "display_systems =\n", "max_exposure_times =\n"}) {
    EXPECT_NO_THROW(PIB().parse(good)) << good;
  }
  for (const char* bad : {"has_mic = 1\nhas_mic = 1\n", "has_microphone = 1\n", "HAS_MIC = 1\n", "has_mic\n",
                          "has_mic # = 1\n", "= 1\n", "has_mic =\n", "has_mic = yes\n", "has_mic = 1 1\n",
                          "has_mic = +1\n", "has_mic = -1\n", "has_mic = 256\n", "input_count = 4294967296\n",
                          "region = 2147483648\n", "region = -1\n", "wireless = 2\n", "interface.wlan0 = x\n",
                          "display_systems = HD-1280x720 NTSC-704x480 XGA-1024x768 WXGA-1280x800\n",
                          "display_systems = xga-1024x768\n"}) {
    EXPECT_THROW(PIB().parse(bad), PIBError) << bad;
  }
}

}  // namespace
