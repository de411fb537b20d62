// As a CGI program: /snapshot.jpg is one picture, /video.mjpg a stream of them. The name under which it is
// started decides. Parameter: profile, 1 to 4.
//
//   camera-picture frames PROFILE
//       writes the pictures of a profile at its frame rate, each as the planes Y, Cb and Cr (I420), until its
//       reader goes or the size or the rate changes
#include <fcntl.h>
#include <malloc.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <string>

#include "framework/reply.h"
#include "framework/request.h"
#include "platform/descriptor.h"
#include "platform/file.h"
#include "platform/text.h"
#include "virtual-camera/picture/jpeg.h"
#include "virtual-camera/picture/look.h"
#include "virtual-camera/picture/picture.h"
#include "virtual-camera/picture/senses.h"

namespace camera::picture {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr int kProfileCount = 4;
constexpr milliseconds kRereadInterval{400};
constexpr milliseconds kClientPatience{10'000};  // then a client that does not read is dropped
constexpr char kLogins[] = "/run/accounts/logins";
constexpr char kNoStore[] = "Cache-Control: no-store\r\n";

// Lets the heap begin with large pages, and keep them: a third of the time for a snapshot would go into small
// ones.
void prepareHeap() {
  constexpr std::size_t kLargePage = 2U << 20U;
  constexpr int kRoom = 24 << 20;  // bytes; a picture of 1920x1080 needs as much
  (void)mallopt(M_MMAP_THRESHOLD, 2 * kRoom);
  (void)mallopt(M_TRIM_THRESHOLD, 2 * kRoom);
  (void)mallopt(M_TOP_PAD, kRoom);
  const auto first = std::make_unique_for_overwrite<char[]>(kLargePage);  // makes the heap grow
  void* begin = first.get();
  std::size_t room = kRoom;
  if (std::align(kLargePage, kRoom / 2, begin, room) != nullptr)
    (void)madvise(begin, kRoom / 2, MADV_HUGEPAGE);
}

// False if there is nobody to write to, or nobody reads.
bool writeOut(std::string_view data) {
  return writeInTime(STDOUT_FILENO, data, kClientPatience);
}

// False if the client goes before that time.
bool waitUntil(Clock::time_point end) {
  const auto left = std::chrono::ceil<milliseconds>(end - Clock::now());
  pollfd out{STDOUT_FILENO, 0, 0};
  return left.count() <= 0 || poll(&out, 1, static_cast<int>(left.count())) <= 0;
}

class Sight {
 public:
  explicit Sight(int profile) : profile_(profile), look_(readLook(profile)), read_(Clock::now()) {}

  const Look& look() const { return look_; }

  Frame frame() {
    if (Clock::now() - read_ > kRereadInterval) {
      look_ = readLook(profile_);
      read_ = Clock::now();
    }
    senses_.update();
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const std::int64_t instant = std::chrono::duration_cast<milliseconds>(now).count() + look_.localShift;
    return take(look_, {instant, senses_.pan, senses_.tilt, senses_.motion}, &scene_);
  }

  std::string jpeg() {
    Frame picture = frame();
    return toJpeg(picture, look_.quality);
  }

  Clock::time_point nextAfter(Clock::time_point last) const {
    return std::max(last + std::chrono::nanoseconds(1'000'000'000 / look_.frameRate), Clock::now());
  }

 private:
  int profile_;
  Look look_;
  Clock::time_point read_;
  Senses senses_;
  Scene scene_;
};

std::string lengthOf(const std::string& data) {
  return "Content-Length: " + std::to_string(data.size()) + "\r\n\r\n";
}

void serveSnapshot(int profile) {
  const std::string picture = Sight(profile).jpeg();
  writeOut(std::string{kNoStore} + "Content-Type: image/jpeg\r\n" + lengthOf(picture) + picture);
}

// True while the accounts are those of the request; the guard gave their stamp.
bool maySee() {
  const char* const stamp = std::getenv("ACCOUNTS");
  std::string logins;
  return stamp == nullptr ||
         (readFile(kLogins, &logins) == 0 && logins.starts_with(std::string{"# "} + stamp + " "));
}

// Ends when the client goes or the accounts change: the right to see it, or to see it without a login, may be
// gone.
void serveStream(int profile, bool isForHead) {
  Sight sight(profile);
  if (!writeOut(std::string{kNoStore} + "Content-Type: multipart/x-mixed-replace; boundary=frame\r\n\r\n"))
    return;
  for (auto next = Clock::now(); !isForHead;) {
    const std::string picture = sight.jpeg();
    if (!maySee()) return;
    if (!writeOut("--frame\r\nContent-Type: image/jpeg\r\n" + lengthOf(picture) + picture + "\r\n")) return;
    next = sight.nextAfter(next);
    if (!waitUntil(next)) return;
  }
}

std::string planesOf(const Frame& frame) {
  std::string planes;
  planes.reserve(frame.y.size() * 3 / 2);
  const auto append = [&](const std::vector<std::uint8_t>& plane, int width, int height, int stride) {
    for (int row = 0; row < height; ++row) {
      const auto* begin =
          reinterpret_cast<const char*>(plane.data()) + static_cast<std::ptrdiff_t>(row) * stride;
      planes.append(begin, static_cast<std::size_t>(width));
    }
  };
  append(frame.y, frame.width, frame.height, frame.stride);
  for (const auto* plane : {&frame.cb, &frame.cr}) {
    append(*plane, frame.width / 2, frame.height / 2, frame.stride / 2);
  }
  return planes;
}

void writeFrames(int profile) {
  Sight sight(profile);
  const Look first = sight.look();
  for (auto next = Clock::now(); waitUntil(next); next = sight.nextAfter(next)) {
    const std::string planes = planesOf(sight.frame());
    const Look& look = sight.look();
    if (look.width != first.width || look.height != first.height || look.frameRate != first.frameRate) return;
    if (!writeOut(planes)) return;
  }
}

int serve(std::string_view name) {
  const CgiVariables variables = cgiVariables();
  Request request;
  readRequest(variables, false, &request);
  int profile = 1;
  std::string fault = request.error;
  std::string parameter;
  for (const auto& [key, value] : request.params) {
    if (key == "profile" && parseInteger(value, 1, kProfileCount, &profile)) continue;
    parameter = key;
    fault = key == "profile" ? "1 to 4" : "no such parameter";
  }
  if (!fault.empty()) return Reply().sendFailure(400, parameter, fault), 0;
  (void)fcntl(STDOUT_FILENO, F_SETFL, O_NONBLOCK);
  if (name.ends_with(".mjpg")) {
    serveStream(profile, variables.method == "HEAD");
  } else {
    serveSnapshot(profile);
  }
  return 0;
}

}  // namespace
}  // namespace camera::picture

int main(int count, char** arguments) {
  (void)prctl(PR_SET_PDEATHSIG, SIGTERM);  // the web server may end first
  (void)std::signal(SIGPIPE, SIG_IGN);
  camera::picture::prepareHeap();
  int profile = 0;
  if (count == 3 && std::string_view{arguments[1]} == "frames" &&
      camera::parseInteger(arguments[2], 1, camera::picture::kProfileCount, &profile)) {
    camera::picture::writeFrames(profile);
    return 0;
  }
  return camera::picture::serve(count > 0 ? arguments[0] : "");
}
