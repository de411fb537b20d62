// Product information: which texts are read, as what, and which are refused.
#include "platform/product/product_info.h"

#include <gtest/gtest.h>

namespace {

TEST(Product, IsReadFromKeysAndValues) {
  ProductInfo product;
  product.parse(
      "# a camera\n\n  has_pir = 1 # a comment\ninput_count=4294967295\r\n\thas_zoom\t=\t255\nhas_h264 = "
      "0\nregion = 2147483647\nwireless = 1\nsensor = ov9710_720p\nsensor_caps =  a   b,c \nmac_address = "
      "00:11=22\nmodules = one, two,,three\ndisplay_systems = PAL-704x576-25 HD-1280x720 "
      "NTSC-704x480\nmax_exposure_times = 1/5 1/30\ninterface.eth0 = lan0\ninterface.ra0 =\noutput_count = "
      "2");
  EXPECT_EQ(std::tuple(product.has_pir, product.input_count, product.output_count, product.has_zoom,
                       product.has_mic, product.getRegion(), product.probeWireless()),
            std::tuple(1U, 4294967295U, 2U, 255, 0, 2147483647, true));
  EXPECT_EQ(
      std::tuple(product.getSensor(), product.getSensorCaps(), product.getMacAddress(),
                 product.displaySystems(), product.maxExposureTimes()),
      std::tuple("ov9710_720p", "a b,c", "00:11=22", "PAL-704x576-25 HD-1280x720 NTSC-704x480", "1/5 1/30"));
  EXPECT_EQ(
      std::tuple(product.interfaceName("eth0"), product.interfaceName("ppp0"), product.interfaceName("ra0")),
      std::tuple("lan0", "ppp0", "ra0"));
  EXPECT_TRUE(product.hasModule("two") && product.hasModule("three"));
  EXPECT_FALSE(product.hasModule("") || product.hasModule("on"));
}

TEST(Product, IsRefusedWhereALineIsNotUnderstood) {
  for (const char* good :
       {"has_mic = 1\nhas_speaker = 1\n", "display_systems =\n", "max_exposure_times =\n"}) {
    EXPECT_NO_THROW(ProductInfo().parse(good)) << good;
  }
  for (const char* bad : {"has_mic = 1\nhas_mic = 1\n", "has_microphone = 1\n", "HAS_MIC = 1\n", "has_mic\n",
                          "has_mic # = 1\n", "= 1\n", "has_mic =\n", "has_mic = yes\n", "has_mic = 1 1\n",
                          "has_mic = +1\n", "has_mic = -1\n", "has_mic = 256\n", "input_count = 4294967296\n",
                          "region = 2147483648\n", "region = -1\n", "wireless = 2\n", "interface.wlan0 = x\n",
                          "display_systems = HD-1280x720 NTSC-704x480 XGA-1024x768 WXGA-1280x800\n",
                          "display_systems = xga-1024x768\n"}) {
    EXPECT_THROW(ProductInfo().parse(bad), ProductInfoError) << bad;
  }
}

}  // namespace
