// Product information: which texts are accepted, with which values.
#include "platform/product/product_info.h"

#include <gtest/gtest.h>

namespace camera {
namespace {

TEST(Product, IsReadFromKeysAndValues) {
  ProductInfo product;
  ASSERT_TRUE(product.parse(
      "# a camera\n\n  has_pir = 1 # a comment\ninput_count=255\r\n\thas_zoom\t=\t1\nhas_h264 = 0\nregion = "
      "2147483647\nwireless = 1\nsensor = ov9710_720p\nsensor_caps =  a   b,c \nmac_address = "
      "00:11=22\nmodules = "
      "one, two,,three\ndisplay_systems = PAL-704x576-25  HD-1280x720 NTSC-704x480 "
      "XGA-1024x768\nmax_exposure_times = "
      "1/5 1/30\ninterface.eth0 = lan0\ninterface.ra0 =\noutput_count = 2"));
  EXPECT_EQ(std::tuple(product.has_pir, product.has_zoom, product.has_h264, product.has_mic, product.wireless,
                       product.input_count, product.output_count, product.region),
            std::tuple(true, true, false, false, true, 255, 2, 2147483647));
  EXPECT_EQ(
      std::tuple(product.sensor, product.sensor_caps.spaced(), product.mac_address,
                 product.display_systems.spaced(3), product.max_exposure_times.spaced()),
      std::tuple("ov9710_720p", "a b,c", "00:11=22", "PAL-704x576-25 HD-1280x720 NTSC-704x480", "1/5 1/30"));
  EXPECT_EQ(
      std::tuple(product.interfaceName("eth0"), product.interfaceName("ppp0"), product.interfaceName("ra0")),
      std::tuple("lan0", "ppp0", "ra0"));
  EXPECT_TRUE(product.hasModule("two") && product.hasModule("three"));
  EXPECT_FALSE(product.hasModule("") || product.hasModule("on"));
}

TEST(Product, IsRefusedForAMalformedLine) {
  for (const char* good : {"has_mic = 1\nhas_speaker = 1\n", "display_systems =\n", "max_exposure_times =\n",
                           "output_count = 0"})
    EXPECT_TRUE(ProductInfo().parse(good)) << good;
  for (const char* bad : {"has_mic = 1\nhas_mic = 1\n",
                          "has_microphone = 1\n",
                          "HAS_MIC = 1\n",
                          "has_mic\n",
                          "has_mic # = 1\n",
                          "= 1\n",
                          "has_mic =\n",
                          "has_mic = yes\n",
                          "has_mic = 1 1\n",
                          "has_mic = +1\n",
                          "has_mic = 2\n",
                          "has_pir = 256\n",
                          "wireless = 2\n",
                          "input_count = 256\n",
                          "output_count = -1\n",
                          "region = 2147483648\n",
                          "region = -1\n",
                          "interface.wlan0 = x\n",
                          "display_systems = xga-1024x768\n",
                          "display_systems = HD-1280x720 NTSC-704x480 XGA-1024x768 HD\n"})
    EXPECT_FALSE(ProductInfo().parse(bad)) << bad;
}

}  // namespace
}  // namespace camera
