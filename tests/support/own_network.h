// A network of a test's own, so that tests that send status packages run beside one another and a camera.
#pragma once

#include <gtest/gtest.h>
#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace camera::test {

// Moves this process into a network that has nothing but a loopback interface. For a child process only.
inline void enterOwnNetwork() {
  if (unshare(geteuid() == 0 ? CLONE_NEWNET : CLONE_NEWUSER | CLONE_NEWNET) != 0) _exit(1);
  const int kernel = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  ifreq loopback{{"lo"}, {}};
  loopback.ifr_flags = IFF_UP | IFF_RUNNING;
  if (ioctl(kernel, SIOCSIFFLAGS, &loopback) != 0) _exit(1);
  close(kernel);
}

// Runs the body in a child process, in such a network.
template <class Body>
void expectInOwnNetwork(Body body) {
  EXPECT_EXIT(
      {
        enterOwnNetwork();
        body();
        _exit(testing::Test::HasFailure() ? 1 : 0);
      },
      testing::ExitedWithCode(0), "");
}

}  // namespace camera::test
