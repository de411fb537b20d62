// sw_input.cgi: fires and releases the software input, an event trigger that has no physical line.
#include "handlers/endpoint.h"
#include "handlers/events/daemon_command.h"

namespace camera {
namespace {

struct SoftwareInput {
  std::int32_t fired;
};

constexpr auto kParams =
    paramRows<SoftwareInput>(choiceParam<&SoftwareInput::fired>("trigger", kOffOn).required());

}  // namespace

class SwInputEndpoint final : public StateEndpoint<kParams, Takes::kCommand> {
  int carryOut(SoftwareInput& wanted) override {
    DaemonAnswer answer;
    return askDaemon(daemonClient(), kEventDaemon, kSoftwareInput, wanted.fired != 0 ? 0 : 1, &answer)
               ? 200
               : fail(500, "the event daemon does not answer");
  }
};

template <>
const Api kApi<SwInputEndpoint> =
    describes<kParams>({.subsystem = Subsystem::kEvents,
                        .summary = "The software input: a trigger of event rules without a wire.",
                        .params = {{"trigger", "`on` fires it, `off` releases it."}}});
template struct EndpointOf<SwInputEndpoint>;

}  // namespace camera
