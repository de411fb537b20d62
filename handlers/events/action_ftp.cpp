// action_ftp.cgi: the FTP server to which snapshots of events go.
#include "handlers/endpoint.h"
#include "handlers/events/encoded_password.h"
#include "platform/store/records/ftp.h"
#include "platform/store/records/snapshot.h"

namespace camera {
namespace {

struct Ftp {
  FtpSettings server;
  SnapshotSettings snapshot;
  char pass[kEncodedSize];
  std::int32_t seconds;  // between uploads
};

constexpr int kMillisecondsPerSecond = 1000;

constexpr auto kParams =
    paramRows<Ftp>(choiceParam<&Ftp::server, &FtpSettings::enable>("enable", kNoYes),
                   textParam<&Ftp::server, &FtpSettings::host>("host", 1, 60, kNameText),
                   integerParam<&Ftp::server, &FtpSettings::port>("port"),
                   textParam<&Ftp::server, &FtpSettings::path>("path", kPathText),
                   textParam<&Ftp::server, &FtpSettings::prefix>("prefix", kFileNameText),
                   textParam<&Ftp::server, &FtpSettings::user>("user", kPunctuationText),
                   encodedPasswordParam<&Ftp::pass>("pass"),
                   choiceParam<&Ftp::server, &FtpSettings::passive>("passive", kNoYes),
                   integerParam<&Ftp::seconds>("interval", 10, 86400))
        .ignoringUnknown();

}  // namespace

class ActionFtpEndpoint final : public StateEndpoint<kParams> {
  int load() override {
    const int result = read(state.server, state.snapshot);
    if (result != 200) return result;
    showPassword(state.server.pass, state.pass);
    state.seconds = state.server.interval / kMillisecondsPerSecond;
    return 200;
  }

  int check(Ftp& wanted) override {
    if (given("pass")) storePassword(wanted.pass, wanted.server.pass);
    if (given("interval")) wanted.server.interval = wanted.seconds * kMillisecondsPerSecond;
    return 200;
  }

  // Two transactions: what the first one stored is in effect whatever becomes of the second.
  int carryOut(Ftp& wanted) override {
    isSwitched_ = isSwitched_ || wanted.server.enable != state.server.enable;
    isPaced_ = isPaced_ || wanted.server.interval != state.server.interval;
    writeChanged(state.server, wanted.server);
    const int result = commit();
    if (result != 200 || !(isSwitched_ || isPaced_)) return result;
    if (isSwitched_) wanted.snapshot.ftp_enable = wanted.server.enable;
    write(wanted.snapshot);
    return commit();
  }

  // What the request changed, also when it is applied again on a record that has the change already.
  bool isSwitched_ = false;
  bool isPaced_ = false;
};

template void serve<ActionFtpEndpoint>();

}  // namespace camera
