// sdcard_delete.cgi: deletes files and folders of the SD card, and reports the result of each.
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

constexpr auto kParams =
    paramRows<Wanted>(textParam<&Wanted::entries>("name", 0, INT32_MAX, "", kAnyBytes).listedBy(":|"),
                      cardPathParam<&Wanted::path>("path", 0), ignoredParam("type"));

// Limits in bytes.
constexpr std::size_t kMostOfEntry = 333;
constexpr std::size_t kMostOfName = 255;
constexpr std::size_t kMostOfPath = 319;
constexpr std::size_t kMostOfCommand = 333;  // that removes a folder by its whole path
constexpr std::size_t kCommandAround = std::string_view{"rm -rf ''"}.size();

// True if the text begins with the name, and the name ends there.
bool beginsWithName(std::string_view text, std::string_view name) {
  return text.starts_with(name) &&
         (text.size() == name.size() || std::string_view{":|/"}.find(text[name.size()]) != text.npos);
}

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
    replyPath("path", wanted_.path);
    replyItems(results_);
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
      addResult(name, deleteEntry(name, begin < guardedEnd_));
    }
    return 200;
  }

  // A name on the card may hold separators, so that "a:b" in the list can be one entry or the entries "a" and
  // "b". If such a name starts at begin, nothing is deleted up to its end.
  int guardUnlistable(std::size_t begin, std::string_view name) {
    if (!isUnlistable(wanted_.entries)) return 200;
    const std::size_t folderSize = name.rfind('/') + 1;  // 0 without a slash
    const std::string folder = folder_ + '/' + std::string{name.substr(0, folderSize)};
    if (const int result = readUnlistable(folder); result != 200) return result;
    const std::string_view text = wanted_.entries.substr(begin + folderSize);
    for (std::size_t i = 0; i < unlistable_.size(); ++i) {
      const std::string_view whole = unlistable_.name(i);
      if (beginsWithName(text, whole)) guardedEnd_ = std::max(guardedEnd_, begin + folderSize + whole.size());
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

  // The result is "|TYPE|CODE".
  void addResult(std::string_view name, std::string_view result) {
    if (!isJson()) return addItem(&results_, joined({shownName(name), result}));
    JsonObject entry;
    entry.add("name", name);
    entry.add("type", result[1] == 'd' ? "folder" : result[1] == 'f' ? "file" : "none");
    entry.addValue("result", result.substr(3));
    addItem(&results_, entry.text());
  }

  // Deletes the entry, and returns the result that its item shows.
  const char* deleteEntry(std::string_view name, bool isGuarded) {
    const auto entry = entryPath(folder_, name);
    EntryKind kind = EntryKind::kOther;
    if (!entry || findEntry(productFolder(), folder_ + '/' + std::string{name}, &kind) != 0) return "|n|1";
    if (isGuarded || (kind != EntryKind::kFolder && kind != EntryKind::kFile)) return "|n|2";
    const bool isFolder = kind == EntryKind::kFolder;
    const bool isDeleted = isFolder ? removeFolder(*entry) : removeFile(productFolder(), *entry) == 0;
    if (isDeleted) ++deleted_;
    return isFolder ? (isDeleted ? "|d|0" : "|d|2") : (isDeleted ? "|f|0" : "|f|2");
  }

  bool removeFolder(const std::string& entry) const {
    const std::string path = shellQuoted(joined({kCardFolder, productFolder().model, "/", entry}));
    return path.size() + kCommandAround <= kMostOfCommand &&
           camera::removeFolder(productFolder(), entry) == 0;
  }

  Wanted wanted_;
  std::string folder_;          // relative to the product's folder
  std::size_t guardedEnd_ = 0;  // up to this position of wanted_.entries nothing is deleted
  std::string unlistableOf_;    // the folder of unlistable_
  NameList unlistable_;         // entries whose names hold separators
  std::string results_;
  std::int32_t deleted_ = 0;
};

constexpr const char* kResultTypes[] = {"folder", "file", "none"};
constexpr ApiKey kResult[] = {
    {"name", ApiType::kText, "The entry's name as given."},
    {"type", ApiType::kText, "What the entry is; `none` if it does not exist or may not be deleted.",
     kResultTypes},
    {"result", ApiType::kNumber, "0 deleted, 1 not found, 2 not deleted."}};
template <>
const Api kApi<SdcardDeleteEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kCard,
     .summary = "Deletes files and folders of the SD card, folders with their contents.",
     .records = "none; reads `sd`, `record`, `system`",
     .feature = &ProductInfo::has_sdcard,
     .dependent = "name path",
     .params = {{"name", "What to delete; a name may include folders (`20140102/clip.mp4`).", nullptr,
                 "clip.mp4",
                 "names, or items of sdcard_list.cgi, separated by colons; in each, what follows the first "
                 "vertical bar is ignored"},
                {"path", "The folder of these entries, as `path` of sdcard_list.cgi.", nullptr, "/",
                 "a path without `../`"}},
     .reply =
         {kCardStatusKey,
          {"num", ApiType::kNumber, "The number of deleted entries."},
          kCardPathKey,
          {"items",
           ApiType::kObjects,
           "The results; in text separated by colons, each `NAME|TYPE|RESULT` with the type `d`, `f` or `n`.",
           {},
           kResult}},
     .codes = {{400, "Also for a folder that does not exist or may not be read."},
               {500,
                "Also if an item of `name` has more than 333 bytes, its name more than 255 or its whole path "
                "more than 319."}},
     .schema = [](std::string_view param, const ProductInfo& /*product*/) -> std::string {
       return param == "path" ? kCardPathSchema : "";
     }});
template struct EndpointOf<SdcardDeleteEndpoint>;

}  // namespace camera
