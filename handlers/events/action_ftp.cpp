// action_ftp.cgi: the FTP server that receives the snapshots of events.
#include "handlers/encoded_password.h"
#include "handlers/endpoint.h"
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
    if (const int result = read(state.server, state.snapshot); result != 200) return result;
    showPassword(state.server.pass, state.pass);
    state.seconds = state.server.interval / kMillisecondsPerSecond;
    return 200;
  }

  int check(Ftp& wanted) override {
    if (given("pass")) storePassword(wanted.pass, wanted.server.pass);
    if (given("interval")) wanted.server.interval = wanted.seconds * kMillisecondsPerSecond;
    return 200;
  }

  // Two transactions: the first takes effect even if the second fails. A new interval writes the snapshots'
  // record unchanged, so that its actions run.
  int carryOut(Ftp& wanted) override {
    changesEnable_ = changesEnable_ || wanted.server.enable != state.server.enable;
    changesInterval_ = changesInterval_ || wanted.server.interval != state.server.interval;
    writeChanged(state.server, wanted.server);
    const int result = commit();
    if (result != 200 || !(changesEnable_ || changesInterval_)) return result;
    if (changesEnable_) wanted.snapshot.ftp_enable = wanted.server.enable;
    write(wanted.snapshot);
    return commit();
  }

  // Whether the request changes enable and the interval. Both stay true when the request is applied again on
  // a record that already holds its change.
  bool changesEnable_ = false;
  bool changesInterval_ = false;
};

template struct EndpointOf<ActionFtpEndpoint>;

}  // namespace camera
