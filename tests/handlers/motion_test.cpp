// motion.cgi: what the mask must be, and when detection can be on.
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

const Endpoint kMotion{.cgi = "motion.cgi",
                       .state = "motiond.mbmask=0f00 motiond.sensitivity=50 motiond.pir_sensitivity=50",
                       .reply = "enable=no&mbmask=0f00&sensitivity=50&pir=no&pir_sensitivity=50",
                       .writes = "set motiond 1 set gpio 1"};

TEST(Motion, TakesItsFiveParameters) {
  kMotion.accepts({{"enable=yes"},
                   {"mbmask=00fA&sensitivity=100", "", "mbmask=00fA&sensitivity=100"},
                   {"sensitivity=0"},
                   {"pir=yes&pir_sensitivity=0", "", "pir=yes&pir_sensitivity=0"},
                   {"pir_sensitivity=100"},
                   {"enable=no&mbmask=0f00&sensitivity=50&pir=no&pir_sensitivity=50"}});
  kMotion.refuses(
      "enable=on mbmask=000 mbmask=00000 mbmask=000g mbmask= sensitivity=101 sensitivity=-1 pir=maybe "
      "pir_sensitivity=30 pir_sensitivity=150 "
      "enable=yes&mbmask=00ff&sensitivity=1&pir=yes&pir_sensitivity=0&!colour=red");
  kMotion.refuses("sensitivity=7&!pir_sensitivity sensitivity=7&!pir_sensitivity=1",
                  "motiond.pir_sensitivity=30");
}

TEST(Motion, IsOnOnlyWhereItWatchesSomethingAndCan) {
  kMotion.accepts(
      {{"enable=yes&mbmask=0001", "motiond.mbmask=0000", "enable=yes&mbmask=0001"},
       {"enable=no&mbmask=0000", "motiond.enable=1 profile.display_system=1", "enable=no&mbmask=0000"},
       {"sensitivity=7", "motiond.enable=1", "sensitivity=7"},
       {"enable=yes", "profile.display_system=2"}});
  kMotion.refuses("enable=yes&!mbmask enable=yes&!mbmask=0000", "motiond.mbmask=0000");
  kMotion.refuses("!mbmask=0000 !mbmask=0000&enable=yes", "motiond.enable=1");
  kMotion.refuses("sensitivity=7&!enable pir=yes&!enable", "motiond.enable=1 profile.display_system=1");
  kMotion.refuses("enable=yes&!mbmask", "motiond.mbmask=");
}

TEST(Motion, WithoutASensorPirIsKnownAndIgnored) {
  const char* kNone = "product.has_pir=0";
  kMotion.accepts(
      {{"", kNone, "-pir"}, {"pir=maybe", kNone, ""}, {"pir=yes&sensitivity=1", kNone, "sensitivity=1"}});
}

}  // namespace
}  // namespace camera::test
