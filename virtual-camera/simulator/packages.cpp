// The status packages that the daemons send to all listeners.
#include "virtual-camera/simulator/packages.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include "platform/little_endian.h"

namespace camera::simulator {
namespace {

enum Event : std::uint32_t {
  kMotion = 0x1,
  kPir = 0x2,
  kRecording = 0x4,
  kInput1 = 0x10,
  kOutput1 = 0x100,
  kSoundDetected = 0x4000,
  kSpeakerOccupied = 0x10000,
  kMicMuted = 0x20000,
  kSoundLevel = 0x800000,
};

enum Flag : std::uint32_t {
  kRuns = 0,
  kPirDetected = 0x1,
  kStopped = 0x4,
  kStorageFull = 0x10,
  kStorageFailed = 0x20,
};

// Reports recording as stopped unless the storage is ok.
std::uint32_t recordingFlags(const CameraState& camera) {
  if (camera.storage == Storage::kFull) return kStorageFull;
  if (camera.storage == Storage::kFailed) return kStorageFailed;
  return camera.recording ? kRuns : kStopped;
}

StatusPackage package(std::uint32_t event, std::uint32_t flags, int value = 0, int value2 = 0) {
  StatusPackage result{};
  result.event = event;
  result.flags = flags;
  result.value = value;
  result.value2 = value2;
  return result;
}

}  // namespace

std::vector<StatusPackage> statusPackages(const CameraState& camera) {
  std::vector<StatusPackage> all{package(kRecording, recordingFlags(camera))};
  const bool loud = camera.isNoticed(camera.sound);
  all.push_back(loud ? package(kSoundDetected, 0, camera.sound.value)
                     : package(kSoundLevel, 0, camera.soundLevel));
  if (camera.isNoticed(camera.motion)) all.push_back(package(kMotion, 0, camera.motion.value));
  if (camera.isNoticed(camera.pir)) all.push_back(package(kPir, kPirDetected));
  for (std::size_t i = 0; i < CameraState::kLines; ++i) {
    if (camera.inputs[i]) all.push_back(package(std::uint32_t{kInput1} << i, 0));
    if (camera.outputs[i]) all.push_back(package(std::uint32_t{kOutput1} << i, 0, 0, 1));
  }
  if (camera.speakerOccupied) all.push_back(package(kSpeakerOccupied, 0));
  if (camera.micMuted) all.push_back(package(kMicMuted, 0));
  return all;
}

bool PackageSender::open() {
  const in_addr loopback{htonl(INADDR_LOOPBACK)};
  const int hops = 0;
  socket_ = Descriptor(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  return socket_.isOpen() &&
         setsockopt(socket_.number(), IPPROTO_IP, IP_MULTICAST_IF, &loopback, sizeof loopback) == 0 &&
         setsockopt(socket_.number(), IPPROTO_IP, IP_MULTICAST_TTL, &hops, sizeof hops) == 0;
}

// A lost package is no problem: the next one follows soon.
void PackageSender::send(const StatusPackage& package) const {
  unsigned char bytes[sizeof package] = {};
  storeLittle(bytes, package.event);
  storeLittle(bytes + offsetof(StatusPackage, flags), package.flags);
  storeLittle(bytes + offsetof(StatusPackage, value), package.value);
  storeLittle(bytes + offsetof(StatusPackage, value2), package.value2);
  const sockaddr_in group{AF_INET, htons(kStatusPort), {inet_addr(kStatusGroup)}, {}};
  sendto(socket_.number(), bytes, sizeof bytes, MSG_DONTWAIT, reinterpret_cast<const sockaddr*>(&group),
         sizeof group);
}

}  // namespace camera::simulator
