// The SD card: what a path means and where it leads, that nothing leads outside, and the order of a folder's
// names.
#include "platform/card/card.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <iomanip>
#include <random>

#include "platform/card/beneath.h"
#include "tests/support/temporary_folder.h"

namespace camera::test {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

// The next word of a table; '' is an empty one.
auto word(std::string& text) {
  return std::quoted(text, '\'');
}

TEST(CardPath, MeansAFolderOfTheProduct) {
  std::istringstream rows{
      "'' M1 '' / M1 '' 2014 M1 /2014 /2014/.. M1 /2014/.. /mnt/usb M1 '' /mnt/usb/ M1 '' /mnt/usb/x M1 none "
      "/mnt/usb/M1 M1 / /mnt/usb/M1/a M1 /a xM1y/M1 M1 /y/M1 M1/Musics M1 /Musics Musics/a M1 /Musics/a "
      "xMusics/a M1 /Musics/a a/Musics M1 none a '' none a .. none a M/1 none"};
  for (std::string path, model, folder; rows >> word(path) >> word(model) >> word(folder);)
    EXPECT_EQ(folderFromClient(path, model).value_or("none"), folder) << path << " of " << model;
}

TEST(CardPath, OfAnEntryIsPlainAndBelowItsFolder) {
  std::istringstream rows{
      "'' a.jpg a.jpg /2014/ /a.jpg 2014/a.jpg 2014 ../b b 2014 sub/./x//y/ 2014/sub/x/y 2014 sub/.. none "
      "2014 '' none 2014/sub .. none 2014 ../201 201 '' .. none '' ../M/a none .. a none"};
  for (std::string folder, name, entry; rows >> word(folder) >> word(name) >> word(entry);)
    EXPECT_EQ(entryPath(folder, name).value_or("none"), entry) << folder << " " << name;
  EXPECT_FALSE(entryPath("", "a\0b"s));
}

// A card with the product's folder, and a secret beside it.
struct Card : testing::Test {
  Card() {
    for (const char* name : {"M/2014/sub", "M/it's;rm*", "other"}) fs::create_directories(at(name));
    for (const char* file : {"secret", "other/secret", "M/a.jpg", "M/.b", "M/2014/clip.mp4"})
      card.put(file, std::string(1025, 'x'));
    const std::pair<const char*, std::string> links[] = {
        {"out", at("secret")}, {"up", "../secret"}, {"aside", "../other"}, {"in", "2014"}, {"self", "."}};
    for (const auto& [name, target] : links) fs::create_symlink(target, at("M/"s + name));
    fs::create_symlink("M", at("L"));
    mkfifo(at("M/pipe").c_str(), 0600);
    folder = Descriptor(open(at("M").c_str(), O_PATH | O_DIRECTORY));
  }
  std::string at(const std::string& path) const { return card.path(path); }

  // The path on the card of what the function opens; empty if it opens nothing.
  std::string opened(Descriptor (*open)(int, const char*, int), const std::string& path) const {
    const Descriptor found = open(folder.number(), path.c_str(), O_PATH);
    const std::string link = "/proc/self/fd/" + std::to_string(found.number());
    return found.isOpen() ? fs::relative(fs::read_symlink(link), at("")).string() : "";
  }

  const TemporaryFolder card;
  const std::string mount = card.path() + "/";
  const ProductFolder product{"M", mount};
  Descriptor folder;
};

TEST_F(Card, OpensNothingButWhatLiesBeneathTheProductsFolder) {
  std::istringstream rows{
      ". M a.jpg M/a.jpg 2014//./clip.mp4 M/2014/clip.mp4 2014/ M/2014 2014/sub/../../a.jpg M/a.jpg 2014/.. "
      "M it's;rm* M/it's;rm* pipe M/pipe '' '' none/../a.jpg '' a.jpg/ '' a.jpg/.. '' .. '' / '' /a.jpg '' "
      "2014/../../M/a.jpg '' ../secret '' out '' up '' aside/../M/a.jpg '' in/clip.mp4 '' in '' in/ '' "
      "self/a.jpg '' " +
      at("secret") + " '' " + std::string(300, 'n') + " '' " + std::string(5000, '/') + " ''"};
  for (std::string path, target; rows >> word(path) >> word(target);) {
    EXPECT_EQ(opened(openBeneath, path), target) << path;
    EXPECT_EQ(opened(walkBeneath, path), target) << path << " step by step";
  }
}

TEST_F(Card, FindsReadsAndRemovesInTheProductsFolderAlone) {
  EntryKind kind = EntryKind::kUnknown;
  for (const auto& [path, expected] : {std::pair{"/2014/clip.mp4", EntryKind::kFile},
                                       {"2014", EntryKind::kFolder},
                                       {"pipe", EntryKind::kOther}})
    EXPECT_TRUE(findEntry(product, path, &kind) == 0 && kind == expected) << path;
  for (const std::string& path :
       {"in/clip.mp4"s, "out"s, "../secret"s, "a.jpg\0"s, std::string(5000, '/') + "a.jpg"})
    EXPECT_TRUE(findEntry(product, path, &kind) == ENOENT && !canReadFile(product, path)) << path;
  for (const char* path : {"aside/secret", "../secret", "../other/secret"})
    EXPECT_EQ(removeFile(product, path), ENOENT);
  for (const char* model : {"", ".", "..", "none", "L", "other/../M", "secret"})
    EXPECT_EQ(findEntry({model, mount}, "a.jpg", &kind), ENOENT) << model;
  EXPECT_TRUE(canReadFile(product, "2014/clip.mp4"));
  EXPECT_EQ(removeFile(product, "2014/clip.mp4") + removeFile(product, "a.jpg"), 0);
  EXPECT_TRUE(removeFile(product, "2014") != 0 && fs::exists(at("M/2014")));
  EXPECT_TRUE(fs::exists(at("other/secret")) && fs::exists(at("secret")) && !fs::exists(at("M/a.jpg")));
}

// While a link that leads outside and a folder are exchanged again and again.
TEST_F(Card, RemovesAFolderWhereverAPathLeadsMeanwhile) {
  constexpr int kExchange = 2;  // RENAME_EXCHANGE, which not every libc declares
  const auto exchange = [&] {
    syscall(SYS_renameat2, AT_FDCWD, at("M/2014").c_str(), AT_FDCWD, at("M/aside").c_str(), kExchange);
  };
  const pid_t child = fork();
  if (child == 0) {
    for (;;) exchange();
  }
  int removed = 0;
  for (int i = 0; i < 200 || (removed < 5 && i < 20'000); ++i) {
    fs::create_directories(at("other/it's;-rf/kept"));
    std::error_code ignored;  // one of these is the link, or none exists just then
    for (const char* folder : {"M/2014", "M/aside"}) fs::create_directory(at(folder + "/it's;-rf"s), ignored);
    if (removeFolder(product, "2014/it's;-rf") == 0) ++removed;
    EXPECT_TRUE(fs::exists(at("other/it's;-rf/kept"))) << "after " << removed;
  }
  kill(child, SIGKILL);
  waitpid(child, nullptr, 0);
  EXPECT_GE(removed, 5);
  if (!fs::is_directory(fs::symlink_status(at("M/2014")))) exchange();
  for (const char* name : {"it's;-rf", "-rf", "sub"}) {
    fs::create_directories(at("M/2014/"s + name + "/inside"));
    EXPECT_EQ(removeFolder(product, "2014/"s + name), 0);
    EXPECT_FALSE(fs::exists(at("M/2014/"s + name))) << name;
  }
  EXPECT_EQ(chdir("/"), 0);
}

TEST_F(Card, ListsAFolderWithTheSizesOfFilesAndTheEntryCountsOfFolders) {
  fs::resize_file(at("M/a.jpg"), std::uintmax_t{5} << 30);
  CardFolder opened;
  NameList names;
  ASSERT_EQ(opened.open(product, "") + opened.list(isVisible, &names), 0);
  names.sort(0, names.size());
  fs::remove(at("M/pipe"));
  for (const bool isKnown : {true, false}) {
    std::string listed;
    for (std::size_t i = 0; i < names.size(); ++i) {
      EntryKind kind = isKnown ? names.kind(i) : EntryKind::kUnknown;
      std::int64_t number = -1;
      EXPECT_EQ(opened.examine(names.name(i), &kind, &number), 0);
      listed += names.name(i) + " "s + "dfo"[static_cast<int>(kind)] + std::to_string(number) + " ";
    }
    EXPECT_EQ(listed, "2014 d2 a.jpg f5368709120 aside o0 in o0 it's;rm* d0 out o0 pipe o0 self o0 up o0 ");
  }
  for (const char* path : {"in", "aside", "a.jpg", "none", ".."})
    EXPECT_EQ(CardFolder().open(product, path), ENOENT);
}

TEST(NameList, PutsAnyPageInTheOrderOfBytes) {
  std::mt19937 random{5};
  NameList names;
  std::vector<std::string> expected(3000);
  for (std::string& name : expected) {
    name.resize(1 + random() % 255);
    for (char& c : name) c = static_cast<char>(1 + random() % 255);
    names.add(name, EntryKind::kFile);
  }
  std::sort(expected.begin(), expected.end());
  for (const std::size_t first : {0U, 1500U, 2990U, 7U}) {
    names.sort(first, 10);
    for (std::size_t i = first; i < first + 10; ++i) EXPECT_EQ(names.name(i), expected[i]);
  }
}

}  // namespace
}  // namespace camera::test
