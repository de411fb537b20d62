// sdcard_format.cgi: formats the SD card and creates the product's folder on it.
#include <sys/wait.h>

#include <algorithm>

#include "handlers/confirmation.h"
#include "handlers/storage/card_endpoint.h"
#include "platform/card/card.h"
#include "platform/shell.h"
#include "platform/store/records/system.h"
#include "platform/text.h"

namespace camera {
namespace {

constexpr char kFormat[] = "sdmanage.sh format >> /tmp/sd.txt";
constexpr char kTryLog[] = ": >> /tmp/sd.txt";  // the shell starts no program whose output it cannot open
constexpr std::size_t kMostPath = 31;           // characters of the folder's path

constexpr auto kParams = paramRows<Confirmation>(confirmationParam("format"));

// The folder has the model's name, which may not lead out of the card.
void makeProductFolder(std::string_view model) {
  if (!isFolderName(model)) return;
  std::string path{kCardFolder};
  path += model;
  path.resize(std::min(path.size(), kMostPath));
  makeCardFolder(path);
}

}  // namespace

class SdcardFormatEndpoint final : public CardEndpoint<StateEndpoint<kParams, Takes::kCommand>> {
  int load() override { return require(&ProductInfo::has_sdcard); }

  int carryOut(Confirmation& /*wanted*/) override {
    int result = readCard();
    if (result == 200) result = checkState();
    if (result != 200) return result;
    if (WEXITSTATUS(runShell(kFormat)) != 0) {
      if (runShell(kTryLog) != 0) return fail(500, "Not formatted: /tmp/sd.txt cannot be written");
      runShell(kFormat);
    }
    awaitMount();
    result = readCard();
    SystemSettings system;
    if (result == 200) result = read(system);
    if (result == 200) makeProductFolder(textOf(system.model));
    return result;
  }

  int checkState() {
    if (card.state == kProtected) return fail(409, "SD Card is in write protected");
    if (card.state == kFormatting) return fail(409, "SD Card is in formatting.");
    RecordingSettings recording;
    if (const int result = read(recording); result != 200) return result;
    if (recording.enable == 1 && recording.format_while_recording == 0)
      return fail(409, "SD Card is in recording.");
    return 200;
  }

  int reply() override {
    replyCard();
    return 200;
  }
};

template <>
const Api kApi<SdcardFormatEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kCard,
     .summary = "Formats the SD card, which takes a second or more, and creates the product's folder on it.",
     .records = "none; reads `sd`, `record`, `system`",
     .feature = &ProductInfo::has_sdcard,
     .params = {{"format", "Confirms that everything on the card is to be lost."}},
     .reply = kCardReply,
     .codes = {
         {409,
          "While the card is write-protected, is being formatted or is recorded to; the message says which."},
         {500,
          "Can also come after the card was formatted. Nothing was formatted if the message says so: the "
          "camera "
          "cannot write the log of the formatting."}}});
template struct EndpointOf<SdcardFormatEndpoint>;

}  // namespace camera
