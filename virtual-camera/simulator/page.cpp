// /simulator of the web server: the commands of `./run sim`, for the console.
#include "virtual-camera/simulator/page.h"

#include <cstdlib>
#include <cstring>

#include "framework/reply.h"
#include "framework/request.h"
#include "virtual-camera/simulator/client.h"

namespace camera::simulator {
namespace {

struct Refusal {
  int code = 0;  // 0: none
  std::string parameter{};
  std::string message{};
};

bool isLocal() {
  const char* const variable = std::getenv("REMOTE_ADDR");
  std::string_view address = variable == nullptr ? "" : variable;
  if (constexpr std::string_view kMapped = "::ffff:"; address.starts_with(kMapped)) {
    address.remove_prefix(kMapped.size());
  }
  return address == "::1" || address.starts_with("127.");
}

// Finds out what to ask the simulator.
Refusal read(const CgiVariables& variables, std::string* command) {
  if (!isLocal()) return {403, "", "only a client on the machine of the virtual camera may do this"};
  Request request;
  readRequest(variables, false, &request);
  if (!request.error.empty()) return {400, "", request.error};
  const bool isPost = variables.method == "POST";
  for (const auto& [name, value] : request.params) {
    if (name != "command") return {400, name, "no such parameter"};
    if (!isPost) return {400, name, "needs a POST"};
    *command = value;
  }
  if (isPost && command->empty()) return {400, "command", "a command of ./run sim"};
  if (!isPost) *command = kListCommands;
  return {};
}

}  // namespace

void serveRequest() {
  const CgiVariables variables = cgiVariables();
  Reply reply;
  if (prefersJson(variables.accept)) reply.useJson();
  std::string command;
  const Refusal refusal = read(variables, &command);
  if (refusal.code != 0) return reply.sendFailure(refusal.code, refusal.parameter, refusal.message);

  ControlReply answer{};
  if (const int error = tell(command, &answer); error != 0) {
    return reply.sendFailure(500, "", "the daemons do not answer: " + std::string(std::strerror(error)));
  }
  if (!answer.isDone) return reply.sendFailure(400, "", answer.text);
  Reply done;
  if (command == kListCommands) {
    done.useJson();
    done.value("commands", answer.text);
  } else {
    done.append(answer.text);
  }
  done.send();
}

}  // namespace camera::simulator
