// Base of the endpoints that restart the camera after a confirmation.
#pragma once

#include "handlers/confirmation.h"
#include "handlers/endpoint.h"
#include "platform/shell.h"

namespace camera {

// kCommand must return at once and act in the background, after the client has its reply.
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
