// The sanitizers' options in the camera's programs. They are compiled in because the web server and the
// programs that start other programs clean the environment.
#include <unistd.h>

namespace {

// In the sandbox a report goes to the state's log folder, where the fixture looks for it; elsewhere to
// standard error. Leaks are not looked for in the sandbox: it would double the time that a request takes, and
// the endpoints' own tests find them. Runs before the sanitizers are ready, and so is not instrumented.
__attribute__((no_sanitize("address", "undefined"))) const char* options() {
  return access("/usr/lib/camera/init", F_OK) == 0
             ? "log_path=/var/log/sanitizer:log_exe_name=1:detect_leaks=0"
             : "";
}

}  // namespace

extern "C" __attribute__((no_sanitize("address", "undefined"))) const char* __asan_default_options() {
  return options();
}

extern "C" __attribute__((no_sanitize("address", "undefined"))) const char* __ubsan_default_options() {
  return options();
}
