// stream_auth.cgi: whether live video and the snapshot URL require an account.
#include "handlers/endpoint.h"
#include "platform/store/records/httpsvr.h"

namespace camera {
namespace {

constexpr auto kParams =
    paramRows<HttpServerSettings>(choiceParam<&HttpServerSettings::livevideo>("livevideo", kOffOn),
                                  choiceParam<&HttpServerSettings::snapshoturl>("snapshoturl", kOffOn))
        .ignoringUnknown(2);

}  // namespace

class StreamAuthEndpoint final : public RecordEndpoint<kParams> {
  // The store can refuse the record only for a field that this endpoint does not change: 500, not 400.
  int carryOut(HttpServerSettings& wanted) override {
    writeChanged(state, wanted);
    return commit(500);
  }
};

template <>
const Api kApi<StreamAuthEndpoint> =
    describes<kParams>({.subsystem = Subsystem::kPicture,
                        .summary = "Whether live video and the snapshot URL require an account.",
                        .records = "`httpsvr`",
                        .params = {{"livevideo", "Whether live video requires an account."},
                                   {"snapshoturl", "Whether the snapshot URL requires an account."}},
                        .codes = {{400, "A request has at most two parameters, unknown ones included."}},
                        .state = factoryState<HttpServerSettings>});
template struct EndpointOf<StreamAuthEndpoint>;

}  // namespace camera
