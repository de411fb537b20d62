// The whole camera: what its settings do to the snapshot, and how a stream ends.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <span>
#include <sstream>
// It needs the header above.
#include <jpeglib.h>

#include "tests/camera/camera.h"

namespace camera::test {
namespace {

// x and y are the middle of the lighthouse's red stripes, in thousandths of the picture; the others are in
// 255ths.
constexpr const char* kNames[] = {"light", "spread", "color", "detail", "grain",
                                  "x",     "y",      "text",  "middle", "width"};
using Facts = std::array<double, std::size(kNames)>;

Facts factsOf(const std::string& jpeg) {
  jpeg_decompress_struct reader{};
  jpeg_error_mgr errors{};
  reader.err = jpeg_std_error(&errors);
  jpeg_create_decompress(&reader);
  jpeg_mem_src(&reader, reinterpret_cast<const unsigned char*>(jpeg.data()), jpeg.size());
  jpeg_read_header(&reader, TRUE);
  reader.out_color_space = JCS_YCbCr;
  jpeg_start_decompress(&reader);
  const auto w = static_cast<int>(reader.output_width), h = static_cast<int>(reader.output_height);
  std::vector<std::uint8_t> row(static_cast<std::size_t>(3 * w));
  double light = 0, squares = 0, color = 0, detail = 0, grain = 0, red = 0, x = 0, y = 0, text = 0,
         middle = 0;
  for (int r = 0; r < h; ++r) {
    JSAMPROW line = row.data();
    jpeg_read_scanlines(&reader, &line, 1);
    for (int c = 1; c < w; ++c) {
      const std::uint8_t* const pixel = &row[static_cast<std::size_t>(3 * c)];
      const int step = std::abs(pixel[0] - pixel[-3]), isRed = pixel[2] > 128 + 55 ? 1 : 0;
      light += pixel[0];
      squares += pixel[0] * pixel[0];
      color += std::abs(pixel[1] - 128) + std::abs(pixel[2] - 128);
      detail += step;
      grain += r > h * 9 / 10 ? 10 * step : 0;
      text += r < h / 25 && c < w / 2 && step > 60 ? 2550 : 0;
      middle += std::hypot(c - w / 2, r - h / 2) < h / 4.0 ? 5 * pixel[0] : 0;
      red += isRed;
      x += 1000.0 * c / w * isRed;
      y += 1000.0 * r / h * isRed;
    }
  }
  jpeg_destroy_decompress(&reader);
  const double n = w * h, mean = light / n;
  red = std::max(red, 1.0);
  return {mean,           std::sqrt(squares / n - mean * mean),
          color / n,      detail / n,
          grain / n,      x / red,
          y / red,        text / n,
          middle / light, 1.0 * w};
}

// The words are names of facts with "+" (more), "-" (less) or "=" (within a tenth). Returns those that are
// wrong.
std::string wrong(const Facts& before, const Facts& after, const std::string& words) {
  std::istringstream rest(words);
  std::string faults;
  for (std::string word; rest >> word;) {
    const auto* name = std::find(std::begin(kNames), std::end(kNames), word.substr(0, word.size() - 1));
    const auto fact = static_cast<std::size_t>(name - kNames);
    const double change = after.at(fact) - before.at(fact);
    const double margin = before.at(fact) / 10 + 0.05;
    const char direction = change > margin ? '+' : change < -margin ? '-' : '=';
    if (direction != word.back())
      faults += word + " was " + std::to_string(before[fact]) + ", is " + std::to_string(after[fact]) + "; ";
  }
  return faults;
}

// A request, what it changes and leaves in the picture, and the request that undoes it.
using Row = std::array<const char*, 3>;
constexpr Row kByDay[] = {
    {"sensor.cgi?brightness=70", "light+ x= y=", "sensor.cgi?brightness=50"},
    {"sensor.cgi?brightness=30", "light- x= y=", "sensor.cgi?brightness=50"},
    {"sensor.cgi?contrast=80", "spread+ x= y=", "sensor.cgi?contrast=50"},
    {"sensor.cgi?contrast=20", "spread- light= x= y=", "sensor.cgi?contrast=50"},
    {"sensor.cgi?saturation=80", "color+ light= spread=", "sensor.cgi?saturation=50"},
    {"sensor.cgi?saturation=20", "color- light= spread=", "sensor.cgi?saturation=50"},
    {"sensor.cgi?hue=100", "x- light= spread=", "sensor.cgi?hue=50"},
    {"sensor.cgi?sharpness=0", "detail- light= color= x=", "sensor.cgi?sharpness=60"},
    {"sensor.cgi?sharpness=100", "detail+ light= color= x=", "sensor.cgi?sharpness=60"},
    {"sensor.cgi?mirror=on", "x- y= light= spread= color=", "sensor.cgi?mirror=off"},
    {"sensor.cgi?flip=on", "y+ x= light= spread= color=", "sensor.cgi?flip=off"},
    {"sensor.cgi?color=no", "color- light= spread=", "sensor.cgi?color=yes"},
    {"sensor.cgi?backlightcomp=255", "light+ x= y=", "sensor.cgi?backlightcomp=0"},
    {"sensor.cgi?autoexposure=no&maxexposuretime=8", "light+",
     "sensor.cgi?autoexposure=yes&maxexposuretime=30"},
    {"icr.cgi?mode=night", "color- spread=", "icr.cgi?mode=auto"},
    {"ptz_move.cgi?p=10&t=0", "x- y= light=", "ptz_move.cgi?p=0&t=0"},
    {"ptz_move.cgi?p=0&t=8", "y+ x=", "ptz_move.cgi?p=0&t=0"},
    {"privacy.cgi?enable=yes&manual=on", "light- spread- color- detail-", "privacy.cgi?manual=off"},
    {"privacy.cgi?enable=no&manual=on", "light= spread= color=", "privacy.cgi?manual=off"},
    {"timestamp.cgi?enable=on&label=Gate+2", "text+ x= light= color=", "timestamp.cgi?label="},
    {"timestamp.cgi?showtime=on", "text+ x= light= color=", "timestamp.cgi?enable=off"},
    {"timestamp.cgi?enable=off", "text= light=", "timestamp.cgi?showtime=off"},
    {"sensor_output.cgi?current=WXGA-1280x800",
     "width+ x= light=", "sensor_output.cgi?current=VGA-640x480-60Hz"},
    {"datetime.cgi?method=2&date=2026-06-01&time=23:00:00", "light- color-", "info.cgi"},
};
constexpr Row kByNightWithLeds[] = {
    {"icr.cgi?mode=day", "light- color+ grain+ middle-", "icr.cgi?mode=auto"},
    {"icr.cgi?mode=manual", "light- color+ grain+ middle-", "irled.cgi?mode=on"},
    {"info.cgi", "light= color= grain= middle=", "irled.cgi?mode=off"},
};
constexpr Row kByNight[] = {
    {"sensor.cgi?maxexposuretime=8", "light+", "sensor.cgi?maxexposuretime=30"},
    {"sensor.cgi?noisereduction=off", "grain+ light=", "sensor.cgi?noisereduction=high"},
    {"sensor.cgi?autogainctrl=no", "light- grain-", "sensor.cgi?autogainctrl=yes"},
};

struct Viewed : Camera {
  Viewed() { boot(); }
  Facts shot() { return factsOf(get("/snapshot.jpg").body); }
  void change(const std::string& request) { EXPECT_EQ(get("/cgi-bin/" + request).status, 200) << request; }
  void expect(std::span<const Row> rows) {
    const Facts before = shot();
    for (const auto& [request, what, undo] : rows) {
      change(request);
      std::string faults;  // the head takes its time
      within(5, [&] { return (faults = wrong(before, shot(), what)).empty(); });
      EXPECT_EQ(faults, "") << request;
      change(undo);
      if (std::string_view{undo}.starts_with("ptz"))
        within(5, [&] { return wrong(before, shot(), "x= y=").empty(); });
    }
  }
};

TEST(Picture, ShowsEverySetting) {
  Viewed camera;
  camera.change("datetime.cgi?method=2&date=2026-06-01&time=12:00:00");
  camera.expect(kByDay);
  camera.expect(kByNightWithLeds);
  camera.expect(kByNight);
}

TEST(Picture, AStreamHasTheProfilesRateAndEndsWithItsClientOrItsServer) {
  Viewed camera;
  const auto watch = [&](const char* seconds) {
    const std::string url = "http://127.0.0.1:" + std::to_string(camera.port()) + "/video.mjpg?profile=3";
    return Command{"curl", "-sN", "-m", seconds, url};
  };
  const auto isOver = [&] { return camera.processes("/picture/video.mjpg").empty(); };
  const std::string stream = camera.run(watch("4")).out;
  int frames = 0;
  for (std::size_t at = 0; (at = stream.find("--frame\r\n", at)) != stream.npos; ++at) ++frames;
  EXPECT_TRUE(frames >= 12 && frames <= 21) << frames;  // 5 a second
  EXPECT_TRUE(within(5, isOver));
  const pid_t client = start(watch("60"), "/dev/null", "/dev/null", "/dev/null");
  EXPECT_TRUE(within(10, [&] { return !isOver(); }));
  for (const pid_t server : camera.processes("/usr/sbin/lighttpd")) kill(server, SIGKILL);
  EXPECT_TRUE(within(5, isOver));
  waitFor(client);
}

}  // namespace
}  // namespace camera::test
