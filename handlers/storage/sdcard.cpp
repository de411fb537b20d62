// sdcard.cgi: the state and the space of the SD card.
#include "handlers/storage/card_endpoint.h"

namespace camera {

class SdcardEndpoint final : public CardEndpoint<ReadOnlyEndpoint> {
 public:
  // A failure of load is reported before an unknown parameter.
  SdcardEndpoint() : CardEndpoint(Takes::kChanges) {}

 private:
  int reply() override {
    replyCard();
    return 200;
  }
};

template <>
const Api kApi<SdcardEndpoint> = {.subsystem = Subsystem::kCard,
                                  .summary = "The state of the SD card, and its space.",
                                  .records = "none; reads `sd`, `record`",
                                  .feature = &ProductInfo::has_sdcard,
                                  .reply = kCardReply};
template struct EndpointOf<SdcardEndpoint>;

}  // namespace camera
