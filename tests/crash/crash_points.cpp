// Kills programs that change settings at each of their system calls, and lets each call fail. Afterwards
// every record must be old or new, the next change must succeed and leave nothing beside the records, and
// success must have been reported only for what was stored and synced. Runs in the sandbox, without a state.
//
//   crash-points           one error for each call, and for each open also that there is no file
//   crash-points --long    all errors for each call
#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Files = std::map<std::string, std::string>;

const std::string kParent = "/var/lib/camera";
const std::string kSettings = kParent + "/settings";
constexpr char kInput[] = "/tmp/input";
constexpr char kOutput[] = "/tmp/output";
constexpr int kErrors[] = {EIO, ENOSPC, EINTR, EMFILE, EROFS, ENOENT};

struct Change {
  const char* name;
  std::vector<const char*> arguments;
  const char* query;  // of an endpoint; null for camera-settings
  bool isOneStep;     // all its records change or none
};

// The restored backup is that of the factory settings.
const Change kChanges[] = {
    {"one record", {"/cgi-bin/camera_info.cgi"}, "name=door", true},
    {"six records",
     {"/cgi-bin/network.cgi"},
     "ip=10.0.0.9&pppoeuser=me&ddnshost=x.net&httpport=81&rtspport=8554&upnp=on",
     false},
    {"account", {"/cgi-bin/user_mod.cgi"}, "name=ann&password=c2VjcmV0", true},
    {"route", {"/cgi-bin/config_auto_patrol.cgi"}, "presets=gate", true},
    {"restore", {"/usr/lib/camera/bin/camera-settings", "restore"}, nullptr, true},
    {"factory reset", {"/usr/lib/camera/bin/camera-settings", "factory"}, nullptr, true}};

std::string content(const fs::path& path) {
  return (std::ostringstream() << std::ifstream(path, std::ios::binary).rdbuf()).str();
}

Files storedFiles() {
  Files files;
  for (const auto& entry : fs::directory_iterator(kSettings)) {
    if (entry.path().filename() != ".new") files[entry.path().filename()] = content(entry.path());
  }
  return files;
}

std::string plain(const std::string& path) {
  const std::string normal = fs::path(path).lexically_normal();
  return normal.size() > 1 && normal.ends_with('/') ? normal.substr(0, normal.size() - 1) : normal;
}

std::string folderOf(const std::string& path) {
  return fs::path(path).parent_path();
}

// What a program has written of the store but not synced, from its successful system calls.
class Trace {
 public:
  std::string fault;

  void opened(int descriptor, const std::string& path, bool isNew) {
    paths_[descriptor] = path;
    if (isNew) unsynced_.insert(path);
  }
  void closed(int descriptor) { paths_.erase(descriptor); }
  void wrote(int descriptor) {
    if (descriptor == STDOUT_FILENO) replied();
    if (paths_.contains(descriptor)) unsynced_.insert(paths_[descriptor]);
  }
  void synced(int descriptor) { unsynced_.erase(paths_[descriptor]); }
  void renamed(const std::string& from, const std::string& to, bool isExchange) {
    if (unsynced_.contains(from)) fault = from + " was renamed before it was synced";
    unsynced_.insert(folderOf(to));
    for (auto& [descriptor, path] : paths_) {
      if (path == from)
        path = to;
      else if (isExchange && path == to)
        path = from;
    }
  }
  void changedFolder(const std::string& path) {
    if (!path.ends_with("/.new")) unsynced_.insert(folderOf(path));
  }
  // Whether what a reply promises is on the disk.
  void replied() { isLate_ |= unsynced_.contains(kSettings) || unsynced_.contains(kParent); }
  bool isLate() const { return isLate_; }
  const std::string& path(int descriptor) { return paths_[descriptor]; }

 private:
  std::map<int, std::string> paths_;
  std::set<std::string> unsynced_;
  bool isLate_ = false;
};

struct Call {
  long number = -1;
  std::array<unsigned long long, 6> arguments{};
  std::string from;  // the paths that it names
  std::string to;
};

// The arguments of a system call that are paths; 0 stands for none in "to".
struct PathsOf {
  long call;
  std::size_t from;
  std::size_t to;
};

constexpr PathsOf kPaths[] = {{SYS_openat, 1, 0}, {SYS_unlink, 0, 0},    {SYS_unlinkat, 1, 0},
                              {SYS_rename, 0, 1}, {SYS_renameat2, 1, 3}, {SYS_linkat, 1, 3}};

// A run of a change; the system call "stop" kills it, or fails with the error.
class Run {
 public:
  Run(const Change& change, int stop, int error) : stop_(stop), error_(error) {
    start(change);
    while (isRunning()) step();
    if (isEnded_) trace_.replied();
    reply = content(kOutput);
    const bool isDone = change.query == nullptr || (!reply.empty() && reply.find("error=") == reply.npos);
    claimsSuccess = isEnded_ && status_ == 0 && isDone;
    fault = trace_.fault;
    if (claimsSuccess && trace_.isLate()) fault = "success was reported before the change was synced";
  }

  bool claimsSuccess = false;
  bool wasStopped = false;  // false if the program made fewer calls, or this one cannot fail so
  std::string fault;
  std::string reply;

 private:
  void start(const Change& change) {
    child_ = fork();
    if (child_ == 0) execute(change);
    int status = 0;
    waitpid(child_, &status, 0);
    ptrace(PTRACE_SETOPTIONS, child_, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
  }

  [[noreturn]] static void execute(const Change& change) {
    dup2(open(kInput, O_RDONLY), STDIN_FILENO);
    dup2(open(kOutput, O_WRONLY | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO);
    dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);
    for (int descriptor = 3; descriptor < 10; ++descriptor) close(descriptor);
    if (change.query != nullptr) {
      setenv("REQUEST_METHOD", "GET", 1);
      setenv("QUERY_STRING", change.query, 1);
    }
    std::vector<char*> arguments;
    for (const char* argument : change.arguments) arguments.push_back(const_cast<char*>(argument));
    arguments.push_back(nullptr);
    ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    raise(SIGSTOP);
    execv(arguments[0], arguments.data());
    _exit(127);
  }

  bool isRunning() {
    int status = 0;
    ptrace(PTRACE_SYSCALL, child_, nullptr, std::exchange(signal_, 0));
    waitpid(child_, &status, 0);
    isAtCall_ = WIFSTOPPED(status) && WSTOPSIG(status) == (SIGTRAP | 0x80);
    if (WIFSTOPPED(status) && !isAtCall_ && WSTOPSIG(status) != SIGTRAP) signal_ = WSTOPSIG(status);
    isEnded_ = WIFEXITED(status);
    if (isEnded_) status_ = WEXITSTATUS(status);
    return WIFSTOPPED(status);
  }

  void step() {
    if (!isAtCall_) return;
    __ptrace_syscall_info info{};
    ptrace(PTRACE_GET_SYSCALL_INFO, child_, sizeof info, &info);
    if (info.op == PTRACE_SYSCALL_INFO_ENTRY)
      enter(info);
    else if (failure_ != 0)
      set(offsetof(user_regs_struct, rax), -std::exchange(failure_, 0));
    else if (info.op == PTRACE_SYSCALL_INFO_EXIT && info.exit.is_error == 0)
      follow(static_cast<int>(info.exit.rval));
  }

  void enter(const __ptrace_syscall_info& info) {
    call_.number = static_cast<long>(info.entry.nr);
    for (std::size_t i = 0; i < call_.arguments.size(); ++i) call_.arguments[i] = info.entry.args[i];
    // The action programs are not started: they would only take time.
    if (call_.number == SYS_clone || call_.number == SYS_clone3 || call_.number == SYS_vfork)
      return fail(ENOSYS);
    readPaths();
    if (call_.number == SYS_execve || calls_++ != stop_) return;
    // While the folder is replaced, a file may not be found though it is there.
    if (error_ == ENOENT && call_.number != SYS_openat) return;
    wasStopped = true;
    if (error_ == 0)
      kill(child_, SIGKILL);
    else if (call_.number != SYS_exit_group)
      fail(error_);
  }

  void fail(int error) {
    failure_ = error;
    // A close that fails has closed the descriptor.
    if (call_.number != SYS_close) set(offsetof(user_regs_struct, orig_rax), -1);
  }

  void set(std::size_t where, long value) { ptrace(PTRACE_POKEUSER, child_, where, value); }

  // The path in an argument; an argument before it is the folder in which a relative one begins.
  std::string pathAt(std::size_t argument) {
    std::array<char, 512> text{};
    const iovec here{text.data(), text.size() - 1};
    const iovec there{reinterpret_cast<void*>(call_.arguments[argument]), text.size() - 1};
    if (process_vm_readv(child_, &here, 1, &there, 1, 0) <= 0) return {};
    const std::string path = text.data();
    const bool isWhole = path.starts_with('/') || argument == 0;
    return plain(isWhole ? path : trace_.path(static_cast<int>(call_.arguments[argument - 1])) + "/" + path);
  }

  void readPaths() {
    for (const PathsOf& paths : kPaths) {
      if (paths.call != call_.number) continue;
      call_.from = pathAt(paths.from);
      call_.to = paths.to == 0 ? "" : pathAt(paths.to);
    }
  }

  void follow(int result) {
    const auto& [a, b, c, d, e, f] = call_.arguments;
    const int first = static_cast<int>(a);
    switch (call_.number) {
      case SYS_openat:
        return trace_.opened(result, call_.from, (c & O_CREAT) != 0);
      case SYS_close:
        return trace_.closed(first);
      case SYS_write:
        return trace_.wrote(first);
      case SYS_fsync:
        return trace_.synced(first);
      case SYS_unlink:
      case SYS_unlinkat:
        return trace_.changedFolder(call_.from);
      case SYS_linkat:
        return trace_.changedFolder(call_.to);
      case SYS_rename:
        return trace_.renamed(call_.from, call_.to, false);
      case SYS_renameat2:
        return trace_.renamed(call_.from, call_.to, e != 0);
    }
  }

  pid_t child_ = -1;
  int stop_;
  int error_;
  int calls_ = 0;
  int signal_ = 0;
  int status_ = -1;
  int failure_ = 0;
  bool isAtCall_ = false;
  bool isEnded_ = false;
  Call call_;
  Trace trace_;
};

int faults = 0;

void report(const Change& change, int stop, int error, const std::string& what) {
  ++faults;
  std::printf("%s, call %d, %s: %s\n", change.name, stop, error == 0 ? "killed" : strerrorname_np(error),
              what.c_str());
}

class Checked {
 public:
  explicit Checked(const Change& change) : change_(change), old_(storedFiles()) {
    const Run whole(change_, -1, 0);
    new_ = storedFiles();
    reply_ = whole.reply;
    if (!whole.claimsSuccess || new_ == old_ || !whole.fault.empty())
      report(change_, -1, 0, "it does not change the settings as it should; " + whole.fault);
  }
  ~Checked() { putOld(); }
  Checked(const Checked&) = delete;
  Checked& operator=(const Checked&) = delete;

  // False if the program was not stopped there.
  bool stopAt(int call, int error) {
    putOld();
    const Run run(change_, call, error);
    if (!run.wasStopped) return false;
    std::string fault = run.fault;
    const Files left = storedFiles();
    if (run.claimsSuccess && left != new_) fault = "success was reported, but not stored";
    if (run.claimsSuccess && run.reply != reply_) fault = "the reply is wrong:\n" + run.reply;
    if (change_.isOneStep && left != old_ && left != new_) fault = "some settings are old and some new";
    for (const auto& [name, bytes] : merged()) {
      const std::string stored = valueOf(left, name);
      if (stored != valueOf(old_, name) && stored != valueOf(new_, name))
        fault = name + " is neither old nor new";
    }
    const Run next(change_, -1, 0);
    if (!next.claimsSuccess || storedFiles() != new_) fault = "the next change fails";
    if (fs::exists(kSettings + ".new") || fs::exists(kSettings + "/.new")) fault = "a file is left over";
    if (!fault.empty()) report(change_, call, error, fault);
    return true;
  }

 private:
  void putOld() const {
    fs::remove_all(kSettings + ".new");
    fs::remove_all(kSettings);
    fs::create_directory(kSettings);
    for (const auto& [name, bytes] : old_)
      std::ofstream(fs::path(kSettings) / name, std::ios::binary) << bytes;
  }
  Files merged() const {
    Files all = old_;
    all.insert(new_.begin(), new_.end());
    return all;
  }
  static std::string valueOf(const Files& files, const std::string& name) {
    const auto found = files.find(name);
    return found == files.end() ? "" : found->second;
  }

  const Change& change_;
  Files old_;
  Files new_;
  std::string reply_;
};

bool prepare() {
  const char* command =
      "camera-simulator serve & until [ -S /run/camera/simulator ]; do sleep 0.01; done;"
      "camera-settings factory </etc/camera/factory-settings && camera-settings backup >/tmp/input &&"
      "camera-settings set smtp host=mail && camera-settings set host location=home &&"
      "camera-settings set ftp port=2121 &&"
      "REQUEST_METHOD=GET QUERY_STRING='name=gate&act=add' /cgi-bin/ptz_preset.cgi 2>/dev/null | grep -q "
      "gate";
  return std::system(command) == 0;
}

}  // namespace

int main(int count, char* arguments[]) {
  const bool isLong = count > 1 && std::string(arguments[1]) == "--long";
  if (!prepare()) {
    std::puts("the camera cannot be prepared");
    return 1;
  }
  int kills = 0;
  int errors = 0;
  for (const Change& change : kChanges) {
    if (std::string(change.name) == "factory reset")
      fs::copy_file("/etc/camera/factory-settings", kInput, fs::copy_options::overwrite_existing);
    Checked checked(change);
    for (int call = 0; checked.stopAt(call, 0); ++call) {
      ++kills;
      for (std::size_t i = 0; i < std::size(kErrors); ++i) {
        const bool isTurn = static_cast<std::size_t>(call) % (std::size(kErrors) - 1) == i;
        if (!isLong && !isTurn && kErrors[i] != ENOENT) continue;
        errors += checked.stopAt(call, kErrors[i]);
      }
    }
  }
  std::printf("%d crash points, %d errors, %d faults\n", kills, errors, faults);
  return faults == 0 && kills > 100 ? 0 : 1;
}
