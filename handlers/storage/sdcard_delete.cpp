// sdcard_delete.cgi: deletes files and folders of the SD card, and tells of each what became of it.
#include <algorithm>

#include "handlers/storage/card_files.h"
#include "platform/shell.h"
#include "platform/text.h"

namespace camera {
namespace {

struct Wanted {
  std::string_view entries;
  std::string_view path;
};

constexpr auto kParams = paramRows<Wanted>(textParam<&Wanted::entries>("name", 0, INT32_MAX, "", kAnyBytes),
                                           cardPathParam<&Wanted::path>("path", 0), ignoredParam("type"));

// In bytes.
constexpr std::size_t kMostOfEntry = 333;
constexpr std::size_t kMostOfName = 255;
constexpr std::size_t kMostOfPath = 319;
constexpr std::size_t kMostOfCommand = 333;

constexpr std::string_view kEndsOfName = ":|/";

}  // namespace

class SdcardDeleteEndpoint final : public CardFilesEndpoint<kParams> {
  int apply() override { return take(&wanted_); }

  int reply() override {
    if (isUsable()) {
      const auto path = folderOf(wanted_.path);
      CardFolder folder;
      const bool isFolder = path && folder.open(productFolder(), *path) == 0;
      if (!isFolder && !isFile(path)) return refuse("path", "no such folder");
      folder_ = *path;
      if (const int result = deleteEntries(); result != 200) return result;
    }
    if (const int result = readCard(); result != 200) return result;
    pair("sd_status", cardWord());
    pair("num", deleted_);
    pair("path", shellQuoted(wanted_.path));
    pair("items", results_);
    return 200;
  }

  int deleteEntries() {
    for (std::string_view rest = wanted_.entries; !rest.empty();) {
      const std::size_t begin = wanted_.entries.size() - rest.size();
      const std::string_view entry = takeUntil(kItemSeparator, &rest);
      if (entry.empty()) continue;
      const std::string_view name = entry.substr(0, entry.find(kFieldSeparator));
      const std::size_t pathBytes = wholePathSize(folder_) + 1 + name.size();
      if (entry.size() > kMostOfEntry || name.size() > kMostOfName || pathBytes > kMostOfPath)
        return fail(500, "name: an entry is too long");
      if (const int result = guardUnlistable(begin, name); result != 200) return result;
      nextItem(&results_).append(name).append(deleteEntry(name, begin < guardedEnd_));
    }
    return 200;
  }

  // Where the folder of that name has an entry whose own name the list continues with, separators included,
  // nobody can tell which was meant: up to the end of that name nothing is deleted.
  int guardUnlistable(std::size_t begin, std::string_view name) {
    if (!isUnlistable(wanted_.entries)) return 200;
    const std::size_t folderSize = name.rfind('/') + 1;  // 0 without a slash
    const std::string folder = folder_ + '/' + std::string{name.substr(0, folderSize)};
    if (const int result = readUnlistable(folder); result != 200) return result;
    const std::string_view text = wanted_.entries.substr(begin + folderSize);
    for (std::size_t i = 0; i < unlistable_.size(); ++i) {
      const std::string_view whole = unlistable_.name(i);
      const bool isMeant =
          text.starts_with(whole) &&
          (text.size() == whole.size() || kEndsOfName.find(text[whole.size()]) != kEndsOfName.npos);
      if (isMeant) guardedEnd_ = std::max(guardedEnd_, begin + folderSize + whole.size());
    }
    return 200;
  }

  int readUnlistable(const std::string& path) {
    if (unlistableOf_ == path) return 200;
    unlistableOf_ = path;
    unlistable_ = {};
    CardFolder folder;
    const int error = folder.open(productFolder(), path) == 0 ? folder.list(isUnlistable, &unlistable_) : 0;
    return error == 0 ? 200 : fail(500, "the card's folder cannot be read");
  }

  // What becomes of the entry, as its result says it.
  const char* deleteEntry(std::string_view name, bool isPartOfAnother) {
    const auto entry = entryPath(folder_, name);
    EntryKind kind = EntryKind::kOther;
    if (!entry || findEntry(productFolder(), folder_ + '/' + std::string{name}, &kind) != 0) return "|n|1";
    if (isPartOfAnother || (kind != EntryKind::kFolder && kind != EntryKind::kFile)) return "|n|2";
    const bool isFolder = kind == EntryKind::kFolder;
    const bool isDeleted = isFolder ? removeFolder(*entry) : removeFile(productFolder(), *entry) == 0;
    if (isDeleted) ++deleted_;
    return isFolder ? (isDeleted ? "|d|0" : "|d|2") : (isDeleted ? "|f|0" : "|f|2");
  }

  bool removeFolder(const std::string& entry) const {
    const std::string path = std::string{kCardFolder}.append(productFolder().model) + '/' + entry;
    const std::string command = "rm -rf '" + shellQuoted(path) + "'";
    return command.size() <= kMostOfCommand && runShell(command.c_str()) == 0;
  }

  Wanted wanted_;
  std::string folder_;          // from the product's folder, maybe with a slash before it
  std::size_t guardedEnd_ = 0;  // position in the entries
  std::string unlistableOf_;    // the folder whose entries of such names are these
  NameList unlistable_;
  std::string results_;
  std::int32_t deleted_ = 0;
};

template void serve<SdcardDeleteEndpoint>();

}  // namespace camera
