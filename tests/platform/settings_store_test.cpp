// The settings store: its file, its failures, its crashes, and what two processes do to one record.
#include "platform/store/settings_store.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <functional>
#include <sstream>

#include "platform/store/record_fields.h"
#include "platform/store/records/httpsvr.h"
#include "platform/text.h"
#include "tests/platform/memory_disk.h"
#include "tests/platform/sample_record.h"
#include "tests/support/temporary_folder.h"

namespace camera::test {
namespace {

using enum StoreResult;
using Change = std::function<void(Sample&)>;

// One process: its own memory of what it read.
struct Process {
  explicit Process(StoreFiles& files) : store(files, kSampleRecords) {}

  StoreResult read(const RecordInfo& info = kSample) { return store.read(info, &sample); }
  StoreResult write(const RecordInfo& info = kSample) { return store.write(info, &sample); }
  StoreResult put(int number, const RecordInfo& info = kSample) {
    if (const StoreResult result = read(info); result != kDone) return result;
    sample.number = number;
    return write(info);
  }

  Sample sample{};
  SettingsStore store;
};

// What a new process reads; the number is 9999 if it cannot be read.
Sample stored(StoreFiles& files, const RecordInfo& info = kSample) {
  Process process(files);
  process.sample.number = 9999;
  process.read(info);
  return process.sample;
}

bool same(const Sample& one, const Sample& other) {
  return std::memcmp(&one, &other, sizeof one) == 0;
}

struct Store : testing::Test {
  MemoryDisk disk;
};

// A process that reads a record that was never stored must be able to write it back.
TEST(EveryRecord, HasDefaultsWithinItsBounds) {
  for (const RecordInfo* info : kRecords) EXPECT_EQ(firstInvalid(*info, info->defaults), "") << info->name;
}

// A narrower bound would make what cameras have stored unreadable; a wider one would let in what no part
// expects.
TEST(EveryRecord, AcceptsWhatCamerasHaveStored) {
  std::ostringstream bounds;
  for (const RecordInfo* info : kRecords) {
    bounds << info->name;
    for (const Field& field : info->fields) {
      if (field.kind == FieldKind::kReserved) continue;
      const std::int64_t most = field.kind == FieldKind::kText   ? field.width - 1
                                : field.kind == FieldKind::kByte ? std::numeric_limits<std::uint8_t>::max()
                                                                 : std::numeric_limits<std::int32_t>::max();
      const bool isAny = field.max == most && field.min <= 0;
      if (!isAny) bounds << ' ' << field.name << ' ' << field.min << ".." << field.max;
    }
    bounds << '\n';
  }
  std::ifstream file{CAMERA_SOURCE_DIR "/tests/platform/bounds.txt"};
  const std::string expected{std::istreambuf_iterator<char>{file}, {}};
  EXPECT_EQ(bounds.str(), expected);
}

TEST(StoreFile, HasTheseBytesThisModeAndNothingBesideIt) {
  const TemporaryFolder folder;
  PosixStoreFiles files(folder.path());
  const HttpServerSettings record{0, 1, 0, 0, 8080, 443};
  folder.put(".new", "left by a killed process");
  ASSERT_EQ(SettingsStore(files, kRecords).write(httpsvrRecord, &record), kDone);
  const char expected[] = "CSET\1\0\1\0\14\0\0\0\xD5\xE2\xFC\xCF\0\1\0\0\x90\x1F\0\0\xBB\1\0";
  EXPECT_EQ(folder.content("httpsvr"), std::string(expected, sizeof expected));
  EXPECT_EQ(std::filesystem::status(folder.path("httpsvr")).permissions(), std::filesystem::perms(0600));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

TEST_F(Store, AStepThatFailsFailsTheWriteAndKeepsTheOldRecord) {
  const std::pair<const char*, StoreResult> steps[] = {
      {"lock", kFailed}, {"remove", kFailed}, {"read", kDone},   {"create", kDone},
      {"write", kDone},  {"sync", kDone},     {"rename", kDone}, {"syncFolder", kFailed}};
  for (const auto& [step, resetResult] : steps) {
    disk = MemoryDisk();
    ASSERT_EQ(Process(disk).put(1), kDone);
    Process process(disk);
    process.read();
    process.sample.number = 2;
    disk.failing = step;
    EXPECT_EQ(process.write(), kFailed) << step;
    EXPECT_NE(process.store.fault().find("disk/"), std::string::npos) << step << process.store.fault();
    EXPECT_EQ(process.store.error(), EIO) << step;
    disk.failing.clear();
    EXPECT_FALSE(disk.has(".new")) << step;
    EXPECT_EQ(stored(disk).number, std::string_view(step) == "syncFolder" ? 2 : 1) << step;
    EXPECT_EQ(process.write(), kDone) << step;
    disk.restartAfter(Crash::kPowerLost);
    EXPECT_EQ(stored(disk).number, 2) << step << ": the write after it was not durable";
    disk.failing = step;
    EXPECT_EQ(process.store.reset(kSample), resetResult) << step;
  }
}

// One record is replaced, one reset, one stays.
TEST_F(Store, ReplacesAllRecordsOrNoneWhereverItDies) {
  Sample wanted = kSampleDefaults;
  wanted.number = 2;
  const Replacement both[] = {{&kSample, &wanted}, {&kIndivisible, nullptr}};
  const int reset = kSampleDefaults.number;
  for (const int error : {0, EINVAL}) {
    for (const Crash crash : {Crash::kKilled, Crash::kPowerLost, Crash::kDataLost}) {
      bool survived = false;
      for (int step = 0; !survived; ++step) {
        SCOPED_TRACE(testing::Message() << "crash " << static_cast<int>(crash) << " at step " << step);
        disk = MemoryDisk();
        for (const RecordInfo* info : kSampleRecords) ASSERT_EQ(Process(disk).put(1, *info), kDone);
        disk.replacementError = error;
        disk.stepsToLive = step;
        const StoreResult result = Process(disk).store.replaceAll(both);
        survived = !disk.dead();
        ASSERT_LT(step, 20);
        disk.restartAfter(crash);
        const int first = stored(disk).number;
        const int second = stored(disk, kIndivisible).number;
        EXPECT_TRUE(first == 2 || (first == 1 && result != kDone)) << first;
        if (error == 0) {
          EXPECT_EQ(second, first == 2 ? reset : 1);
        } else {
          EXPECT_TRUE(second == reset || (second == 1 && result != kDone)) << second;
        }
        EXPECT_EQ(stored(disk, kDependent).number, 1);
        EXPECT_EQ(Process(disk).put(3), kDone);
        EXPECT_FALSE(disk.has(".new"));
      }
    }
  }
  wanted.number = 1001;
  EXPECT_EQ(Process(disk).store.replaceAll(both), kRefused);
}

TEST_F(Store, RefusesToReadOrReplaceAFileThatIsNotWhatItWrote) {
  ASSERT_EQ(Process(disk).put(1), kDone);
  const std::string good = disk.content("sample");
  std::vector<std::string> files = {good + '\0'};
  for (std::size_t at = 0; at < good.size(); ++at) {
    files.push_back(good.substr(0, at));
    for (int bit = 1; bit < 256; bit *= 2) files.emplace_back(good)[at] = static_cast<char>(good[at] ^ bit);
  }
  for (const std::string& file : files) {
    disk.content("sample") = file;
    EXPECT_EQ(stored(disk).number, 9999) << testing::PrintToString(file);
    EXPECT_EQ(Process(disk).store.write(kSample, &kSampleDefaults), kFailed) << testing::PrintToString(file);
    EXPECT_EQ(disk.content("sample"), file);
  }
  EXPECT_EQ(Process(disk).store.reset(kSample), kDone);
  EXPECT_EQ(stored(disk).number, kSampleDefaults.number);
}

// Another description of the same file, as an older or newer program would have it.
RecordInfo variant(std::uint16_t version, std::span<const Field> fields) {
  const std::size_t size = fields.back().offset + fields.back().width * fields.back().count;
  return {"sample", version, static_cast<std::uint16_t>(size), fields, &kSampleDefaults, false, 0};
}

constexpr Field kUnbounded[] = {describe::field<std::int32_t>("number", 0, 0),
                                {"rest", FieldKind::kReserved, false, 4, sizeof(Sample) - 4, 1, 0, 0}};
constexpr std::size_t kFieldsOf[] = {0, 4, 5, 6};  // of a version's record

RecordInfo inVersion(std::uint16_t version) {
  return variant(version, std::span(SampleDescription::kFields).first(kFieldsOf[version]));
}

// stored/1 to 3 are what programs of these versions stored. All hold number 1000, text "stored" and 9 in
// every byte and name that they have.
TEST_F(Store, IsReadByProgramsThatAreTwoVersionsOlderOrNewer) {
  Sample written{.number = 1000,
                 .flag = 0,
                 .reserved = {9, 9, 9},
                 .text = "stored",
                 .names = {"9", "9"},
                 .levels = {9, 9, 9, 9}};
  for (std::uint16_t writer = 1; writer <= 3; ++writer) {
    const std::string file = readFile(CAMERA_SOURCE_DIR "/tests/platform/stored/" + std::to_string(writer));
    disk = MemoryDisk();
    ASSERT_EQ(SettingsStore(disk, {}).write(inVersion(writer), &written), kDone);
    EXPECT_EQ(disk.content("sample"), file) << writer;
    for (std::uint16_t reader = 1; reader <= 3; ++reader) {
      const RecordInfo known = inVersion(reader);
      const std::size_t common = std::min(inVersion(writer).size, known.size);
      Sample expected = kSampleDefaults;
      std::memcpy(&expected, &written, common);
      Sample read = kSampleDefaults;
      disk.content("sample") = file;
      EXPECT_EQ(SettingsStore(disk, {}).read(known, &read), kDone) << writer << " read by " << reader;
      EXPECT_TRUE(same(read, expected)) << writer << " read by " << reader;
      read.number = 5;
      EXPECT_EQ(SettingsStore(disk, {}).write(known, &read), kDone);
      EXPECT_EQ(disk.content("sample").size(), 16U + known.size) << writer << " changed by " << reader;
    }
  }
}

TEST_F(Store, TakesTheDefaultForAValueThatOnlyANewerVersionKnows) {
  Sample written{.number = 1001, .flag = 0, .reserved = {}, .text = "", .names = {}, .levels = {}};
  ASSERT_EQ(SettingsStore(disk, {}).write(variant(3, kUnbounded), &written), kDone);
  Sample read = written;
  EXPECT_EQ(SettingsStore(disk, {}).read(inVersion(2), &read), kDone);
  std::memcpy(&written.text, &kSampleDefaults.text, sizeof written.text);
  written.number = kSampleDefaults.number;
  EXPECT_EQ(std::memcmp(&read, &written, inVersion(2).size), 0);
}

// A record has grown with each version.
TEST_F(Store, RefusesARecordWhoseSizeIsNotThatOfItsVersion) {
  const std::span<const Field> fields = SampleDescription::kFields;
  Sample written = kSampleDefaults;
  written.number = 5;
  for (const RecordInfo& writer : {variant(2, fields.first<5>()), variant(1, fields), variant(3, fields),
                                   variant(3, fields.first<5>())}) {
    disk = MemoryDisk();
    ASSERT_EQ(SettingsStore(disk, {}).write(writer, &written), kDone);
    EXPECT_EQ(Process(disk).read(), kFailed) << "version " << writer.version << ", size " << writer.size;
  }
}

TEST_F(Store, RefusesWhatIsOutsideItsBoundsInAWriteAndInAFile) {
  const std::tuple<const char*, bool, Change> rows[] = {
      {"number 1000", true, [](Sample& s) { s.number = 1000; }},
      {"number 1001", false, [](Sample& s) { s.number = 1001; }},
      {"number -100", true, [](Sample& s) { s.number = -100; }},
      {"number -101", false, [](Sample& s) { s.number = -101; }},
      {"text of 7", true, [](Sample& s) { std::memcpy(s.text, "1234567", 8); }},
      {"text without an end", false, [](Sample& s) { std::memcpy(s.text, "12345678", 8); }},
      {"empty text", false, [](Sample& s) { s.text[0] = '\0'; }},
      {"last name without an end", false, [](Sample& s) { std::memcpy(s.names[1], "123456", 6); }},
      {"any bytes", true, [](Sample& s) { s.reserved[0] = s.levels[3] = 255; }}};
  for (const auto& [what, valid, change] : rows) {
    disk = MemoryDisk();
    Sample sample = kSampleDefaults;
    change(sample);
    EXPECT_EQ(Process(disk).store.write(kSample, &sample), valid ? kDone : kRefused) << what;
    EXPECT_EQ(disk.has("sample"), valid) << what;
    ASSERT_EQ(SettingsStore(disk, {}).write(variant(2, kUnbounded), &sample), kDone);
    EXPECT_EQ(Process(disk).read(), valid ? kDone : kFailed) << what;
  }
}

TEST_F(Store, WhatFollowsATextIsNeitherAChangeNorStored) {
  ASSERT_EQ(Process(disk).put(1), kDone);
  Process process(disk);
  process.read();
  std::memcpy(process.sample.text, "abc\0def", 8);
  disk.failing = "create";
  EXPECT_EQ(process.write(), kDone) << "nothing differs, so nothing is created";
  disk.failing.clear();
  EXPECT_EQ(Process(disk).store.write(kSample, &process.sample), kDone);
  process.sample.flag = 0;
  EXPECT_EQ(process.write(), kDone);
  EXPECT_EQ(std::memcmp(stored(disk).text, "abc\0\0\0\0", 8), 0);
}

// Then the first process writes its copy again, which does not have the second's change.
TEST_F(Store, MergesWhatTwoProcessesChanged) {
  const std::tuple<const char*, Change, Change> rows[] = {
      {"two fields", [](Sample& s) { s.number = 1; }, [](Sample& s) { s.flag = 0; }},
      {"one field: the later", [](Sample& s) { s.number = 1; }, [](Sample& s) { s.number = 2; }},
      {"bytes", [](Sample& s) { s.levels[0] = 9; }, [](Sample& s) { s.levels[3] = 9; }},
      {"texts", [](Sample& s) { s.names[0][0] = 'O'; }, [](Sample& s) { s.names[1][0] = 'T'; }},
      {"reserved and text", [](Sample& s) { s.reserved[1] = 7; }, [](Sample& s) { s.text[0] = 'z'; }},
      {"nothing and a field", [](Sample&) {}, [](Sample& s) { s.flag = 0; }}};
  for (const auto& [what, changeFirst, changeSecond] : rows) {
    disk = MemoryDisk();
    Process first(disk);
    Process second(disk);
    first.read();
    second.read();
    changeFirst(first.sample);
    changeSecond(second.sample);
    EXPECT_EQ(first.write(), kDone) << what;
    EXPECT_EQ(second.write(), kDone) << what;
    Sample expected = kSampleDefaults;
    changeFirst(expected);
    changeSecond(expected);
    for (std::uint8_t level = 7; level < 9; ++level) {
      first.sample.levels[1] = expected.levels[1] = level;
      EXPECT_EQ(first.write(), kDone) << what;
    }
    EXPECT_TRUE(same(stored(disk), expected)) << what;
  }
}

// A process reads one record (or none). Another process, or itself, changes one. Then the first writes one.
TEST_F(Store, RefusesADecisionOnWhatAnotherProcessChanged) {
  const std::tuple<const RecordInfo*, const RecordInfo*, const RecordInfo*, StoreResult> rows[] = {
      {&kIndivisible, &kIndivisible, &kIndivisible, kRefused},
      {&kIndivisible, &kSample, &kIndivisible, kDone},
      {nullptr, &kIndivisible, &kIndivisible, kDone},
      {&kSample, &kSample, &kDependent, kRefused},
      {&kSample, &kIndivisible, &kDependent, kDone},
      {nullptr, &kSample, &kDependent, kDone},
      {&kDependent, &kDependent, &kSample, kDone}};
  for (const auto& [read, changed, written, result] : rows) {
    for (const bool byItself : {false, true}) {
      SCOPED_TRACE(std::string(read == nullptr ? "nothing" : read->name) + " read, " + changed->name +
                   (byItself ? " changed by itself, " : " changed, ") + written->name + " written");
      disk = MemoryDisk();
      Process process(disk);
      process.sample = kSampleDefaults;
      if (read != nullptr) process.read(*read);
      Process other(disk);
      ASSERT_EQ((byItself ? process : other).put(77, *changed), kDone);
      process.sample.flag = 0;
      const StoreResult expected = byItself ? kDone : result;
      EXPECT_EQ(process.write(*written), expected);
      EXPECT_EQ(stored(disk, *written).flag, expected == kDone ? 0 : 1);
      EXPECT_EQ(process.store.overtaken(), expected == kRefused);
      if (expected == kDone) continue;
      process.sample.flag = 2;
      EXPECT_EQ(process.write(*written), kRefused);
      EXPECT_FALSE(process.store.overtaken()) << "it is invalid as well";
      process.sample.flag = 0;
      process.read(*read);
      EXPECT_EQ(process.write(*written), kDone) << "and was read again";
    }
  }
}

// Runs the body in a child process; its exit status is 0 when the body returns true.
pid_t fork(const std::function<bool()>& body) {
  const pid_t child = ::fork();
  if (child == 0) _exit(body() ? 0 : 1);
  return child;
}

int statusOf(pid_t child) {
  int status = -1;
  return waitpid(child, &status, 0) == child ? status : -1;
}

// A request takes the store's lock up to three times.
TEST(StoreProcesses, FailInsteadOfWaitingForEver) {
  const TemporaryFolder folder;
  for (const RecordInfo* info : {&kSample, &kIndivisible})
    ASSERT_EQ(mkfifo(folder.path(info->name).c_str(), 0600), 0);
  const int writer = open(folder.path("whole").c_str(), O_RDWR | O_CLOEXEC);
  std::filesystem::create_symlink("/dev/zero", folder.path("linked"));
  alarm(20);  // ends the test if it hangs
  PosixStoreFiles files(folder.path(), std::chrono::seconds(1));
  for (const RecordInfo* info : kSampleRecords) {
    EXPECT_EQ(Process(files).read(*info), kFailed) << info->name;
    EXPECT_EQ(Process(files).store.write(*info, &kSampleDefaults), kFailed) << info->name;
    std::filesystem::remove(folder.path(info->name));
  }
  close(writer);

  PosixStoreFiles others(folder.path());
  ASSERT_EQ(others.lock(), 0);
  Process process(files);
  const auto start = std::chrono::steady_clock::now();
  process.store.hold();
  EXPECT_EQ(process.put(1), kFailed);
  EXPECT_EQ(process.store.error(), EBUSY);
  EXPECT_EQ(process.store.reset(kSample), kFailed);
  const auto waited = std::chrono::steady_clock::now() - start;
  EXPECT_TRUE(waited >= std::chrono::seconds(1) && waited < std::chrono::seconds(2));
  others.unlock();
  EXPECT_EQ(process.put(1), kDone);
  alarm(0);
}

// A counter in several fields, so that a mix of two records would show.
void setCount(int count, Sample* sample) {
  sample->number = count % 1000;
  std::memcpy(sample->levels, &count, sizeof sample->levels);
  setText(sample->text, std::to_string(count));
}

// The count; -1 if the fields are not of one count.
int countOf(const Sample& sample) {
  int count = 0;
  std::memcpy(&count, sample.levels, sizeof sample.levels);
  Sample expected = sample;
  setCount(count, &expected);
  return same(expected, sample) ? count : -1;
}

// Like a request: decides again on what is stored, and holds the store if it was overtaken.
bool countUp(Process& process) {
  StoreResult result = kRefused;
  for (int attempt = 0; result == kRefused && attempt < 2; ++attempt) {
    if (attempt > 0) process.store.hold();
    if (process.read(kIndivisible) != kDone) break;
    setCount(countOf(process.sample) + 1, &process.sample);
    result = process.write(kIndivisible);
  }
  process.store.release();
  return result == kDone;
}

// ./test --long makes ten thousand changes. Meanwhile the folder is replaced again and again.
TEST(StoreProcesses, SixteenCountUpAndSixteenReadNoMix) {
  const int changes = std::getenv("CAMERA_TEST_LONG") == nullptr ? 1'000 : 10'000;
  constexpr int kProcesses = 16;
  const TemporaryFolder parent;
  const std::string folder = parent.path("settings");
  std::filesystem::create_directory(folder);
  ReplaceableStoreFiles files(folder);
  Process first(files);
  setCount(0, &first.sample);
  ASSERT_EQ(first.store.write(kIndivisible, &first.sample), kDone);
  std::vector<pid_t> writers;
  std::vector<pid_t> others;
  for (int i = 0; i < kProcesses; ++i) {
    writers.push_back(fork([&] {
      PosixStoreFiles own(folder);
      Process process(own);
      for (int n = i; n < changes; n += kProcesses) {
        if (!countUp(process)) return false;
      }
      return true;
    }));
    others.push_back(fork([&] {
      PosixStoreFiles own(folder);
      for (int last = 0, count = 0;; last = count) {
        count = countOf(stored(own, kIndivisible));
        if (count < last) return false;
      }
    }));
  }
  others.push_back(fork([&] {
    ReplaceableStoreFiles own(folder);
    while (Process(own).store.replaceAll({}) == kDone) usleep(1000);
    return false;
  }));
  for (const pid_t writer : writers) EXPECT_EQ(statusOf(writer), 0);
  for (const pid_t other : others) kill(other, SIGKILL);
  for (const pid_t other : others) EXPECT_EQ(statusOf(other), SIGKILL) << "it saw a mix, or failed";
  EXPECT_EQ(countOf(stored(files, kIndivisible)), changes);
}

// Without the lock the child would write during the pause, and the holder's write would be refused.
TEST(StoreProcesses, WaitForTheHolderOfTheLockUnlessItWasKilled) {
  const TemporaryFolder folder;
  PosixStoreFiles files(folder.path());
  Process holder(files);
  holder.store.hold();
  const pid_t child = fork([&] {
    files.unlock();  // closes the child's copy of the holder's descriptor
    PosixStoreFiles own(folder.path());
    Process killed(own);
    killed.store.hold();
    return killed.put(1, kIndivisible) == kDone && kill(getpid(), SIGKILL) != 0;
  });
  for (int number = 2; number < 4; ++number) {
    EXPECT_EQ(holder.read(kIndivisible), kDone);
    usleep(50'000);
    holder.sample.number = number;
    EXPECT_EQ(holder.write(kIndivisible), kDone);
  }
  holder.store.release();
  EXPECT_EQ(statusOf(child), SIGKILL);
  EXPECT_EQ(stored(files, kIndivisible).number, 1);
  EXPECT_EQ(holder.put(4, kIndivisible), kDone) << "the killed process holds the store no more";
}

// The child waits for the lock of the folder that the holder replaces. If it took that lock for the store's,
// it would write during the pause, and the holder's write would be refused.
TEST(StoreProcesses, TakeTheLockOfTheFolderThatReplacedTheOneTheyWaitedFor) {
  const TemporaryFolder parent;
  const std::string folder = parent.path("settings");
  std::filesystem::create_directory(folder);
  std::filesystem::permissions(folder, std::filesystem::perms(0750));
  ReplaceableStoreFiles files(folder);
  Process holder(files);
  ASSERT_EQ(holder.put(1), kDone);
  parent.put("settings/unknown", "of a newer version");
  std::filesystem::create_directory(folder + ".new");
  parent.put("settings.new/sample", "left by a killed process");
  Sample wanted = kSampleDefaults;
  wanted.number = 2;
  const Replacement replacement{&kIndivisible, &wanted};
  holder.store.hold();
  const pid_t child = fork([&] {
    files.unlock();
    ReplaceableStoreFiles own(folder);
    Process waiting(own);
    waiting.store.hold();
    return waiting.put(4, kIndivisible) == kDone;
  });
  usleep(100'000);  // so that it waits
  EXPECT_EQ(holder.store.replaceAll({&replacement, 1}), kDone);
  holder.read(kIndivisible);
  EXPECT_EQ(holder.sample.number, 2);
  usleep(100'000);
  ++holder.sample.number;
  EXPECT_EQ(holder.write(kIndivisible), kDone);
  holder.store.release();
  EXPECT_EQ(statusOf(child), 0);
  EXPECT_EQ(stored(files).number, 1);
  EXPECT_EQ(stored(files, kIndivisible).number, 4);
  EXPECT_EQ(parent.content("settings/unknown"), "of a newer version");
  EXPECT_EQ(std::filesystem::status(folder).permissions(), std::filesystem::perms(0750));
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(parent.path()), {}), 1);
}

}  // namespace
}  // namespace camera::test
