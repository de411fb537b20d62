// The status packages that the daemons send to all listeners.
#pragma once

#include <vector>

#include "platform/daemons/status_receiver.h"
#include "virtual-camera/simulator/camera_state.h"

namespace camera::simulator {

// One package for each condition. Recording and sound are always reported.
std::vector<StatusPackage> statusPackages(const CameraState& camera);

// Sends over the loopback interface only.
class PackageSender {
 public:
  // False, with errno, if the system gives no socket.
  bool open();
  void send(const StatusPackage& package) const;

 private:
  Descriptor socket_;
};

}  // namespace camera::simulator
