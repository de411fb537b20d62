// The whole camera as a fixture: processes, HTTP and the camera's folders.
#include "tests/camera/camera.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <iostream>
#include <stdexcept>

namespace camera::test {
namespace {

constexpr double kBootSeconds = 60;
// Printed, followed by the port, at every start of the web server.
constexpr std::string_view kAnnouncement = "The camera answers on http://127.0.0.1:";

void check(bool condition, const std::string& what) {
  if (!condition) throw std::runtime_error("test camera: " + what);
}

sockaddr_in loopback(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

}  // namespace

pid_t start(const Command& command, const std::string& in, const std::string& out, const std::string& err) {
  std::vector<char*> argv;
  for (const std::string& word : command) argv.push_back(const_cast<char*>(word.c_str()));
  argv.push_back(nullptr);
  const pid_t pid = fork();
  check(pid >= 0, "cannot start " + command[0]);
  if (pid != 0) return pid;
  const int files[] = {open(in.c_str(), O_RDONLY), creat(out.c_str(), 0600), creat(err.c_str(), 0600)};
  for (int i = 0; i < 3; ++i) dup2(files[i], i);
  setenv("CAMERA_BUILD_DIR", CAMERA_BUILD_DIR, 0);  // tests/cross/run names another
  execvp(argv[0], argv.data());
  _exit(127);
}

int waitFor(pid_t pid) {
  int status = 0;
  check(waitpid(pid, &status, 0) == pid, "cannot wait");
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

int listenSomewhere(int* port) {
  const int descriptor = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address = loopback(0);
  socklen_t size = sizeof address;
  check(bind(descriptor, reinterpret_cast<sockaddr*>(&address), size) == 0 && listen(descriptor, 8) == 0 &&
            getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &size) == 0,
        "no free port");
  *port = ntohs(address.sin_port);
  return descriptor;
}

int freePort() {
  int port = 0;
  close(listenSomewhere(&port));
  return port;
}

Connection::Connection(int port, const char* from)
    : descriptor_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
  const sockaddr_in to = loopback(port);
  sockaddr_in own = loopback(0);
  const timeval patience{.tv_sec = 30, .tv_usec = 0};
  setsockopt(descriptor_, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
  if (from != nullptr && inet_pton(AF_INET, from, &own.sin_addr) == 1)
    check(bind(descriptor_, reinterpret_cast<const sockaddr*>(&own), sizeof own) == 0, "cannot bind");
  static_cast<void>(connect(descriptor_, reinterpret_cast<const sockaddr*>(&to), sizeof to));
}

Connection::~Connection() {
  close(descriptor_);
}

// The server may refuse before it has read everything.
void Connection::send(const std::string& part) const {
  static_cast<void>(::send(descriptor_, part.data(), part.size(), MSG_NOSIGNAL));
}

std::string Connection::receive() const {
  std::string answer;
  char buffer[4096];
  for (ssize_t size = 0; (size = recv(descriptor_, buffer, sizeof buffer, 0)) > 0;)
    answer.append(buffer, static_cast<std::size_t>(size));
  return answer;
}

Reply ask(int port, const std::string& line, const std::string& rest) {
  const std::string host = rest.starts_with("Host: ") ? "" : "Host: 127.0.0.1\r\n";
  const Connection connection(port);
  connection.send(line + " HTTP/1.1\r\nConnection: close\r\n" + host + rest + "\r\n");
  const std::string answer = connection.receive();
  const std::size_t end = answer.find("\r\n\r\n");
  if (end == answer.npos) return {};
  return {std::stoi(answer.substr(9, 3)), answer.substr(0, end + 2), answer.substr(end + 4)};
}

Reply fetch(int port, const std::string& path) {
  return ask(port, "GET " + path);
}

std::vector<pid_t> processesOf(const TemporaryFolder& folder, const std::string& program) {
  const std::string name = std::filesystem::path(folder.path()).filename();
  std::vector<pid_t> found;
  for (const auto& process : std::filesystem::directory_iterator("/proc")) {
    const std::string command = readFile(process.path() / "cmdline");
    const std::string about = command + readFile(process.path() / "mountinfo");
    if (about.find(name) != about.npos && command.starts_with(program))
      found.push_back(std::atoi(process.path().filename().c_str()));
  }
  return found;
}

void expectNoSanitizerReport(const std::filesystem::path& state) {
  std::error_code missing;
  for (const auto& entry : std::filesystem::directory_iterator(state / "log", missing)) {
    if (!entry.path().filename().string().starts_with("sanitizer.")) continue;
    ADD_FAILURE() << entry.path();
    std::cerr << readFile(entry.path());  // a death test shows nothing else
  }
}

Camera::Camera() {
  std::filesystem::create_directory(state());
  const std::string product = readFile(CAMERA_SOURCE_DIR "/virtual-camera/products/full/product.conf");
  const std::string settings = readFile(CAMERA_SOURCE_DIR "/virtual-camera/products/full/settings");
  writeFile(state() / "factory-settings",
            "httpsvr http_port=" + std::to_string(factoryPort) + "\n" + settings);
  writeFile(state() / "product.conf", product + "interface.eth0 = lo\n");
}

Camera::~Camera() {
  turnOff();
  expectNoSanitizerReport(state());
}

Command Camera::sandbox(const std::string& program) const {
  return {CAMERA_SOURCE_DIR "/virtual-camera/" + program, "--state", state()};
}

void Camera::boot() {
  const std::string out = folder_.path("boot.out");
  std::filesystem::remove(out);
  Command command{"setpriv", "--pdeathsig", "TERM"};  // a test that crashes leaves no camera behind
  for (const std::string& word : sandbox("boot")) command.push_back(word);
  command.insert(command.end(), options.begin(), options.end());
  boot_ = start(command, "/dev/null", out, folder_.path("boot.err"));
  check(within(kBootSeconds, [&] { return readFile(out).find(kAnnouncement) != out.npos; }),
        "it does not start: " + readFile(out) + readFile(folder_.path("boot.err")));
}

void Camera::turnOff() {
  if (boot_ == 0) return;
  kill(boot_, SIGTERM);
  waitFor(boot_);
  boot_ = 0;
}

int Camera::port() const {
  const std::string announcements = readFile(folder_.path("boot.out"));
  return std::stoi(announcements.substr(announcements.rfind(kAnnouncement) + kAnnouncement.size()));
}

int Camera::starts() const {
  const std::string said = readFile(folder_.path("boot.out"));
  int count = 0;
  for (std::size_t at = 0; (at = said.find(kAnnouncement, at)) != said.npos; ++at) ++count;
  return count;
}

Reply Camera::get(const std::string& path) {
  return fetch(port(), path);
}

Output Camera::run(const Command& command) {
  const int status = waitFor(start(command, "/dev/null", folder_.path("out"), folder_.path("err")));
  return {status, readFile(folder_.path("out")), readFile(folder_.path("err"))};
}

Output Camera::inside(const Command& command) {
  Command whole = sandbox("sandbox");
  whole.insert(whole.end(), command.begin(), command.end());
  return run(whole);
}

}  // namespace camera::test
