// stream_auth.cgi: whether live video and the snapshot URL ask for an account.
#include "handlers/endpoint.h"
#include "platform/store/records/httpsvr.h"

namespace camera {
namespace {

constexpr auto kRows =
    paramRows<_httpsvr_setting>(choiceParam<&_httpsvr_setting::livevideo>("livevideo", kOffOn),
                                choiceParam<&_httpsvr_setting::snapshoturl>("snapshoturl", kOffOn));
constexpr ParamTable<_httpsvr_setting> kParams{kRows, UnknownNames::kIgnore, 2};

}  // namespace

class StreamAuthCgilet final : public RecordEndpoint<_httpsvr_setting, 1> {
 public:
  StreamAuthCgilet() : RecordEndpoint(kParams) {}

 private:
  // Nothing that this endpoint takes can be a reason to refuse the record.
  int carryOut(_httpsvr_setting& wanted) override {
    writeChanged(state, wanted, 1);
    return commit(500);
  }
};

template InfCgilet* create<StreamAuthCgilet>();

}  // namespace camera
