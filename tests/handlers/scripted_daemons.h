// The camera's daemons on the scripted platform: those of the virtual camera, without the sockets; they can
// be made to fail.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/daemons/daemon_client.h"
#include "platform/daemons/status_receiver.h"
#include "virtual-camera/simulator/camera_state.h"

namespace camera::test {

// There is one in the process. A request to a daemon is a call of the scripted platform: "get" for a
// question, "send" for a command, the daemon's name, the code, and the words that go with it:
//   get ptd 1, 4, 19, 32                      get watchdog 615 to 618, 620 to 623
//   send ptd 2 PAN TILT, 3 PAN TILT           send watchdog 606 to 609, 624 to 627
//   send ptd 6 SLOT NAME, 6 SLOT, 7 SLOT      send eventd 9 0 WORD
//   send ptd 8, 16, 24, 25, 34, 35
// If such a call has a result below 0, the daemon does not answer. A result above 0 is the first word of the
// answer, which refuses.
struct ScriptedDaemons {
  ScriptedDaemons();

  simulator::CameraState camera;               // its head arrives at once
  std::map<std::string, std::string> answers;  // bytes that a call gets instead: short ones, too many, none

  // What arrives while a request listens, by the milliseconds since it began, in order.
  std::vector<std::pair<int, StatusPackage>> packages;
  std::uint32_t mask = 0;  // what it listened for
  std::int64_t clock = 0;  // milliseconds; nothing but listening takes time
  std::int64_t began = 0;
  std::size_t heard = 0;

  void place(simulator::Position at);  // the head
  // Changes the state by a word of one of these forms, in the daemon's coordinates; false for any other:
  //   ptd.limits=PMAX,PMIN,TMAX,TMIN (before the others)   ptd.position=PAN,TILT   ptd.home=PAN,TILT
  //   ptd.preset3=PAN,TILT,gate   io.inputs=0,1,1,0   io.outputs=0,0,0,1
  //   package=MILLISECONDS,EVENT,FLAGS,VALUE,VALUE2   numbers as in C; the last ones may be left out
  bool store(const std::string& name, const std::string& value);
};

ScriptedDaemons& daemons();

}  // namespace camera::test
