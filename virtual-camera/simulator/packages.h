// The status packages: what the daemons tell everyone who listens, twice a second.
#pragma once

#include <vector>

#include "platform/daemons/status_receiver.h"
#include "virtual-camera/simulator/camera_state.h"

namespace camera::simulator {

// One package for each condition that holds, and the two that are always reported: sound level and recording.
std::vector<StatusPackage> statusPackages(const CameraState& camera);

// Sends over the loopback interface, and no farther.
class PackageSender {
 public:
  PackageSender();
  ~PackageSender();
  PackageSender(const PackageSender&) = delete;
  PackageSender& operator=(const PackageSender&) = delete;

  bool isReady() const { return descriptor_ >= 0; }
  void send(const StatusPackage& package) const;

 private:
  int descriptor_;
};

}  // namespace camera::simulator
