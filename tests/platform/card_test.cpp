// The SD card: what a path means and where it leads, that nothing leads outside, and the order of a folder's
// names.
#include "platform/card/card.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <random>

#include "platform/card/beneath.h"
#include "tests/support/temporary_folder.h"

namespace camera::test {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

// Rows of words, of which "-" is the empty one.
template <std::size_t kColumns>
std::vector<std::array<std::string, kColumns>> rows(const std::string& text) {
  std::vector<std::array<std::string, kColumns>> all(1);
  std::istringstream words{text};
  for (std::size_t i = 0; words >> all.back()[i]; i = (i + 1) % kColumns) {
    if (all.back()[i] == "-") all.back()[i].clear();
    if (i + 1 == kColumns) all.emplace_back();
  }
  all.pop_back();
  return all;
}

TEST(CardPath, MeansAFolderOfTheProduct) {
  for (const auto& [path, model, folder] :
       rows<3>("- M1 - / M1 - 2014 M1 /2014 /2014/ M1 /2014/ .. M1 /.. /mnt/usb M1 - /mnt/usb/ M1 - "
               "/mnt/usb/x M1 none "
               "/mnt/usb/M1 M1 / /mnt/usb/M1/a M1 /a xM1y/M1 M1 /y/M1 Musics/a M1 /Musics/a /Musics/a M1 "
               "/Musics/a "
               "a/Musics M1 none M1/Musics M1 /Musics a - none a .. none a M/1 none"))
    EXPECT_EQ(folderFromClient(path, model).value_or("none"), folder) << path << " of " << model;
}

TEST(CardPath, OfAnEntryIsPlainAndBelowItsFolder) {
  for (const auto& [folder, name, entry] : rows<3>(
           "- a.jpg a.jpg /2014/ /a.jpg 2014/a.jpg 2014 ../b b 2014 sub/./x//y/ 2014/sub/x/y 2014 sub/.. "
           "none "
           "2014 - none 2014 / none 2014/sub .. none 2014 .. none 2014 ../201 201 - .. none - ../M/a none "
           "2014 ../../M/a none .. a none"))
    EXPECT_EQ(entryPath(folder, name).value_or("none"), entry) << folder << " " << name;
  EXPECT_FALSE(entryPath("", "a\0b"s));
}

// A card with the product's folder, and a secret beside it.
struct Card : testing::Test {
  Card() {
    for (const char* folder : {"M/2014/sub", "M/it's;rm*", "other"}) fs::create_directories(at(folder));
    for (const char* file : {"secret", "other/secret", "M/a.jpg", "M/.b", "M/2014/clip.mp4"})
      card.put(file, std::string(1025, 'x'));
    const std::pair<const char*, std::string> links[] = {
        {"out", at("secret")}, {"up", "../secret"}, {"aside", "../other"}, {"in", "2014"}, {"self", "."}};
    for (const auto& [name, target] : links) fs::create_symlink(target, at("M/"s + name));
    fs::create_symlink("M", at("L"));
    mkfifo(at("M/pipe").c_str(), 0600);
  }
  std::string at(const std::string& path) const { return card.path(path); }

  const TemporaryFolder card;
  const std::string mount = card.path() + "/";
  const ProductFolder product{"M", mount};
};

// What is opened, as a path of the card; empty when nothing is.
std::string opened(const std::string& root, int (*open)(int, const char*, int), const std::string& path) {
  const int folder = ::open((root + "/M").c_str(), O_PATH | O_DIRECTORY);
  const int found = open(folder, path.c_str(), O_PATH);
  std::error_code none;
  const fs::path target = found < 0 ? "" : fs::read_symlink("/proc/self/fd/" + std::to_string(found), none);
  close(folder);
  if (found < 0) return "";
  close(found);
  return fs::relative(target, root).string();
}

TEST_F(Card, OpensNothingButWhatLiesBeneathTheProductsFolder) {
  const std::string table =
      ". M a.jpg M/a.jpg 2014//./clip.mp4 M/2014/clip.mp4 2014/ M/2014 2014/sub/../../a.jpg M/a.jpg 2014/.. "
      "M "
      "it's;rm* M/it's;rm* pipe M/pipe - - none - none/../a.jpg - a.jpg/ - a.jpg/.. - .. - ../M - "
      "2014/../../M/a.jpg - / - /a.jpg - ../secret - 2014/../../secret - out - up - aside/secret - "
      "aside/../M/a.jpg - in/clip.mp4 - in - in/ - self/a.jpg - " +
      at("M/a.jpg") + " - " + at("secret") + " - " + std::string(300, 'n') + " - " + std::string(5000, '/') +
      " -";
  for (const auto& [path, found] : rows<2>(table)) {
    EXPECT_EQ(opened(card.path(), openBeneath, path), found) << path;
    EXPECT_EQ(opened(card.path(), walkBeneath, path), found) << path << " step by step";
  }
}

TEST_F(Card, FindsReadsAndRemovesInTheProductsFolderAlone) {
  EntryKind kind = EntryKind::kUnknown;
  for (const auto& [path, expected] : rows<2>("/2014/clip.mp4 f 2014 d pipe o")) {
    EXPECT_EQ(findEntry(product, path, &kind), 0) << path;
    EXPECT_EQ("dfo"[static_cast<int>(kind)], expected[0]) << path;
  }
  for (const std::string& path : {"in/clip.mp4"s, "out"s, "../secret"s, "a.jpg\0"s, "none"s}) {
    EXPECT_EQ(findEntry(product, path, &kind), ENOENT) << path;
    EXPECT_FALSE(canReadFile(product, path)) << path;
  }
  for (const char* path : {"aside/secret", "../secret", "../other/secret"})
    EXPECT_EQ(removeFile(product, path), ENOENT);
  for (const char* model : {"", ".", "..", "none", "L", "other/../M", "secret"})
    EXPECT_EQ(findEntry({model, mount}, "a.jpg", &kind), ENOENT) << model;
  EXPECT_TRUE(canReadFile(product, "2014/clip.mp4"));
  EXPECT_EQ(removeFile(product, "2014/clip.mp4") + removeFile(product, "a.jpg"), 0);
  EXPECT_TRUE(removeFile(product, "2014") != 0 && fs::exists(at("M/2014")));
  EXPECT_TRUE(fs::exists(at("other/secret")) && fs::exists(at("secret")) && !fs::exists(at("M/a.jpg")));
}

TEST_F(Card, ListsAFolderAndCountsItsFolders) {
  fs::resize_file(at("M/a.jpg"), std::uintmax_t{5} << 30);
  CardFolder folder;
  ASSERT_EQ(folder.open(product, ""), 0);
  NameList names;
  ASSERT_EQ(folder.list(isVisible, &names), 0);
  names.sort(0, names.size());
  std::string listed;
  fs::remove(at("M/pipe"));
  for (std::size_t i = 0; i < names.size(); ++i) {
    for (EntryKind kind : {names.kind(i), EntryKind::kUnknown}) {
      std::int64_t number = -1;
      listed += kind == EntryKind::kUnknown ? ","s : names.name(i) + " "s;
      EXPECT_EQ(folder.examine(names.name(i), &kind, &number), 0);
      listed += "dfo"[static_cast<int>(kind)] + std::to_string(number);
    }
    listed += " ";
  }
  EXPECT_EQ(
      listed,
      "2014 d2,d2 a.jpg f5368709120,f5368709120 aside o0,o0 in o0,o0 it's;rm* d0,d0 out o0,o0 pipe o0,o0 "
      "self o0,o0 up o0,o0 ");
  for (const char* path : {"in", "aside", "a.jpg", "none", ".."})
    EXPECT_EQ(CardFolder().open(product, path), ENOENT);
}

TEST(NameList, PutsAnyPageInTheOrderOfBytes) {
  std::mt19937 random{5};
  NameList names;
  std::vector<std::string> expected;
  for (int i = 0; i < 3000; ++i) {
    std::string name(1 + random() % 255, '\0');
    for (char& c : name) c = static_cast<char>(1 + random() % 255);
    names.add(name, EntryKind::kFile);
    expected.push_back(name);
  }
  std::sort(expected.begin(), expected.end());
  for (const std::size_t first : {std::size_t{0}, std::size_t{1500}, std::size_t{2990}, std::size_t{7}}) {
    names.sort(first, 10);
    for (std::size_t i = first; i < first + 10; ++i) EXPECT_EQ(names.name(i), expected[i]);
  }
}

}  // namespace
}  // namespace camera::test
