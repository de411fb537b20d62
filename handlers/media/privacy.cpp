// privacy.cgi: the privacy mode.
#include "platform/store/records/privacy.h"
#include "handlers/endpoint.h"

namespace camera {
namespace {

constexpr auto kParams = paramRows<PrivacySettings>(choiceParam<&PrivacySettings::enable>("enable", kNoYes),
                                                    choiceParam<&PrivacySettings::manual>("manual", kOffOn));

}  // namespace

class PrivacyEndpoint final : public RecordEndpoint<kParams, &ProductInfo::has_privacy> {};

template struct EndpointOf<PrivacyEndpoint>;

}  // namespace camera
