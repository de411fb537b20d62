// What the system of a camera lacks for these programs.
#include "platform/check/target_check.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <sys/un.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdlib>

#include "platform/daemons/daemon_client.h"
#include "platform/daemons/status_receiver.h"
#include "platform/file.h"
#include "platform/log.h"
#include "platform/product/product_info.h"
#include "platform/store/actions.h"
#include "platform/store/records/system.h"
#include "platform/text.h"

namespace camera {
namespace {

constexpr char kFormatLog[] = "/tmp/sd.txt";
constexpr mode_t kOthers = 077;  // the rights of everybody but the owner
constexpr std::chrono::seconds kPatience{1};

// A daemon or program, and whether this product needs it.
struct Needed {
  std::string_view name;
  bool isNeeded;
  std::string_view user;  // what does not work without it
};

std::string inOctal(mode_t mode) {
  std::string digits = "000";
  for (std::size_t i = 3; i-- > 0; mode >>= 3) digits[i] = static_cast<char>('0' + (mode & 7));
  return digits;
}

// Returns 0 or an errno value.
int connectToLog(const std::string& path) {
  sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
  if (!copyText(address.sun_path, sizeof address.sun_path, path)) return ENAMETOOLONG;
  const Descriptor log(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  return connect(log.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 ? 0 : errno;
}

// Sends itself a datagram over the loopback interface, to the group of the status packages but to another
// port, so that no listener sees it. Returns 0 or an errno value.
int tryMulticast() {
  sockaddr_in group{};
  group.sin_family = AF_INET;
  group.sin_addr.s_addr = inet_addr(kStatusGroup);
  socklen_t size = sizeof group;
  const in_addr loopback{htonl(INADDR_LOOPBACK)};
  const ip_mreqn membership{group.sin_addr, loopback, 0};
  const timeval patience{.tv_sec = kPatience.count(), .tv_usec = 0};
  auto* const address = reinterpret_cast<sockaddr*>(&group);
  const Descriptor own(socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  const int number = own.number();
  char byte = 0;
  const bool arrived =
      bind(number, address, size) == 0 && getsockname(number, address, &size) == 0 &&
      setsockopt(number, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience) == 0 &&
      setsockopt(number, IPPROTO_IP, IP_ADD_MEMBERSHIP, &membership, sizeof membership) == 0 &&
      setsockopt(number, IPPROTO_IP, IP_MULTICAST_IF, &loopback, sizeof loopback) == 0 &&
      sendto(number, &byte, sizeof byte, 0, address, size) == 1 && recv(number, &byte, sizeof byte, 0) == 1;
  return arrived ? 0 : errno;
}

// The number of the line because of which the text cannot be read.
std::size_t wrongLine(std::string_view text) {
  std::size_t end = 0;
  for (std::size_t number = 1;; ++number) {
    end = text.find('\n', end);
    end = end == text.npos ? text.size() : end + 1;
    if (end == text.size() || !ProductInfo().parse(std::string(text.substr(0, end)))) return number;
  }
}

class Check {
 public:
  Check(SettingsStore& store, const Target& target, std::string* report)
      : store_(store), target_(target), report_(*report) {}

  void folder();
  void records();
  void product();
  void sockets();
  void programs();
  void actions();
  void multicast();
  void temporary();
  void versions();
  bool isAllWell() const { return isAllWell_; }

 private:
  std::string at(std::string_view path) const { return joined({target_.root, path}); }
  bool isProgram(std::string_view name) const;
  void file(const std::string& path, const struct stat& folder);
  void good(std::initializer_list<std::string_view> parts) { line("ok: ", parts); }
  void wrong(std::initializer_list<std::string_view> parts) {
    isAllWell_ = false;
    line("wrong: ", parts);
  }
  void line(std::string_view kind, std::initializer_list<std::string_view> parts) {
    report_.append(kind).append(joined(parts)).append("\n");
  }

  SettingsStore& store_;
  const Target& target_;
  std::string& report_;
  ProductInfo product_;  // without product.conf, a camera with no feature
  bool isAllWell_ = true;
};

void Check::folder() {
  const std::string path = at(kSettingsFolder);
  struct stat found {};
  if (stat(path.c_str(), &found) != 0 || !S_ISDIR(found.st_mode))
    return wrong(
        {"settings folder ", path, " is missing: mkdir -p it, and give it to the web server's user"});
  const std::string owner = std::to_string(found.st_uid);
  const std::string user = std::to_string(geteuid());
  if (found.st_uid != geteuid()) {
    wrong({"settings folder belongs to user ", owner, ", this is user ", user,
           ": run this as root or as the folder's owner, as the web server must"});
  } else if (access(path.c_str(), R_OK | W_OK | X_OK) != 0) {
    wrong({"settings folder cannot be written: ", errorText(errno), ": chmod 700 ", path,
           ", on a file system that can be written"});
  } else if (access((path + "/..").c_str(), W_OK) != 0) {
    wrong({"the folder of the settings folder cannot be written, as a restore does: chown ", owner, " ", path,
           "/.."});
  } else if ((found.st_mode & kOthers) != 0) {
    wrong({"settings folder can be opened by other users, mode ", inOctal(found.st_mode), ": chmod 700 ",
           path});
  } else {
    good({"settings folder ", path, " belongs to user ", owner, ", as whom this was checked"});
  }
  for (const RecordInfo* info : store_.records()) file(path + "/" + info->name, found);
}

void Check::file(const std::string& path, const struct stat& folder) {
  struct stat found {};
  if (stat(path.c_str(), &found) != 0) return;
  if (found.st_uid != folder.st_uid)
    wrong({path, " belongs to user ", std::to_string(found.st_uid), ": chown ", std::to_string(folder.st_uid),
           " ", path});
  if ((found.st_mode & kOthers) != 0)
    wrong({path, " can be read by other users, mode ", inOctal(found.st_mode), ": chmod 600 ", path});
}

void Check::records() {
  std::size_t readable = 0;
  std::array<std::uint8_t, kMostRecordBytes> record{};
  for (const RecordInfo* info : store_.records()) {
    if (store_.peek(*info, record.data()) == StoreResult::kDone)
      ++readable;
    else
      wrong({"record ", info->name, ": ", store_.fault(), ": restore a backup, or ", target_.caller,
             " reset ", info->name});
  }
  good({"records: ", std::to_string(readable), " of ", std::to_string(store_.records().size()),
        " can be read"});
}

void Check::product() {
  const std::string path = at(kProductFile);
  std::string text;
  if (const int error = readFile(path.c_str(), &text); error != 0)
    return wrong({path, ": ", errorText(error), ": install the product's file"});
  if (!product_.parse(text))
    return wrong({path, ": line ", std::to_string(wrongLine(text)),
                  ": unknown or repeated key, or malformed value: correct it"});
  good({path, " can be read"});
}

void Check::sockets() {
  const Needed needed[] = {
      {kEventDaemon, true, "sw_input.cgi"},
      {kIoDaemon, product_.input_count > 0 || product_.output_count > 0, "io.cgi and notify.cgi"},
      {kPanTiltDaemon, product_.has_pan_tilt, "ptz_*.cgi"}};
  for (const Needed& daemon : needed) {
    const std::string path = at(daemon.name);
    if (!daemon.isNeeded) continue;
    if (connectToDaemon(path.c_str(), kPatience).isOpen())
      good({"socket ", path, ": a daemon listens"});
    else
      wrong({"socket ", path, ": ", errorText(errno),
             ": start its daemon, and let this user write to it; for ", daemon.user});
  }
  const std::string log = at("/dev/log");
  if (const int error = connectToLog(log); error != 0)
    wrong({"socket ", log, ": ", errorText(error),
           ": start the system log; without it, nothing says why requests fail"});
  else
    good({"socket ", log, ": the system log listens"});
}

bool Check::isProgram(std::string_view name) const {
  if (name.starts_with('/')) return access(at(name).c_str(), X_OK) == 0;
  std::string_view rest = target_.path;
  while (!rest.empty()) {
    const std::string program = joined({target_.root, takeUntil(':', &rest), "/", name});
    if (access(program.c_str(), X_OK) == 0) return true;
  }
  return false;
}

void Check::programs() {
  const Needed needed[] = {{"/bin/sh", true, "all other programs"},
                           {"/sbin/reboot", true, "system_reboot.cgi and system_reset.cgi"},
                           {"factoryReset", true, "system_reset.cgi"},
                           {"send_cmd", true, "event_log.cgi"},
                           {"sdmanage.sh", product_.has_sdcard, "sdcard_format.cgi"}};
  for (const Needed& program : needed) {
    if (!program.isNeeded) continue;
    if (isProgram(program.name))
      good({"program ", program.name});
    else
      wrong({"program ", program.name, " is not executable in ", target_.path,
             ": install it, and give the web server this PATH; for ", program.user});
  }
}

void Check::actions() {
  std::size_t count = 0;
  for (const RecordInfo* info : store_.records()) {
    const std::string path = joined({target_.root, kActionsFolder, "/", info->name});
    if (access(path.c_str(), F_OK) != 0) continue;
    ++count;
    if (access(path.c_str(), X_OK) != 0)
      wrong({"action program ", path, " is not executable: chmod 755 ", path});
  }
  good({"action programs: ", std::to_string(count), "; a record without one takes effect by itself, or not"});
}

void Check::multicast() {
  if (const int error = tryMulticast(); error != 0)
    wrong(
        {"multicast on the loopback interface: ", errorText(error),
         ": ip link set lo up, with CONFIG_IP_MULTICAST in the kernel; for notify.cgi and the event stream"});
  else
    good({"multicast on the loopback interface arrives"});
}

void Check::temporary() {
  std::string path = at("/tmp/camera-check-XXXXXX");
  const Descriptor file(mkostemp(path.data(), O_CLOEXEC));
  if (!file.isOpen())
    return wrong({at("/tmp"), ": ", errorText(errno), ": mount it with mode 1777; for sdcard_format.cgi"});
  unlink(path.c_str());
  const std::string log = at(kFormatLog);
  const Descriptor old(open(log.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC));
  if (!old.isOpen() && errno != ENOENT)
    return wrong({log, ": ", errorText(errno), ": remove it; for sdcard_format.cgi"});
  good({at("/tmp"), " can be written"});
}

void Check::versions() {
  utsname kernel{};
  SystemSettings firmware{};
  uname(&kernel);
  const bool isKnown = store_.peek(systemRecord, &firmware) == StoreResult::kDone;
  good({"versions: ", "camera-settings ", CAMERA_VERSION, ", firmware ",
        isKnown ? textOf(firmware.version) : "unknown", " of model ",
        isKnown ? textOf(firmware.model) : "unknown", ", ", kernel.sysname, " ", kernel.release, " ",
        kernel.machine});
}

}  // namespace

bool checkTarget(SettingsStore& store, const Target& target, std::string* report) {
  Check check(store, target, report);
  check.folder();
  check.records();
  check.product();
  check.sockets();
  check.programs();
  check.actions();
  check.multicast();
  check.temporary();
  check.versions();
  return check.isAllWell();
}

}  // namespace camera
