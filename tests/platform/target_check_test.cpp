// What camera-settings says of a camera's system, and as whom it acts when root runs it.
#include "platform/check/target_check.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include "platform/daemons/daemon_client.h"
#include "platform/store/owner.h"
#include "platform/store/records/host.h"
#include "tests/support/own_network.h"
#include "tests/support/temporary_folder.h"

namespace camera::test {
namespace {

namespace fs = std::filesystem;

// A system with all that a camera with every part needs, in a folder.
struct System : testing::Test {
  System() {
    for (const char* inner :
         {"var/lib/camera/settings", "etc/camera", "var/tmp", "bin", "sbin", "dev", "tmp"})
      fs::create_directories(root / inner);
    fs::permissions(settings, fs::perms(0700));
    folder.put("etc/camera/product.conf", "input_count = 1\nhas_pan_tilt = 1\nhas_sdcard = 1\n");
    for (const char* name :
         {"bin/sh", "bin/send_cmd", "bin/factoryReset", "bin/sdmanage.sh", "sbin/reboot"}) {
      folder.put(name, "");
      fs::permissions(root / name, fs::perms(0700));
    }
    for (const char* name : {kEventDaemon, kIoDaemon, kPanTiltDaemon}) listenAt(name, SOCK_STREAM);
    listenAt("/dev/log", SOCK_DGRAM);
  }

  void listenAt(const std::string& name, int type) {
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    (folder.path() + name).copy(address.sun_path, sizeof address.sun_path - 1);
    sockets.emplace_back(socket(AF_UNIX, type | SOCK_CLOEXEC, 0));
    EXPECT_EQ(bind(sockets.back().number(), reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(type == SOCK_STREAM ? listen(sockets.back().number(), 8) : 0, 0);
  }

  // The lines about what is wrong.
  std::string faults() {
    PosixStoreFiles files(settings);
    SettingsStore store(files, kRecords);
    std::string report;
    const bool isAllWell = checkTarget(store, {folder.path(), "/sbin:/bin", "settings"}, &report);
    std::string wrong;
    std::istringstream lines(report);
    for (std::string line; std::getline(lines, line);)
      if (!line.starts_with("ok: ")) wrong += line + "\n";
    EXPECT_EQ(isAllWell, wrong.empty()) << report;
    return wrong;
  }

  const TemporaryFolder folder;
  const fs::path root{folder.path()};
  const fs::path settings{root / "var/lib/camera/settings"};
  std::vector<Descriptor> sockets;
};

TEST_F(System, IsSaidToLackWhatItLacks) {
  expectInOwnNetwork([this] {
    EXPECT_EQ(faults(), "");
    const std::pair<std::function<void()>, const char*> rows[] = {
        {[this] { fs::permissions(settings, fs::perms(0750)); }, "chmod 700 "},
        {[this] {
           folder.put("var/lib/camera/settings/lan", "?");
           fs::permissions(settings / "lan", fs::perms(0600));
         },
         "settings reset lan\n"},
        {[this] { fs::permissions(settings / "lan", fs::perms(0640)); }, "chmod 600 "},
        {[this] { folder.put("etc/camera/product.conf", "has_mic = 1\n\nhas_mic = 1\nhas_pir = 1"); },
         "product.conf: line 3: "},
        {[this] { fs::remove(root / "var/tmp/eventd"); }, "/eventd: No such file or directory: "},
        {[this] { fs::remove(root / "dev/log"); }, "/dev/log: No such file or directory: "},
        {[this] { fs::permissions(root / "bin/send_cmd", fs::perms(0600)); }, "send_cmd is not executable"},
        {[this] { fs::remove_all(root / "tmp"); }, "/tmp: No such file or directory: "}};
    std::size_t before = 0;
    for (const auto& [damage, said] : rows) {
      damage();
      const std::string all = faults();
      EXPECT_NE(all.find(said), all.npos) << said << all;
      EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), ++before) << all;
    }
    fs::create_directories(root / "tmp/sd.txt");
    EXPECT_NE(faults().find("/tmp/sd.txt: Is a directory: "), std::string::npos);
    fs::remove_all(settings);
    EXPECT_NE(faults().find("is missing: mkdir"), std::string::npos);
  });
}

TEST_F(System, WithoutALoopbackInterfaceHasNoMulticast) {
  const TemporaryFolder nothing;
  PosixStoreFiles files(nothing.path());
  SettingsStore store(files, {});
  const auto lookWithoutNetwork = [&] {
    std::string report;
    if (unshare(geteuid() == 0 ? CLONE_NEWNET : CLONE_NEWUSER | CLONE_NEWNET) != 0) _exit(1);
    checkTarget(store, {nothing.path(), "", ""}, &report);
    _exit(report.find("wrong: multicast") == report.npos ? 1 : 0);
  };
  EXPECT_EXIT(lookWithoutNetwork(), testing::ExitedWithCode(0), "");
}

// Otherwise a boot script that sets something as root locks the web server out.
TEST(Root, ActsAsTheOwnerOfTheFolder) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can give a folder away";
  const TemporaryFolder folder;
  ASSERT_EQ(chown(folder.path().c_str(), 1234, 5678), 0);
  const auto store = [&] {
    actAsOwner(folder.path().c_str());
    PosixStoreFiles files(folder.path());
    _exit(SettingsStore(files, kRecords).overwrite(hostRecord, hostRecord.defaults) == StoreResult::kDone
              ? 0
              : 1);
  };
  EXPECT_EXIT(store(), testing::ExitedWithCode(0), "");
  struct stat found {};
  ASSERT_EQ(stat(folder.path("host").c_str(), &found), 0);
  EXPECT_EQ(std::tuple(found.st_uid, found.st_gid, found.st_mode & 0777), std::tuple(1234U, 5678U, 0600U));
}

}  // namespace
}  // namespace camera::test
