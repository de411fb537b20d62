// Asks the simulator for its state.
#include "virtual-camera/picture/senses.h"

#include "platform/text.h"
#include "virtual-camera/simulator/client.h"

namespace camera::picture {
void Senses::update() {
  simulator::ControlReply reply{};
  if (simulator::tell("status", &reply) != 0 || !reply.isDone) return;
  std::string_view rest = reply.text;
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
