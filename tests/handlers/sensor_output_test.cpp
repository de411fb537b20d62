// sensor_output.cgi: what a switch to each display system makes of the settings, and what it never does.
#include <gtest/gtest.h>

#include <sstream>

#include "platform/product/display_system.h"
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

// By display system: what becomes of the frame rates 30,15,10,6 and 25,12,8,11 of the four profiles, of their
// resolutions, of the first one's codec, of the subtype and the video format; and what is written
// beside the profiles.
constexpr char kSwitches[] = R"(
30,15,10,6 30,15,10,11 0,0,0,0 1 2 4 none
10,10,10,6 10,10,8,10  0,1,1,1 0 7 4 motiond
30,15,10,6 30,15,10,11 0,0,0,0 1 7 1 image
25,12,8,6  25,12,8,11  0,0,0,0 1 7 2 image
30,15,10,6 25,12,8,11  0,0,0,0 1 7 4 none
10,10,10,6 10,10,8,10  0,1,1,1 1 7 4 none
25,12,8,6  25,12,8,11  0,0,0,0 1 3 4 none
15,15,10,6 15,12,8,11  0,1,1,1 1 7 4 none
15,15,10,6 15,12,8,11  0,1,1,1 1 7 4 none
30,15,10,6 25,12,8,11  0,0,0,0 1 7 4 none
30,15,10,6 25,12,8,11  0,0,0,0 1 7 4 none
)";

// A field of the four profiles, as words of a state.
std::string fourProfiles(const std::string& field, const std::string& values) {
  std::istringstream list{values};
  std::string words;
  int profile = 0;
  for (std::string value; std::getline(list, value, ',');)
    words += " profile." + field + "[" + std::to_string(++profile) + "]=" + value;
  return words;
}

void switchOver(const std::string& from, const std::string& to, const std::string& state,
                const std::string& expected, const std::string& writes) {
  SCOPED_TRACE(from + " to " + to + state);
  scripted().reset("product.display_systems=" + from + "+" + to + state);
  EXPECT_EQ(request("sensor_output.cgi", "current=" + to).body,
            "supports=" + from + "," + to + "&current=" + to);
  EXPECT_EQ(scripted().writes(), writes);
  std::istringstream settings{expected};
  for (std::string word; settings >> word;)
    EXPECT_EQ(word, word.substr(0, word.find('=') + 1) + scripted().stored(word.substr(0, word.find('='))));
  for (const char* profile : {"1", "2", "3", "4"})
    EXPECT_EQ(request("video.cgi", std::string{"profileid="} + profile).status, 200);
}

TEST(SensorOutput, ASwitchMakesTheSettingsFitTheNewDisplaySystem) {
  std::istringstream switches{kSwitches};
  std::string fast, odd, resolutions, codec, subtype, format, writes;
  for (int to = 0; to < kDisplaySystemCount; ++to) {
    switches >> fast >> odd >> resolutions >> codec >> subtype >> format >> writes;
    writes = (writes == "none" ? "" : "set " + writes + " 1 ") + "set profile 1";
    const std::string others = fourProfiles("resolution", resolutions) + " profile.codec[1]=" + codec +
                               " profile.display_system=" + std::to_string(to) +
                               " profile.display_subtype=" + subtype + " image.video_in_format=" + format +
                               " motiond.enable=" + (to == 1 ? "0" : "1");
    for (int from = 0; from < kDisplaySystemCount; ++from) {
      if (from == to) continue;
      const std::string before =
          " motiond.enable=1 image.video_in_format=4 profile.display_subtype=7 profile.codec[1]=1" +
          fourProfiles("resolution", "0,0,0,0") + " profile.display_system=" + std::to_string(from);
      for (const auto& [rates, then] : {std::pair{"30,15,10,6", fast}, {"25,12,8,11", odd}})
        switchOver(DisplaySystem[from], DisplaySystem[to], before + fourProfiles("frame_rate", rates),
                   others + fourProfiles("frame_rate", then), writes);
    }
  }
}

TEST(SensorOutput, ChangesOnlyWhatHasToChange) {
  const Endpoint output{
      "sensor_output.cgi", "product.display_systems=VGA-640x480-60Hz+SXGA-1280x1024+NTSC-704x480",
      "supports=VGA-640x480-60Hz,SXGA-1280x1024,NTSC-704x480&current=VGA-640x480-60Hz", "set profile 1"};
  output.accepts("current=VGA-640x480-60Hz current=SXGA-1280x1024");
  output.accepts({{"", "product= profile.display_system=3", "supports=PAL-704x576&current=PAL-704x576"},
                  {"current=NTSC-704x480", "image.video_in_format=1", {}, "set image 1 set profile 1"}});
  output.refuses(
      "current= current=PAL-704x576 current=VGA-640x480-60Hz,SXGA-1280x1024 current=vga-640x480-60hz "
      "current=SXGA-1280x1024&!colour=red");
  // Of a list of up to 95 characters the first three are supported.
  const std::string name(31, 'n');
  const std::string longest =
      "product.display_systems=" + name + "+HD-1280x720+" + name + "+NTSC-704x480+n23456";
  output.accepts({{"current=HD-1280x720", longest}});
  output.refuses("current=NTSC-704x480", longest);
  output.refuses("! current=HD-1280x720", longest + "7", 500);
}

}  // namespace
}  // namespace camera::test
