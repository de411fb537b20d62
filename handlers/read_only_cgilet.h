// What every endpoint is that only answers: it takes no parameter.
#pragma once

#include "framework/cgilet.h"

namespace camera {

class ReadOnlyCgilet : public InfCgilet {
 public:
  void onLoad() override { status = 200; }

  void onApply() override { status = 400; }

  void onReply() override {
    if (status == 200) status = answer();
    if (status != 200) {
      infFail(status);
      return;
    }
    infOK();
  }

 protected:
  // Reads what there is to tell and appends the lines. Returns 200, or the code of the failure; no line is
  // sent then.
  virtual int answer() = 0;
};

}  // namespace camera
