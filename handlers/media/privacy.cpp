// privacy.cgi: the privacy mode.
#include "platform/store/records/privacy.h"
#include "handlers/endpoint.h"

namespace camera {
namespace {

constexpr auto kParams =
    paramRows<_privacy_setting>(choiceParam<&_privacy_setting::enable>("enable", kNoYes),
                                choiceParam<&_privacy_setting::manual>("manual", kOffOn));

}  // namespace

class PrivacyCgilet final : public RecordEndpoint<_privacy_setting, 1> {
 public:
  PrivacyCgilet() : RecordEndpoint(kParams, &PIB::has_privacy) {}
};

template InfCgilet* create<PrivacyCgilet>();

}  // namespace camera
