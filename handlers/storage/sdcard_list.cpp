// sdcard_list.cgi: one page of a folder of the SD card.
#include <algorithm>
#include <cerrno>

#include "handlers/storage/card_files.h"
#include "platform/shell.h"

namespace camera {
namespace {

constexpr const char* kTypes[] = {"video", "picture"};
constexpr const char* kItemTypes[] = {"folder", "file"};
constexpr const char* kPageSizes[] = {"5", "10", "15", "20", "50", "100"};

constexpr std::size_t kMostItemBytes = 271;   // of an item with its separator
constexpr std::size_t kMostPathBytes = 575;   // of an entry's whole path
constexpr std::int64_t kBytesPerUnit = 1024;  // of the sizes in a list

struct Wanted {
  std::int32_t page = 1;
  std::int32_t pageSize = 5;
  std::int32_t type = -1;
  std::string_view path;
};

constexpr auto kParams =
    paramRows<Wanted>(integerParam<&Wanted::page>("page", 1, INT32_MAX),
                      choiceParam<&Wanted::pageSize>("pagesize", kPageSizes).storingNumber(),
                      cardPathParam<&Wanted::path>("path", 0), choiceParam<&Wanted::type>("type", kTypes));

}  // namespace

class SdcardListEndpoint final : public CardFilesEndpoint<kParams> {
  int apply() override { return take(&wanted_); }

  int reply() override {
    const auto path = folderOf(wanted_.path);
    CardFolder folder;
    const int error = path ? folder.open(productFolder(), *path) : ENOENT;
    if (error != 0 && (error != ENOENT || !isFile(path))) return refuseFolder(error);
    folderBytes_ = wholePathSize(*path);
    int result = readCard();
    if (result == 200 && isUsable()) result = error != 0 ? refuseFolder(error) : listPage(folder);
    if (result == 200) result = readCard();
    if (result == 200) replyPage();
    return result;
  }

  int refuseFolder(int error) {
    return error == ENOENT ? refuse("path", "no such folder") : fail(500, "the card's folder cannot be read");
  }

  int listPage(const CardFolder& folder) {
    NameList names;
    if (const int error = folder.list(isVisible, &names); error != 0) return refuseFolder(error);
    const auto pageSize = static_cast<std::size_t>(wanted_.pageSize);
    const auto page = static_cast<std::size_t>(wanted_.page);
    const std::size_t pages = (names.size() + pageSize - 1) / pageSize;
    totalFiles_ = static_cast<std::int32_t>(names.size());
    totalPages_ = static_cast<std::int32_t>(pages);
    if (page > pages) return 200;
    const std::size_t first = pageSize * (page - 1);
    const std::size_t count = std::min(pageSize, names.size() - first);
    count_ = static_cast<std::int32_t>(count);
    names.sort(first, count);
    return listEntries(folder, names, first, count);
  }

  // Lists folders before files.
  int listEntries(const CardFolder& folder, const NameList& names, std::size_t first, std::size_t count) {
    std::string files;
    for (std::string* items : {&items_, &files}) items->reserve(count * kMostItemBytes);
    for (std::size_t i = first; i < first + count; ++i) {
      const std::string_view name = names.name(i);
      EntryKind kind = names.kind(i);
      std::int64_t number = 0;
      if (folder.examine(names.name(i), &kind, &number) != 0) return fail(500, "out of memory");
      if (kind == EntryKind::kOther) continue;
      if (folderBytes_ + 1 + name.size() > kMostPathBytes) return fail(500, "path: too long");
      if (isUnlistable(name)) continue;
      if (kind == EntryKind::kFolder) addEntry(&items_, name, true, number);
      if (kind == EntryKind::kFile)
        addEntry(&files, name, false, (number + kBytesPerUnit - 1) / kBytesPerUnit);
    }
    if (!files.empty()) addItem(&items_, files);
    return 200;
  }

  void addEntry(std::string* items, std::string_view name, bool isFolder, std::int64_t number) const {
    const Decimal shown(std::min<std::int64_t>(number, INT32_MAX));
    if (!isJson())
      return addItem(items, joined({shownName(name), isFolder ? "|d|n|" : "|f|n|", shown.text()}));
    JsonObject entry;
    entry.add("name", name);
    entry.add("type", kItemTypes[isFolder ? 0 : 1]);
    entry.addValue(isFolder ? "entries" : "kib", shown.text());
    addItem(items, entry.text());
  }

  void replyPage() {
    pair("sd_status", cardWord());
    if (wanted_.type >= 0) pair("type", kTypes[wanted_.type]);
    replyPath("path", wanted_.path);
    pair("page", wanted_.page);
    pair("pagesize", wanted_.pageSize);
    pair("total_file", totalFiles_);
    pair("total_page", totalPages_);
    pair("num", count_);
    replyItems(items_);
  }

  Wanted wanted_;
  std::size_t folderBytes_ = 0;  // of the folder's whole path
  std::int32_t totalFiles_ = 0;
  std::int32_t totalPages_ = 0;
  std::int32_t count_ = 0;
  std::string items_;
};

constexpr ApiKey kItem[] = {{"name", ApiType::kText, "The entry's name."},
                            {"type", ApiType::kText, "What it is.", kItemTypes},
                            {.name = "entries",
                             .type = ApiType::kNumber,
                             .meaning = "Of a folder: the number of its entries.",
                             .isOptional = true},
                            {.name = "kib",
                             .type = ApiType::kNumber,
                             .meaning = "Of a file: its size in KiB, rounded up.",
                             .isOptional = true}};
template <>
const Api kApi<SdcardListEndpoint> =
    describes<kParams>({.subsystem = Subsystem::kCard,
                        .summary = "One page of a folder of the SD card.",
                        .records = "none; reads `sd`, `record`, `system`",
                        .feature = &ProductInfo::has_sdcard,
                        .dependent = "path",
                        .params = {{"page", "The page; 1 if missing."},
                                   {"pagesize", "The number of entries on a page; 5 if missing."},
                                   {"path",
                                    "The folder, relative to the product's folder or as a whole path "
                                    "(`/mnt/usb/MODEL/...`); if missing or `/`, the product's folder.",
                                    nullptr, "/", "a path without `../`"},
                                   {"type", "Has no effect; returned in the reply."}},
                        .reply = {kCardStatusKey,
                                  {.name = "type", .isOptional = true},
                                  kCardPathKey,
                                  {"page"},
                                  {"pagesize"},
                                  {"total_file", ApiType::kNumber, "The number of entries in the folder."},
                                  {"total_page", ApiType::kNumber, "The number of pages."},
                                  {"num", ApiType::kNumber, "The number of entries on this page."},
                                  {"items",
                                   ApiType::kObjects,
                                   "The entries of this page; in text separated by colons: "
                                   "`NAME|d|n|ENTRIES` for a folder, `NAME|f|n|KIB` for a file.",
                                   {},
                                   kItem}},
                        .codes = {{400, "Also for a folder that does not exist or may not be read."},
                                  {500, "Also for an entry whose whole path has more than 575 bytes."}},
                        .schema = [](std::string_view param, const ProductInfo& /*product*/) -> std::string {
                          return param == "path" ? kCardPathSchema : "";
                        }});
template struct EndpointOf<SdcardListEndpoint>;

}  // namespace camera
