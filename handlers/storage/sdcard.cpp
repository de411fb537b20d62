// sdcard.cgi: the state of the SD card, and its space.
#include "handlers/storage/card_endpoint.h"

namespace camera {

class SdcardCgilet final : public CardEndpoint<ReadOnlyEndpoint> {
 public:
  SdcardCgilet() : CardEndpoint(Takes::kNothingIfLoaded) {}

 private:
  int reply() override {
    replyCard();
    return 200;
  }
};

template InfCgilet* create<SdcardCgilet>();

}  // namespace camera
