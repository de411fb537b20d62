// sdcard_format.cgi: formats the SD card and gives it the product's folder.
#include <sys/wait.h>

#include "handlers/confirmation.h"
#include "handlers/storage/card_endpoint.h"
#include "platform/card/card.h"
#include "platform/shell.h"
#include "platform/store/records/system.h"
#include "platform/text.h"

namespace camera {
namespace {

constexpr char kFormat[] = "sdmanage.sh format >> /tmp/sd.txt";
constexpr std::size_t kMostPath = 31;  // bytes of the folder's path; the format program has room for no more

constexpr auto kParams = paramRows<Confirmation>(confirmationParam("format"));

}  // namespace

class SdcardFormatEndpoint final : public CardEndpoint<StateEndpoint<kParams, Takes::kCommand>> {
  int load() override { return require(&ProductInfo::has_sdcard); }

  int carryOut(Confirmation& /*wanted*/) override {
    int result = readCard();
    if (result == 200) result = checkThatItMay();
    SystemSettings system;
    if (result == 200) result = read(system);
    if (result != 200) return result;
    const std::string_view model = textOf(system.model);
    const std::string folder = joined({kCardFolder, model});
    if (folder.size() > kMostPath)
      return fail(500, "settings: the model's name is too long for a folder on the card");
    if (WEXITSTATUS(runShell(kFormat)) != 0) runShell(kFormat);
    awaitMount();
    result = readCard();
    if (result == 200 && isFolderName(model)) makeCardFolder(folder);
    return result;
  }

  int checkThatItMay() {
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

template void serve<SdcardFormatEndpoint>();

}  // namespace camera
