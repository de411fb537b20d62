// sensor.cgi, sensor_info.cgi, sensor_reset.cgi and sensor_output.cgi: what is offered for each sensor,
// what else it accepts or refuses, and what a switch to each display system makes of the settings.
#include <algorithm>
#include <set>
#include <sstream>

#include "platform/product/display_system.h"
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

using Words = std::set<std::string>;

Words wordsOf(std::string text) {
  std::replace(text.begin(), text.end(), ',', ' ');
  std::istringstream words{text};
  return {std::istream_iterator<std::string>{words}, {}};
}

// A row has a capability, its parameter, and what is offered, as VALUES:SENSORS. The first that names the
// sensor, or no sensor, counts. A single number is the step from 0 to 100. Values with + are accepted though
// not offered, those with - refused though offered.
constexpr char kOffers[] = R"(
Brightness brightness 5:ov7725,ov7740,ov9710,ip2986,mdin220,hm1375 10:mt9v136 0...100:;
Contrast contrast 5:vicam,ip2986,mdin220,ov7740,ov9710,hm1375 20:mt9m112,mt9m131 25:ov7725,mt9v136 0...100:;
Saturation saturation 5:vicam,ip2986,mdin220,ov9710,hm1375 10:ov7740 20:mt9m112,mt9m131,mt9v136 25:ov7725 0...100:;
Hue hue 5:ip2986,ov9710,hm1375 0...100:;
WhiteBalance whitebalance auto,disabled:vicam,mt9m131 disabled,fixed_indoor,fixed_outdoor:mdin220
  disabled,auto:ov7740,ov9710,hm1375 auto,disabled,fixed_indoor,fixed_outdoor,fixed_fluor:
  +fixed_indoor,fixed_outdoor,fixed_fluor:vicam,mt9m131;
Frequency flicker 50,60:mt9m131,mt9v136,vicam,ov7725,ip2986,hm1375 auto,50,60:;
AutoExposure autoexposure no,yes:;
NightShot maxexposuretime 30,7: +-1:;
BLCompensation backlightcomp 10:vicam 0...255:;
BLControl backlightcomp no,yes: +0,1,2,3:mdin220;
NoiseReduction noisereduction off,high:ov9710 off,low,high:
  +0,1:ov9710 +0,1,2,3:mdin220 +0,1,2,3,4,5,6,7:ip2986 +0,1,2,3,4,5:;
Mirror mirror off,on:;
Flip flip off,on:;
AutoGain autogainctrl no,yes: +1,2:mdin220 -no:mdin220;
Color color no,yes:;
BW color no,yes:;
Source videoinformat auto: +ntsc,pal,pal-m,pal-n:;
Sharpness sharpness 5:vicam,mdin220,ov9710 10:ip2986,hm1375 20:;
)";
constexpr char kSensors[] =
    "ov7725 ov7740 ov9710 mt9m112 mt9m131 mt9v111 mt9v136 vicam vx1128 ip2986 mdin220 hm1375 ov7740_tzm480 "
    "ov9710_720p ov9710b";
constexpr char kTried[] =
    "-1 -0 0 1 2 3 4 5 6 7 8 9 10 15 20 25 30 40 57 80 95 99 100 101 105 110 254 255 256 no yes off on low "
    "high auto disabled fixed_indoor fixed_outdoor fixed_fluor 50 60 ntsc pal pal-m pal-n 30/7 1/30 Yes";

// The values of a row for a sensor that have that sign, or none.
std::string valuesFor(const std::string& sensor, const std::string& row, const std::string& sign) {
  std::istringstream choices{row};
  for (std::string choice; choices >> choice;) {
    const std::size_t colon = choice.find(':');
    const Words sensors = wordsOf(choice.substr(colon + 1));
    const bool isSigned = sign.empty() ? choice.find_first_of("+-") != 0 : choice.starts_with(sign);
    if (isSigned && (sensors.empty() || sensors.contains(sensor.substr(0, sensor.find('_')))))
      return choice.substr(sign.size(), colon - sign.size());
  }
  return "";
}

// 0 to 100 in such steps, as a list.
std::string inSteps(int step) {
  std::string list = "0";
  for (int number = step; number <= 100; number += step) list += "," + std::to_string(number);
  return list;
}

// Those of the tried values that are numbers from 0 to the largest.
Words numbersTo(int largest) {
  Words numbers = wordsOf(kTried);
  std::erase_if(numbers, [&](const std::string& value) {
    return value.find_first_not_of("-0123456789") != value.npos || std::stoi(value) < 0 ||
           std::stoi(value) > largest;
  });
  return numbers;
}

Words acceptedOf(const std::string& key, const Words& offered) {
  Words tried = wordsOf(kTried);
  tried.insert(offered.begin(), offered.end());
  std::erase_if(tried, [&](const std::string& value) {
    const Reply reply = request("sensor.cgi", key + "=" + value);
    const bool isAccepted = reply.status == 200;
    EXPECT_TRUE(isAccepted || isFailure(reply, 400, {key})) << value << " " << reply.body;
    EXPECT_TRUE(!isAccepted || value == "-0" || !offered.contains(value) || reply.body == key + "=" + value)
        << reply.body;
    return !isAccepted;
  });
  return tried;
}

TEST(Sensor, AcceptsWhatIsOfferedAndNothingElseButForTheDifferences) {
  std::istringstream offers{kOffers};
  for (std::string row, capability, key, choices; std::getline(offers, row, ';');) {
    std::istringstream fields{row};
    std::getline(fields >> capability >> key, choices, '\0');
    for (const std::string& sensor : wordsOf(fields.fail() ? "" : kSensors)) {
      SCOPED_TRACE(capability + " of " + sensor);
      scripted().reset("product.max_exposure_times=1/30+1/-1+7 product.sensor=" + sensor +
                       " product.sensor_caps=" + capability);
      std::string offered = valuesFor(sensor, choices, "");
      if (offered.size() < 3) offered = inSteps(std::stoi(offered));
      const std::string line = (capability == "Source" ? "videooutformat" : key) + "=" + offered;
      const std::string info = request("sensor_info.cgi", "").body;
      EXPECT_TRUE(info == line + "&inputsize=640x480" || info == "inputsize=640x480&" + line) << info;

      const std::size_t dots = offered.find("...");
      Words expected =
          dots == offered.npos ? wordsOf(offered) : numbersTo(std::stoi(offered.substr(dots + 3)));
      const Words accepted = acceptedOf(key, expected);
      expected.merge(wordsOf(valuesFor(sensor, choices, "+")));
      expected.erase(valuesFor(sensor, choices, "-"));
      EXPECT_EQ(accepted, expected);
    }
  }
}

const Endpoint kSensor{
    "sensor.cgi",
    "product.sensor=ov7725 "
    "product.sensor_caps=Brightness+BLControl+NightShot+NoiseReduction+AutoGain+BW+Shutter",
    "brightness=50&maxexposuretime=30&backlightcomp=no&noisereduction=low&autogainctrl=yes&color=yes",
    "set image"};

// Of levels with the same name the stored one is kept; of equal exposure times the first is taken.
TEST(Sensor, DecidesBetweenEqualNames) {
  const std::string levels = "image.noise_reduction=2 image.backlight=3 image.auto_gain=2";
  const std::string mdin = "product.sensor=mdin220 " + levels;
  kSensor.accepts({{"noisereduction=low&backlightcomp=yes&autogainctrl=yes", levels, ""},
                   {"noisereduction=5", "", "noisereduction=high"},
                   {"backlightcomp=no&autogainctrl=no", levels},
                   {"autogainctrl=1&backlightcomp=0", mdin, "backlightcomp=no"},
                   {"noisereduction=low", "image.noise_reduction=0"}});
  EXPECT_EQ(scripted().stored("image.noise_reduction"), "1");
  kSensor.accepts({{"maxexposuretime=30", "product.max_exposure_times=1/8+30+1/30 image.max_exposure_time=2",
                    "", "set image"}});
  EXPECT_EQ(scripted().stored("image.max_exposure_time"), "1");
}

// Two capabilities may share a parameter: it has to fit both, sets both and is shown twice.
TEST(Sensor, AParameterOfTwoCapabilitiesFitsBoth) {
  scripted().reset(
      "product.sensor=mdin220 product.sensor_caps=Color+BW+BLCompensation+BLControl image.color=0");
  EXPECT_EQ(request("sensor.cgi", "color=yes&backlightcomp=3").body,
            "backlightcomp=3&backlightcomp=yes&color=yes&color=yes");
  EXPECT_EQ(scripted().stored("image.backlight") + scripted().stored("image.black_white"), "30");
  EXPECT_TRUE(isFailure(request("sensor.cgi", "backlightcomp=4"), 400, {"backlightcomp"}));
  EXPECT_EQ(request("sensor_info.cgi", "").body,
            "backlightcomp=0...255&backlightcomp=no,yes&color=no,yes&inputsize=640x480");
}

TEST(SensorReset, DoesItOnlyWhenToldToGo) {
  Endpoint reset{"sensor_reset.cgi"};
  reset.accepts(
      {{"reset=go", "product.sensor=mt9m112 image.brightness=5", "reset=yes", "set image to factory"}});
  EXPECT_TRUE(request("sensor.cgi", "").body.starts_with("brightness=50&contrast=60&saturation=60&"));
  reset.refuses("! reset=now reset= reset=go&!colour=red");
  for (const char* failing : {"set image to factory", "get product"}) {
    scripted().results = {{failing, 2}};
    EXPECT_EQ(request("sensor_reset.cgi", "reset=go").body, "reset=fail");
  }
}

// A row for each display system, with the settings after a switch to it: the frame rates that were
// 30,15,10,6; those that were 25,12,8,11; the resolutions, the first codec, the subtype, the video format and
// motion detection; what else is written.
constexpr char kSwitches[] = R"(
30,15,10,6 30,15,10,11 0,0,0,0,1,2,4,1 -
10,10,10,6 10,10,8,10  0,1,1,1,0,7,4,0 motiond
30,15,10,6 30,15,10,11 0,0,0,0,1,7,1,1 image
25,12,8,6  25,12,8,11  0,0,0,0,1,7,2,1 image
30,15,10,6 25,12,8,11  0,0,0,0,1,7,4,1 -
10,10,10,6 10,10,8,10  0,1,1,1,1,7,4,1 -
25,12,8,6  25,12,8,11  0,0,0,0,1,3,4,1 -
15,15,10,6 15,12,8,11  0,1,1,1,1,7,4,1 -
15,15,10,6 15,12,8,11  0,1,1,1,1,7,4,1 -
30,15,10,6 25,12,8,11  0,0,0,0,1,7,4,1 -
30,15,10,6 25,12,8,11  0,0,0,0,1,7,4,1 -
)";
constexpr char kRates[] =
    "profile.frame_rate[1] profile.frame_rate[2] profile.frame_rate[3] profile.frame_rate[4]";
constexpr char kRest[] =
    "profile.resolution[1] profile.resolution[2] profile.resolution[3] profile.resolution[4] "
    "profile.codec[1] profile.display_subtype image.video_in_format motiond.enable profile.display_system";

// Fields with these values, or with the stored ones, as words of a state.
std::string words(const char* fields, const std::string& values = "") {
  std::istringstream names{fields};
  std::istringstream list{values};
  std::string state;
  for (std::string field, value; names >> field;)
    state += " " + field + "=" + (std::getline(list, value, ',') ? value : scripted().stored(field));
  return state;
}

TEST(SensorOutput, ASwitchMakesTheSettingsFitTheNewDisplaySystem) {
  std::istringstream switches{kSwitches};
  std::string fast, odd, rest, writes;
  for (int to = 0; switches >> fast >> odd >> rest >> writes; ++to) {
    const int from = to == 4 ? 9 : 4;
    const std::string old = kDisplaySystems[from], current = kDisplaySystems[to];
    for (const auto& [rates, then] : {std::pair{"30,15,10,6", fast}, {"25,12,8,11", odd}}) {
      scripted().reset("product.display_systems=" + old + "+" + current + words(kRates, rates) +
                       words(kRest, "0,0,0,0,1,7,4,1," + std::to_string(from)));
      EXPECT_EQ(request("sensor_output.cgi", "current=" + current).body,
                "supports=" + old + "," + current + "&current=" + current);
      EXPECT_EQ(scripted().writes(), (writes == "-" ? "" : "set " + writes + " ") + "set profile");
      EXPECT_EQ(words(kRates) + words(kRest),
                words(kRates, then) + words(kRest, rest + "," + std::to_string(to)))
          << current << " " << rates;
    }
  }
}

}  // namespace
}  // namespace camera::test
