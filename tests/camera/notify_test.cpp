// notify.cgi for fifty clients at once, while a thousand status packages and as many invalid datagrams arrive
// a second: all get the same reply, in time, and at little cost.
#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <sstream>

#include "tests/camera/camera.h"
#include "tests/support/own_network.h"
#include "tests/support/status_sender.h"

namespace camera::test {
namespace {

// Sends fifty requests at once, first for a short reply as the yardstick. Prints the milliseconds of the
// last; then of notify.cgi how many different replies there were, the milliseconds of the first and of the
// last, and one reply. On standard error: the seconds of processor time of each fifty.
constexpr char kAskFiftyTimes[] = R"(
cd /tmp; TIMEFORMAT='%U %S'
ask() {
  start=${EPOCHREALTIME/./}
  for i in {1..50}; do
    { /cgi-bin/$1 >a$i; echo $(((${EPOCHREALTIME/./} - start) / 1000)) >t$i; } 2>/dev/null &
  done; wait
}
time ask httpport.cgi; sort -n t* | tail -n 1
time ask notify.cgi; echo $(cksum a* | cut -d ' ' -f 1 | sort -u | wc -l) $(sort -n t* | sed -n '1p;$p'); cat a1)";

void flood(const std::atomic<bool>& ends) {
  const StatusPackage packages[] = {package(0x1, 42), package(0x4), package(0x20), package(0x4000, 70)};
  constexpr std::size_t kNoPackage[] = {0, 95, 97, 65'507};
  const std::string junk(65'507, '\xFF');
  const Sender sender;
  auto next = std::chrono::steady_clock::now();
  for (std::size_t i = 0; !ends; i = (i + 1) % 4) {
    sender.send(packages[i]);
    sender.send(junk.data(), kNoPackage[i]);
    std::this_thread::sleep_until(next += std::chrono::milliseconds(1));
  }
}

TEST(Notify, TellsFiftyClientsTheSameInTimeAndCheaply) {
  expectInOwnNetwork([] {
    Camera camera;
    std::atomic<bool> ends = false;
    const auto flooding = std::async(std::launch::async, [&ends] { flood(ends); });
    const Output output = camera.inside({"bash", "-c", kAskFiftyTimes});
    ends = true;
    double yardstick[3] = {};  // milliseconds of the last, seconds of processor time of user and system
    double user = 0;
    double system = 0;
    int answers = 0;
    int first = 0;
    int last = 0;
    std::istringstream{output.out} >> yardstick[0] >> answers >> first >> last;
    EXPECT_TRUE(std::istringstream{output.err} >> yardstick[1] >> yardstick[2] >> user >> system)
        << output.err;
    EXPECT_EQ(answers, 1);
    EXPECT_GE(first, 4000);
    EXPECT_LE(last, 5000 + 2 * yardstick[0]);
    EXPECT_LT(user + system, 1 + 2 * (yardstick[1] + yardstick[2]));
    for (const char* part : {"\nmd1=on\nmdv1=42\npir=off\nrecording=on\ninput1=off\ninput2=on\ninput3=off\n",
                             "\naudio_detected=on\naudio_detect_val=70\n"})
      EXPECT_NE(output.out.find(part), std::string::npos) << output.out;
  });
}

}  // namespace
}  // namespace camera::test
