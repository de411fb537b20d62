// What the endpoints share that take the camera down: one word that confirms, and a command that outlives the
// reply.
#pragma once

#include "handlers/confirmation.h"
#include "handlers/endpoint.h"
#include "platform/shell.h"

namespace camera {

// The command returns at once and waits in the background until the client has its reply.
template <const auto& kParams, const char* kCommand>
class SystemCommandEndpoint : public StateEndpoint<kParams, Takes::kCommand> {
  int carryOut(Confirmation& /*wanted*/) override { return 200; }

  int reply() override {
    runShell(kCommand);
    this->pair(kParams.rows.front().name, "yes");
    return 200;
  }
};

}  // namespace camera
