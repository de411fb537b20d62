// Asks the simulator for its state.
#include "virtual-camera/picture/senses.h"

#include <string>

#include "platform/text.h"
#include "virtual-camera/simulator/client.h"

namespace camera::picture {
namespace {

constexpr char kSimulator[] = "/run/camera/simulator";
constexpr char kDone = '+';  // before the answer

}  // namespace

void Senses::update() {
  std::string answer;
  if (simulator::exchange(kSimulator, "status", &answer) != 0 || !answer.starts_with(kDone)) return;
  std::string_view rest = std::string_view{answer}.substr(1);
  while (!rest.empty()) {
    std::string_view value = takeUntil('\n', &rest);
    const std::string_view name = takeUntil('=', &value);
    if (name == "motion" && !readNumber(value, &motion)) motion = 0;
    if (name != "head") continue;
    std::string_view place = takeUntil(' ', &value);  // "moving" may follow
    readNumber(takeUntil(',', &place), &pan);
    readNumber(place, &tilt);
  }
}

}  // namespace camera::picture
