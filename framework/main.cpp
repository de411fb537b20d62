// The dispatcher: each process serves one request. The name that it was started by selects the endpoint.
#include <libgen.h>
#include <unistd.h>

#include <csignal>
#include <string>
#include <string_view>

#include "framework/endpoint_table.h"
#include "platform/log.h"

namespace {

// The last component of the path, after cutting the path to 255 bytes.
std::string endpointName(std::string_view path) {
  std::string buffer{path.substr(0, 255)};
  return basename(buffer.data());
}

void announce(const std::string& name) {
  const std::string line = "cgi_name " + name + "\n";
  const ssize_t ignored = write(STDERR_FILENO, line.data(), line.size());
  static_cast<void>(ignored);
  camera::logDebug("cgi_name:" + name);
}

}  // namespace

int main(int argc, char** argv) {
  // A request must run to its end even if nobody reads its log or its reply any more.
  static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
  const std::string name = endpointName(argc > 0 ? argv[0] : "");
  announce(name);
  // Without an endpoint of that name there is no reply: the link is wrong, and the log has its name.
  const camera::EndpointEntry* endpoint = camera::findEndpoint(name);
  if (endpoint != nullptr) endpoint->serve();
  return 0;
}
