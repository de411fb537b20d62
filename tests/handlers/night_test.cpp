// icr.cgi and irled.cgi: the LEDs follow the switch in its fixed modes, and people while it is manual.
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

const Endpoint kIcr{
    .cgi = "icr.cgi", .state = "ir.icr_mode=0 ir.ir_led=1", .reply = "mode=auto", .writes = "set ir 0"};
const Endpoint kLed{
    .cgi = "irled.cgi", .state = "ir.icr_mode=1 ir.ir_led=0", .reply = "mode=off", .writes = "set ir 0"};

TEST(DayNight, TheLedsFollowAFixedMode) {
  const std::pair<const char*, const char*> rows[] = {
      {"auto", "0 1"}, {"manual", "1 1"}, {"day", "2 0"}, {"night", "3 1"}};
  for (const auto& [mode, stored] : rows) {
    kIcr.accepts({{std::string{"mode="} + mode}});
    EXPECT_EQ(scripted().stored("ir.icr_mode") + " " + scripted().stored("ir.ir_led"), stored) << mode;
  }
  kIcr.accepts({{"mode=day", "ir.icr_mode=2"}});  // the LEDs do not match, and nothing is written
  kIcr.refuses("mode=Day mode= !led=on mode=day&!led=on");
  kIcr.refuses("! mode=day", "product.has_icr=0", 404);
}

TEST(DayNight, TheLedsAreSetByHandWhileTheSwitchIsManual) {
  kLed.accepts({{"mode=on"}, {"mode=off"}});
  kLed.refuses("mode=maybe mode=on&!icr=day");
  for (const char* mode : {"ir.icr_mode=0", "ir.icr_mode=2", "ir.icr_mode=3"})
    kLed.refuses("mode=on mode=off", mode);
  kLed.refuses("! mode=on", "product.has_irled=0", 404);
}

}  // namespace
}  // namespace camera::test
