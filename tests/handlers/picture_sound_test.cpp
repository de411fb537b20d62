// icr.cgi: the LEDs in each mode.
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

const Endpoint kIcr{"icr.cgi", "ir.icr_mode=0 ir.ir_led=1", "mode=auto", "set ir"};
TEST(DayNight, TheLedsFollowAFixedMode) {
  const std::pair<const char*, const char*> rows[] = {
      {"auto", "0 1"}, {"manual", "1 1"}, {"day", "2 0"}, {"night", "3 1"}};
  for (const auto& [mode, stored] : rows) {
    kIcr.accepts(std::string{"mode="} + mode);
    EXPECT_EQ(scripted().stored("ir.icr_mode") + " " + scripted().stored("ir.ir_led"), stored) << mode;
  }
  kIcr.accepts({{"mode=day", "ir.icr_mode=2"}});  // the LEDs do not match, and nothing is written
  kIcr.refuses("mode=Day mode= !led=on mode=day&!led=on");
  kIcr.refuses("! mode=day", "product.has_icr=0", 404);
}

}  // namespace
}  // namespace camera::test
