// What the endpoints share that take the camera down: one word that confirms, and a command that outlives the
// reply.
#pragma once

#include "handlers/confirmation.h"
#include "handlers/endpoint.h"
#include "platform/shell.h"

namespace camera {

class SystemCommandEndpoint : public StateEndpoint<Confirmation> {
 protected:
  // The command returns at once and waits in the background until the client has its reply.
  SystemCommandEndpoint(const ParamTable<Confirmation>& params, const char* command)
      : StateEndpoint(params, Takes::kCommand), command_(command) {}

 private:
  int carryOut(Confirmation& /*wanted*/) override { return 200; }

  int reply() override {
    runShell(command_);
    pair(parameters().front().name, "yes");
    return 200;
  }

  const char* command_;
};

}  // namespace camera
