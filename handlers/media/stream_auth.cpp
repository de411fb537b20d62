// stream_auth.cgi: whether live video and the snapshot URL ask for an account.
#include "handlers/endpoint.h"
#include "platform/store/records/httpsvr.h"

namespace camera {
namespace {

constexpr auto kRows =
    paramRows<HttpServerSettings>(choiceParam<&HttpServerSettings::livevideo>("livevideo", kOffOn),
                                  choiceParam<&HttpServerSettings::snapshoturl>("snapshoturl", kOffOn));
constexpr ParamTable<HttpServerSettings> kParams{kRows, UnknownNames::kIgnore, 2};

}  // namespace

class StreamAuthEndpoint final : public RecordEndpoint<HttpServerSettings> {
 public:
  StreamAuthEndpoint() : RecordEndpoint(kParams) {}

 private:
  // Nothing that this endpoint takes can be a reason to refuse the record.
  int carryOut(HttpServerSettings& wanted) override {
    writeChanged(state, wanted);
    return commit(500);
  }
};

template InfCgilet* create<StreamAuthEndpoint>();

}  // namespace camera
