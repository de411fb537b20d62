// A signal at its default for a time, whatever the web server or this process made of it.
#pragma once

#include <csignal>

namespace camera {

class DefaultSignal {
 public:
  explicit DefaultSignal(int signal) : signal_(signal) {
    struct sigaction byDefault {};
    byDefault.sa_handler = SIG_DFL;
    sigaction(signal_, &byDefault, &before_);
  }
  ~DefaultSignal() { sigaction(signal_, &before_, nullptr); }
  DefaultSignal(const DefaultSignal&) = delete;
  DefaultSignal& operator=(const DefaultSignal&) = delete;

 private:
  int signal_;
  struct sigaction before_ {};
};

}  // namespace camera
