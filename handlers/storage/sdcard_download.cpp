// sdcard_download.cgi: sends the client on to a file of the SD card.
#include <cstdio>

#include "handlers/storage/card_files.h"

namespace camera {
namespace {

struct Wanted {
  std::string_view file;
  std::string_view path;
};

constexpr auto kParams = paramRows<Wanted>(cardPathParam<&Wanted::file>("file", 1),
                                           cardPathParam<&Wanted::path>("path", 0), ignoredParam("type"));

enum Result : int { kFound = 0, kMissing = 1, kUnreadable = 2 };

// Every byte that could end the line or mean something to a client.
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

void redirect(std::string_view path) {
  const std::string header =
      "Cache-Control: no-cache, no-store, must-revalidate\r\nPragma: no-cache\r\nConnection: close\r\n"
      "Location: /volumes/local/" +
      percentEncoded(path) + "\r\n";
  // A reader that has gone is no failure of ours.
  static_cast<void>(std::fwrite(header.data(), 1, header.size(), stdout));
}

}  // namespace

class SdcardDownloadEndpoint final : public CardFilesEndpoint {
 public:
  SdcardDownloadEndpoint() : CardFilesEndpoint(ParamTable<Wanted>(kParams), Takes::kCommand) {}

 private:
  int apply() override { return take(&wanted_); }

  int reply() override {
    std::string file;
    const Result result = find(&file);
    if (result == kFound) {
      redirect(file);
      return 307;
    }
    pair("path", strongEncode(wanted_.path));
    pair("file", strongEncode(wanted_.file));
    pair("result", result);
    return 200;
  }

  Result find(std::string* file) const {
    const auto path = folderOf(wanted_.path);
    CardFolder folder;
    if (!isUsable() || !path || folder.open(productFolder(), *path) != 0) return kMissing;
    if (wanted_.file.empty()) return kUnreadable;  // it is the folder that was asked for
    EntryKind kind = EntryKind::kOther;
    const auto entry = entryPath(*path, wanted_.file);
    if (!entry || findEntry(productFolder(), *path + '/' + std::string{wanted_.file}, &kind) != 0)
      return kMissing;
    *file = *entry;
    return kind == EntryKind::kFile && canReadFile(productFolder(), *entry) ? kFound : kUnreadable;
  }

  Wanted wanted_;
};

template InfCgilet* create<SdcardDownloadEndpoint>();

}  // namespace camera
