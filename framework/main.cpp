// The dispatcher: one process serves one request under the name by which it was started.
#include <libgen.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <string>

#include "framework/endpoint_table.h"
#include "platform/log.h"

namespace {

// The last component of the path, of which only the first 255 bytes count.
std::string endpointName(const char* path) {
  char buffer[256];
  std::strncpy(buffer, path, sizeof buffer - 1);
  buffer[sizeof buffer - 1] = '\0';
  return basename(buffer);
}

void announce(const std::string& name) {
  const std::string line = "cgi_name " + name + "\n";
  const ssize_t ignored = write(STDERR_FILENO, line.data(), line.size());
  static_cast<void>(ignored);
  camera::logDebug("cgi_name:%s", name.c_str());
}

}  // namespace

int main(int argc, char** argv) {
  // A reader of the log or of the reply that has gone must not end a request half-way.
  static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
  const std::string name = endpointName(argc > 0 ? argv[0] : "");
  announce(name);
  const camera::EndpointEntry* endpoint = camera::findEndpoint(name);
  if (endpoint != nullptr) endpoint->serve();
  return 0;
}
