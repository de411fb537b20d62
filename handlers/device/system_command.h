// What the endpoints share that take the camera down: one parameter, and a command that outlives the reply.
#pragma once

#include <algorithm>
#include <cstdlib>

#include "framework/cgilet.h"

namespace camera {

class SystemCommandCgilet : public InfCgilet {
 public:
  void onLoad() override { status = 400; }

  void onApply() override {
    if (status != 400) return;
    const bool confirmed = std::all_of(queries.begin(), queries.end(), [this](const auto& query) {
      return query.first == name_ && query.second == "go";
    });
    if (confirmed) status = 200;
  }

  void onReply() override {
    if (status != 200) {
      infFail(status);
      return;
    }
    std::system(command_);
    pair(name_, "yes");
    infOK();
  }

 protected:
  // The command returns at once and waits in the background until the client has its reply.
  SystemCommandCgilet(const char* name, const char* command) : name_(name), command_(command) {}

 private:
  const char* name_;
  const char* command_;
};

}  // namespace camera
