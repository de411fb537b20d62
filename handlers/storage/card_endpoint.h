// Base of the SD card's endpoints: 404 without a card slot, 500 if the card's state cannot be read.
#pragma once

#include "handlers/endpoint.h"
#include "platform/card/card_state.h"
#include "platform/store/records/record.h"
#include "platform/store/records/sd.h"

namespace camera {

// Base is one of the classes of handlers/endpoint.h.
template <class Base>
class CardEndpoint : public Base {
 protected:
  using Base::Base;

  int load() override {
    const int result = this->require(&ProductInfo::has_sdcard);
    return result == 200 ? readCard() : result;
  }

  // Reports a ready card as full if little space is left, or else as recording if recording is on.
  int readCard() {
    const int result = this->read(card);
    if (result != 200 || card.state != kReady) return result;
    if (card.free <= std::int64_t{card.full_threshold} * 1024) {
      card.state = kFull;
      return 200;
    }
    RecordingSettings recording;
    if (this->read(recording) != 200) return 500;
    if (recording.enable == 1) card.state = kRecording;
    return 200;
  }

  // True if the card's files can be read.
  bool isUsable() const { return card.state == kReady || card.state == kFull || card.state == kRecording; }

  std::string_view cardWord() const {
    return card.state < std::size(kCardWords) ? kCardWords[card.state] : "";
  }

  void replyCard() {
    this->pair("status", cardWord());
    this->pair("total", card.total);
    this->pair("used", card.used);
    this->pair("free", card.free);
  }

  CardSettings card;
};

// The keys of replyCard.
inline constexpr std::initializer_list<ApiKey> kCardReply = {
    {"status", ApiType::kText,
     "`ready`, `recording` (ready, and recording is on), `full`, `protected`, `invalid`, `over_capacity`, "
     "`need_reinitialize` or `formatting`; empty without a card."},
    {"total", ApiType::kNumber, "The whole space in KiB."},
    {"used", ApiType::kNumber, "The used space in KiB."},
    {"free", ApiType::kNumber, "The free space in KiB."}};

}  // namespace camera
