// The settings store: its file, its failures, its crashes, and what two processes do to one record.
#include "platform/settings_store.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstring>
#include <functional>

#include "platform/records/httpsvr.h"
#include "platform/records/lan.h"
#include "tests/platform/memory_disk.h"
#include "tests/platform/sample_record.h"
#include "tests/platform/temporary_folder.h"

namespace camera::test {
namespace {

using Change = std::function<void(Sample&)>;

// One process: its own memory of what it read.
struct Process {
  explicit Process(StoreFiles& files) : store(files, kSampleRecords) {}

  StoreResult read(const RecordInfo& info = kSample) { return store.read(info, &sample); }
  StoreResult write(const RecordInfo& info = kSample) { return store.write(info, &sample); }
  // What is stored now, by a process that knows nothing; the number is 9999 when it cannot be read.
  static Sample stored(StoreFiles& files, const RecordInfo& info = kSample) {
    Sample found{.number = 9999, .flag = 0, .spare = {}, .text = {}, .names = {}, .levels = {}};
    SettingsStore(files, kSampleRecords).read(info, &found);
    return found;
  }

  Sample sample{};
  SettingsStore store;
};

class Store : public testing::Test {
 protected:
  // Stores the defaults with another number.
  StoreResult put(int number, const RecordInfo& info = kSample) {
    Process process(disk);
    if (const StoreResult result = process.read(info); result != StoreResult::kDone) return result;
    process.sample.number = number;
    return process.write(info);
  }
  int storedNumber() { return Process::stored(disk).number; }

  MemoryDisk disk;
};

TEST_F(Store, WithoutAFileOrAFolderReadsTheDefaults) {
  EXPECT_EQ(storedNumber(), kSampleDefaults.number);
  PosixStoreFiles nowhere(testing::TempDir() + "no-such-folder");
  Process process(nowhere);
  ASSERT_EQ(process.read(), StoreResult::kDone);
  EXPECT_EQ(std::memcmp(&kSampleDefaults, &process.sample, sizeof(Sample)), 0);
  process.sample.number = 1;
  EXPECT_EQ(process.write(), StoreResult::kFailed);
}

TEST(StoreFile, HasTheseBytesThisModeAndNothingBesideIt) {
  const TemporaryFolder folder;
  PosixStoreFiles files(folder.path());
  SettingsStore store(files, kRecords);
  const _httpsvr_setting record{
      .reserved0 = 0, .livevideo = 1, .snapshoturl = 0, .reserved1 = 0, .http_port = 8080, .alt_port = 443};
  folder.put(".new", "left by a killed process");
  ASSERT_EQ(store.write(httpsvrRecord, &record), StoreResult::kDone);

  const unsigned char expected[] = {'C',  'S',  'E', 'T', 1, 0, 1,    0,    12, 0, 0,    0,    0xD5, 0xE2,
                                    0xFC, 0xCF, 0,   1,   0, 0, 0x90, 0x1F, 0,  0, 0xBB, 0x01, 0,    0};
  const std::string content = folder.content("httpsvr");
  EXPECT_EQ(content, std::string(std::begin(expected), std::end(expected)))
      << testing::PrintToString(content);
  struct stat status {};
  ASSERT_EQ(stat(folder.file("httpsvr").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0600U);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

TEST_F(Store, AStepThatFailsFailsTheWriteAndKeepsTheOldRecord) {
  for (const char* step : {"lock", "remove", "read", "create", "write", "sync", "rename", "syncFolder"}) {
    disk = MemoryDisk();
    ASSERT_EQ(put(1), StoreResult::kDone);
    Process process(disk);
    process.read();
    process.sample.number = 2;
    disk.failing = step;
    EXPECT_EQ(process.write(), StoreResult::kFailed) << step;
    EXPECT_NE(process.store.fault().find("disk/"), std::string::npos)
        << step << ": " << process.store.fault();
    disk.failing.clear();
    EXPECT_FALSE(disk.has(".new")) << step;
    EXPECT_EQ(storedNumber(), std::string_view(step) == "syncFolder" ? 2 : 1) << step;
    EXPECT_EQ(process.write(), StoreResult::kDone) << step;
    disk.restartAfter(Crash::kPowerLost);
    EXPECT_EQ(storedNumber(), 2) << step << ": the write after it was not durable";
  }
}

TEST_F(Store, AResetThatFailsSaysSo) {
  for (const char* step : {"lock", "remove", "syncFolder"}) {
    disk = MemoryDisk();
    ASSERT_EQ(put(1), StoreResult::kDone);
    disk.failing = step;
    EXPECT_EQ(Process(disk).store.reset(kSample), StoreResult::kFailed) << step;
  }
}

TEST_F(Store, DeathAtAnyStepLeavesTheOldOrTheNewRecord) {
  for (const Crash crash : {Crash::kKilled, Crash::kPowerLost, Crash::kDataLost}) {
    bool survived = false;
    for (int step = 0; !survived; ++step) {
      SCOPED_TRACE(testing::Message() << "crash " << static_cast<int>(crash) << " at step " << step);
      disk = MemoryDisk();
      ASSERT_EQ(put(1), StoreResult::kDone);
      disk.steps = 0;
      disk.stepsToLive = step;
      const StoreResult result = put(2);
      survived = disk.steps <= step;
      ASSERT_LT(step, 20);
      disk.restartAfter(crash);

      const int number = storedNumber();
      EXPECT_TRUE(number == 2 || (number == 1 && result != StoreResult::kDone)) << number;
      EXPECT_EQ(put(3), StoreResult::kDone);
      EXPECT_EQ(storedNumber(), 3);
      EXPECT_FALSE(disk.has(".new"));
    }
  }
}

TEST_F(Store, RefusesToReadOrReplaceAFileThatIsNotWhatItWrote) {
  ASSERT_EQ(put(1), StoreResult::kDone);
  const std::string good = disk.content("sample");
  std::vector<std::pair<std::string, std::string>> files;
  for (std::size_t bit = 0; bit < good.size() * 8; ++bit) {
    std::string flipped = good;
    flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ (1 << bit % 8));
    files.emplace_back("bit " + std::to_string(bit), flipped);
  }
  for (std::size_t length = 0; length < good.size(); ++length) {
    files.emplace_back("length " + std::to_string(length), good.substr(0, length));
  }
  files.emplace_back("one byte more", good + '\0');

  for (const auto& [what, file] : files) {
    disk.content("sample") = file;
    Process process(disk);
    process.sample.number = 55;
    EXPECT_EQ(process.read(), StoreResult::kFailed) << what;
    EXPECT_EQ(process.sample.number, 55) << what;
    process.sample = kSampleDefaults;
    EXPECT_EQ(process.write(), StoreResult::kFailed) << what;
    EXPECT_EQ(disk.content("sample"), file) << what;
  }
  EXPECT_EQ(Process(disk).store.reset(kSample), StoreResult::kDone);
  EXPECT_EQ(storedNumber(), kSampleDefaults.number);
}

// Another description of the same file, as an older or newer program would have it.
RecordInfo variant(std::uint16_t version, std::size_t size, std::span<const Field> fields) {
  RecordInfo info = kSample;
  info.version = version;
  info.size = static_cast<std::uint16_t>(size);
  info.fields = fields;
  return info;
}

TEST_F(Store, TakesTheTailOfAnOlderRecordFromTheDefaults) {
  const std::span<const Field> oldFields = std::span(kSampleFields).first<5>();
  const RecordInfo old = variant(1, kOldSampleSize, oldFields);
  Sample written = kSampleDefaults;
  written.number = 5;
  std::memset(written.levels, 99, sizeof written.levels);
  SettingsStore store(disk, {});
  ASSERT_EQ(store.write(old, &written), StoreResult::kDone);
  EXPECT_EQ(disk.content("sample").size(), 16 + kOldSampleSize);
  const Sample read = Process::stored(disk);
  EXPECT_EQ(read.number, 5);
  EXPECT_EQ(std::memcmp(read.levels, kSampleDefaults.levels, sizeof read.levels), 0);

  struct Row {
    const char* what;
    RecordInfo writer;
  };
  const Row rows[] = {{"short, but of this version", variant(2, kOldSampleSize, oldFields)},
                      {"of an older version, but whole", variant(1, sizeof(Sample), kSampleFields)},
                      {"of a newer version", variant(3, sizeof(Sample), kSampleFields)}};
  for (const Row& row : rows) {
    disk = MemoryDisk();
    ASSERT_EQ(SettingsStore(disk, {}).write(row.writer, &written), StoreResult::kDone);
    EXPECT_EQ(Process(disk).read(), StoreResult::kFailed) << row.what;
  }
}

TEST_F(Store, RefusesWhatIsOutsideItsBoundsInAWriteAndInAFile) {
  struct Row {
    const char* what;
    bool valid;
    Change change;
  };
  const Row rows[] = {
      {"number 1000", true, [](Sample& s) { s.number = 1000; }},
      {"number 1001", false, [](Sample& s) { s.number = 1001; }},
      {"number -100", true, [](Sample& s) { s.number = -100; }},
      {"number -101", false, [](Sample& s) { s.number = -101; }},
      {"flag 2", false, [](Sample& s) { s.flag = 2; }},
      {"text of 7", true, [](Sample& s) { std::memcpy(s.text, "1234567", 8); }},
      {"text without an end", false, [](Sample& s) { std::memcpy(s.text, "12345678", 8); }},
      {"empty text", false, [](Sample& s) { s.text[0] = '\0'; }},
      {"last name without an end", false, [](Sample& s) { std::memcpy(s.names[1], "123456", 6); }},
      {"reserved bytes", true, [](Sample& s) { std::memcpy(s.spare, "\xFF\xFF\xFF", 3); }},
      {"level 255", true, [](Sample& s) { s.levels[3] = 255; }},
  };
  static constexpr Field kUnbounded[] = {describe::reserved("all", 0, sizeof(Sample))};
  const RecordInfo unbounded = variant(2, sizeof(Sample), kUnbounded);
  for (const Row& row : rows) {
    disk = MemoryDisk();
    Process process(disk);
    process.read();
    row.change(process.sample);
    EXPECT_EQ(process.write(), row.valid ? StoreResult::kDone : StoreResult::kRefused) << row.what;
    EXPECT_EQ(disk.has("sample"), row.valid) << row.what;
    ASSERT_EQ(SettingsStore(disk, {}).write(unbounded, &process.sample), StoreResult::kDone);
    EXPECT_EQ(Process(disk).read(), row.valid ? StoreResult::kDone : StoreResult::kFailed) << row.what;
  }
}

TEST_F(Store, WhatFollowsATextIsNeitherAChangeNorStored) {
  ASSERT_EQ(put(1), StoreResult::kDone);
  const std::string before = disk.content("sample");
  Process process(disk);
  process.read();
  std::memcpy(process.sample.text, "abc\0def", 8);
  disk.failing = "create";
  EXPECT_EQ(process.write(), StoreResult::kDone) << "nothing differs, so nothing is created";
  disk.failing.clear();
  EXPECT_EQ(Process(disk).store.write(kSample, &process.sample), StoreResult::kDone);
  process.sample.flag = 0;
  EXPECT_EQ(process.write(), StoreResult::kDone);
  EXPECT_EQ(std::memcmp(Process::stored(disk).text, "abc\0\0\0\0", 8), 0);
}

struct MergeRow {
  const char* what;
  Change first;
  Change second;
  Change both;
};

TEST_F(Store, MergesWhatTwoProcessesChanged) {
  const MergeRow rows[] = {
      {"two fields", [](Sample& s) { s.number = 1; }, [](Sample& s) { s.flag = 0; },
       [](Sample& s) { s.number = 1, s.flag = 0; }},
      {"one field: the later", [](Sample& s) { s.number = 1; }, [](Sample& s) { s.number = 2; },
       [](Sample& s) { s.number = 2; }},
      {"elements of bytes", [](Sample& s) { s.levels[0] = 9; }, [](Sample& s) { s.levels[3] = 9; },
       [](Sample& s) { s.levels[0] = s.levels[3] = 9; }},
      {"elements of texts", [](Sample& s) { s.names[0][0] = 'O'; }, [](Sample& s) { s.names[1][0] = 'T'; },
       [](Sample& s) { s.names[0][0] = 'O', s.names[1][0] = 'T'; }},
      {"reserved bytes and a text", [](Sample& s) { s.spare[1] = 7; }, [](Sample& s) { s.text[0] = 'z'; },
       [](Sample& s) { s.spare[1] = 7, s.text[0] = 'z'; }},
      {"nothing and a field", [](Sample&) {}, [](Sample& s) { s.flag = 0; }, [](Sample& s) { s.flag = 0; }},
  };
  for (const MergeRow& row : rows) {
    disk = MemoryDisk();
    Process first(disk);
    Process second(disk);
    first.read();
    second.read();
    row.first(first.sample);
    row.second(second.sample);
    EXPECT_EQ(first.write(), StoreResult::kDone) << row.what;
    EXPECT_EQ(second.write(), StoreResult::kDone) << row.what;
    Sample expected = kSampleDefaults;
    row.both(expected);
    const Sample merged = Process::stored(disk);
    EXPECT_EQ(std::memcmp(&merged, &expected, sizeof(Sample)), 0) << row.what;
  }
}

TEST_F(Store, RefusesADecisionOnWhatAnotherProcessChanged) {
  struct Row {
    const char* what;
    const RecordInfo* read;     // by the process that decides; null: it reads nothing
    const RecordInfo* changed;  // by another process, after that
    const RecordInfo* written;  // by the process that decides
    StoreResult result;
  };
  const Row rows[] = {
      {"a whole record changed", &kWhole, &kWhole, &kWhole, StoreResult::kRefused},
      {"a whole record did not", &kWhole, &kSample, &kWhole, StoreResult::kDone},
      {"a whole record unread", nullptr, &kWhole, &kWhole, StoreResult::kDone},
      {"a linked record changed", &kSample, &kSample, &kLinked, StoreResult::kRefused},
      {"a linked record did not", &kSample, &kWhole, &kLinked, StoreResult::kDone},
      {"a linked record unread", nullptr, &kSample, &kLinked, StoreResult::kDone},
      {"a link goes one way", &kLinked, &kLinked, &kSample, StoreResult::kDone},
  };
  for (const Row& row : rows) {
    disk = MemoryDisk();
    Process process(disk);
    process.sample = kSampleDefaults;
    if (row.read != nullptr) process.read(*row.read);
    ASSERT_EQ(put(77, *row.changed), StoreResult::kDone);
    process.sample.flag = 0;
    EXPECT_EQ(process.write(*row.written), row.result) << row.what;
    EXPECT_EQ(Process::stored(disk, *row.written).flag, row.result == StoreResult::kDone ? 0 : 1) << row.what;
    if (row.result == StoreResult::kDone) continue;
    process.read(*row.read);
    EXPECT_EQ(process.write(*row.written), StoreResult::kDone) << row.what << ", and was read again";
  }
}

TEST_F(Store, AProcessIsNotStaleAfterItsOwnWrites) {
  Process process(disk);
  ASSERT_EQ(process.read(), StoreResult::kDone);
  ASSERT_EQ(process.read(kWhole), StoreResult::kDone);
  process.sample.number = 5;
  EXPECT_EQ(process.write(), StoreResult::kDone);
  EXPECT_EQ(process.write(kLinked), StoreResult::kDone);
  EXPECT_EQ(process.write(kWhole), StoreResult::kDone);
  process.sample.number = 6;
  EXPECT_EQ(process.write(kWhole), StoreResult::kDone);
}

TEST_F(Store, ASecondWriteOfOneCopyKeepsWhatAnotherProcessChanged) {
  Process first(disk);
  Process second(disk);
  ASSERT_EQ(first.read(), StoreResult::kDone);
  ASSERT_EQ(second.read(), StoreResult::kDone);
  second.sample.levels[0] = 9;
  ASSERT_EQ(second.write(), StoreResult::kDone);
  for (const int number : {5, 6}) {
    first.sample.number = number;
    ASSERT_EQ(first.write(), StoreResult::kDone);
  }
  ASSERT_EQ(first.read(), StoreResult::kDone);
  EXPECT_EQ(first.sample.levels[0], 9);
  EXPECT_EQ(first.sample.number, 6);
}

// Runs the body in a child process; its exit status is 0 when the body returns true.
pid_t fork(const std::function<bool()>& body) {
  const pid_t child = ::fork();
  if (child == 0) _exit(body() ? 0 : 1);
  return child;
}

TEST(StoreProcesses, LoseNothingToEachOther) {
  constexpr int kWrites = 40;
  const TemporaryFolder folder;
  pid_t children[4];
  for (int index = 0; index < 4; ++index) {
    children[index] = fork([&] {
      PosixStoreFiles files(folder.path());
      Process process(files);
      for (int i = 0; i < kWrites; ++i) {
        if (process.read() != StoreResult::kDone) return false;
        ++process.sample.levels[index];
        if (process.write() != StoreResult::kDone) return false;
      }
      return true;
    });
  }
  for (const pid_t child : children) {
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
  }
  PosixStoreFiles files(folder.path());
  const Sample sample = Process::stored(files);
  for (int index = 0; index < 4; ++index)
    EXPECT_EQ(sample.levels[index], kSampleDefaults.levels[index] + kWrites);
}

// Two processes that both read the record before either of them writes it.
TEST(StoreProcesses, ThatChangeDifferentFieldsAtTheSameMomentBothWin) {
  constexpr int kRounds = 1000;
  const TemporaryFolder folder;
  PosixStoreFiles files(folder.path());
  int ends[2];
  ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);

  const auto meet = [](int socket) {
    char byte = 0;
    return write(socket, &byte, 1) == 1 && read(socket, &byte, 1) == 1;
  };
  const auto change = [&](int side) {
    SettingsStore store(files, kRecords);
    _lan_setting lan;
    for (int round = 0; round <= kRounds; ++round) {
      if (store.read(lanRecord, &lan) != StoreResult::kDone) return -1;
      const std::string before = std::to_string(round - 1);
      if (round > 0 && (lan.ip != before || lan.gateway != before)) return round;
      snprintf(round % 2 == side ? lan.ip : lan.gateway, sizeof lan.ip, "%d", round);
      if (!meet(ends[side])) return -1;
      if (store.write(lanRecord, &lan) != StoreResult::kDone || !meet(ends[side])) return -1;
    }
    return 0;
  };
  const pid_t child = fork([&] { return close(ends[0]) == 0 && change(1) == 0; });
  close(ends[1]);
  EXPECT_EQ(change(0), 0) << "the round after which a change was lost";
  close(ends[0]);
  int status = -1;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
}

TEST(StoreProcesses, KilledAtAnyMomentKeepWhatTheyAcknowledged) {
  const TemporaryFolder folder;
  PosixStoreFiles files(folder.path());
  int acknowledged = 0;
  for (int round = 0; round < 40; ++round) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t child = fork([&] {
      Process process(files);
      for (int number = acknowledged + 1; number <= acknowledged + 20; ++number) {
        if (process.read() != StoreResult::kDone) return false;
        process.sample.number = number;
        if (process.write() != StoreResult::kDone) return false;
        if (write(ends[1], &number, sizeof number) != sizeof number) return false;
      }
      return pause() != 0;
    });
    close(ends[1]);
    ASSERT_EQ(read(ends[0], &acknowledged, sizeof acknowledged), static_cast<ssize_t>(sizeof acknowledged));
    usleep(static_cast<useconds_t>(round * 2711 % 4000));
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status)) << status;
    while (read(ends[0], &acknowledged, sizeof acknowledged) == sizeof acknowledged) continue;
    close(ends[0]);
    const int number = Process::stored(files).number;
    ASSERT_TRUE(number == acknowledged || number == acknowledged + 1) << number << " after " << acknowledged;
  }
  Process process(files);
  ASSERT_EQ(process.read(), StoreResult::kDone);
  process.sample.flag = 0;
  EXPECT_EQ(process.write(), StoreResult::kDone);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

}  // namespace
}  // namespace camera::test
