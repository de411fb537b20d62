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

template <>
const Api kApi<ActionFtpEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kEvents,
     .summary =
         "The FTP server to which the camera uploads snapshots when an event rule with `ftp_shot` fires.",
     .records = "`ftp`, `snapshot`",
     .dependent = "pass",
     .params = {{"enable", "Switches the upload."},
                {"host", "The name or address of the server.", nullptr, "ftp.example.net"},
                {"port", "The port of the server.", nullptr, "21"},
                {"path", "The folder on the server.", nullptr, "/door",
                 "0 to 30 letters, digits, punctuation except `\"*:<>?` and the vertical bar"},
                {"prefix", "The start of the names of the uploaded files.", nullptr, "door-",
                 "as `path`, but without slash and backslash"},
                {"user", "The name of the account on the server.", nullptr, "door"},
                {"pass", "The password of the account.", nullptr, "c2VjcmV0"},
                {"passive", "Selects passive mode, or else active mode."},
                {"interval", "The time between two uploads.", "s"}},
     .state = [](const ProductInfo& /*product*/) -> const void* {
       static Ftp state;
       state = Ftp{};
       state.seconds = state.server.interval / kMillisecondsPerSecond;
       return &state;
     },
     .schema = [](std::string_view param, const ProductInfo& /*product*/) -> std::string {
       if (param != "pass") return {};
       return R"("type":"string","maxLength":40,"contentEncoding":"base64",)"
              R"("pattern":"^([A-Za-z0-9+/]{4})*([A-Za-z0-9+/]{2}==|[A-Za-z0-9+/]{3}=)?$")";
     }});
template struct EndpointOf<ActionFtpEndpoint>;

}  // namespace camera
