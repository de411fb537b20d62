// sdcard_download.cgi: redirects the client to a file of the SD card.
#include "handlers/storage/card_files.h"
#include "platform/shell.h"

namespace camera {
namespace {

struct Wanted {
  std::string_view file;
  std::string_view path;
};

constexpr auto kParams = paramRows<Wanted>(cardPathParam<&Wanted::file>("file", 1),
                                           cardPathParam<&Wanted::path>("path", 0), ignoredParam("type"));

enum Result : int { kFound = 0, kMissing = 1, kUnreadable = 2 };

// Encodes every byte that could end the header line or has a meaning in a URL.
std::string percentEncoded(std::string_view path) {
  std::string encoded;
  for (const char& c : path) {
    if (consistsOf({&c, 1}, kAlnum, "-._~/")) {
      encoded += c;
    } else {
      appendEscaped(c, &encoded);
    }
  }
  return encoded;
}

}  // namespace

class SdcardDownloadEndpoint final : public CardFilesEndpoint<kParams, Takes::kCommand> {
  int apply() override { return take(&wanted_); }

  int reply() override {
    std::string file;
    const Result result = find(&file);
    if (result == kFound) {
      fullReply().header("Cache-Control: no-cache, no-store, must-revalidate");
      fullReply().header("Pragma: no-cache");
      fullReply().header("Connection: close");
      fullReply().header("Location: /volumes/local/" + percentEncoded(file));
      return 307;
    }
    if (isJson()) {  // text clients expect a result
      if (!isUsable()) return fail(404, "the card cannot be read");
      refuse("file", result == kMissing ? "no such file or folder" : "not a file that can be read");
      return 404;
    }
    replyPath("path", wanted_.path);
    replyPath("file", wanted_.file);
    pair("result", result);
    return 200;
  }

  Result find(std::string* file) const {
    const auto path = folderOf(wanted_.path);
    CardFolder folder;
    if (!isUsable() || !path || folder.open(productFolder(), *path) != 0) return kMissing;
    if (wanted_.file.empty()) return kUnreadable;  // the folder itself is requested
    EntryKind kind = EntryKind::kOther;
    const auto entry = entryPath(*path, wanted_.file);
    if (!entry || findEntry(productFolder(), *path + '/' + std::string{wanted_.file}, &kind) != 0)
      return kMissing;
    *file = *entry;
    return kind == EntryKind::kFile && canReadFile(productFolder(), *entry) ? kFound : kUnreadable;
  }

  Wanted wanted_;
};

template <>
const Api kApi<SdcardDownloadEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kCard,
     .summary = "Redirects the client to a file of the SD card.",
     .records = "none; reads `sd`, `record`, `system`",
     .feature = &ProductInfo::has_sdcard,
     .dependent = "file path",
     .params = {{"file", "The file; its name may include folders.", nullptr, "clip.mp4",
                 "a name without `../`, not empty"},
                {"path", "The folder of the file, as `path` of sdcard_list.cgi.", nullptr, "/",
                 "a path without `../`"}},
     .reply = {kCardPathKey,
               {"file", ApiType::kText, "The file as given; in text with each `'` as `'\\''`."},
               {"result", ApiType::kNumber,
                "1 if there is no such folder or file, or the card is not `ready`, `full` or `recording`; 2 "
                "if `file` is missing, is not a file, or cannot be read."}},
     .codes = {{200, "Only in text, if there is nothing to send."},
               {307, "The `Location` is the file under `/volumes/local/`."},
               {404, "Also, in JSON, if there is nothing to send; the message says why."}},
     .schema = [](std::string_view param, const ProductInfo& /*product*/) -> std::string {
       return joined({kCardPathSchema, param == "file" ? R"(,"minLength":1)" : ""});
     }});
template struct EndpointOf<SdcardDownloadEndpoint>;

}  // namespace camera
