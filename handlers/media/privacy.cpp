// privacy.cgi: the privacy mode.
#include "platform/store/records/privacy.h"
#include "handlers/endpoint.h"

namespace camera {
namespace {

constexpr auto kParams = paramRows<PrivacySettings>(choiceParam<&PrivacySettings::enable>("enable", kNoYes),
                                                    choiceParam<&PrivacySettings::manual>("manual", kOffOn));

}  // namespace

class PrivacyEndpoint final : public RecordEndpoint<kParams, &ProductInfo::has_privacy> {};

template <>
const Api kApi<PrivacyEndpoint> =
    describes<kParams>({.subsystem = Subsystem::kPicture,
                        .summary = "The privacy mode.",
                        .records = "`privacy`",
                        .feature = &ProductInfo::has_privacy,
                        .params = {{"enable", "Whether the privacy mode is enabled."},
                                   {"manual", "Switches the privacy mode by hand."}},
                        .state = factoryState<PrivacySettings>});
template struct EndpointOf<PrivacyEndpoint>;

}  // namespace camera
