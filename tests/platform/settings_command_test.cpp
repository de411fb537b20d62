// camera-settings: what its verbs print, store and refuse.
#include "platform/settings_command.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>

#include "platform/record_text.h"
#include "platform/route.h"
#include "tests/platform/memory_disk.h"
#include "tests/platform/sample_record.h"
#include "tests/platform/temporary_folder.h"

namespace camera::test {
namespace {

constexpr char kDefaults[] =
    "number=-7\nflag=1\nspare=000000\ntext=abc\nnames[0]=one\nnames[1]=two\n"
    "levels[0]=1\nlevels[1]=2\nlevels[2]=3\nlevels[3]=4\n";

class SettingsCommand : public testing::Test {
 protected:
  using Arguments = std::vector<std::string_view>;

  int run(const Arguments& arguments, const std::string& input = "") {
    folder.put("input", input);
    const int descriptor = open(folder.file("input").c_str(), O_RDONLY | O_CLOEXEC);
    streams = {.input = descriptor, .output = {}, .error = {}};
    SettingsStore store(disk, kSampleRecords);
    const int status = runSettingsCommand(store, arguments, &streams);
    close(descriptor);
    EXPECT_EQ(streams.error.empty(), status == 0) << streams.error;
    EXPECT_EQ(streams.error.find('\n'), std::string::npos) << streams.error;
    return status;
  }
  std::string get(std::string_view record) {
    EXPECT_EQ(run({"get", record}), 0) << streams.error;
    return streams.output;
  }

  MemoryDisk disk;
  TemporaryFolder folder;
  CommandStreams streams;
};

TEST_F(SettingsCommand, PrintsAndRefusesByItsArguments) {
  struct Row {
    Arguments arguments;
    int status;
    std::string output;
  };
  const Row rows[] = {
      {{"list"}, 0, "sample\nwhole\nlinked\n"},
      {{"get", "sample"}, 0, kDefaults},
      {{"get", "sample", "number"}, 0, "number=-7\n"},
      {{"get", "sample", "names[1]"}, 0, "names[1]=two\n"},
      {{"get", "sample", "names"}, 0, "names[0]=one\nnames[1]=two\n"},
      {{"get", "sample", "names[2]"}, 1, ""},
      {{"get", "sample", "number[0]"}, 1, ""},
      {{"get", "nothing"}, 1, ""},
      {{"get", "route"}, 1, ""},
      {{"get"}, 1, ""},
      {{"set", "sample"}, 1, ""},
      {{"reset", "nothing"}, 1, ""},
      {{"list", "more"}, 1, ""},
      {{"format"}, 1, ""},
      {{}, 1, ""},
      {{"route"}, 0, "\n"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(run(row.arguments), row.status) << testing::PrintToString(row.arguments);
    EXPECT_EQ(streams.output, row.output) << testing::PrintToString(row.arguments);
  }
}

TEST_F(SettingsCommand, SetsAllFieldsOrNone) {
  ASSERT_EQ(run({"set", "sample", "number=5", "names[1]=", "text=a=b", "spare=00fF10"}), 0) << streams.error;
  const std::string stored = get("sample");
  EXPECT_EQ(stored.substr(0, stored.find("levels")),
            "number=5\nflag=1\nspare=00ff10\ntext=a=b\nnames[0]=one\nnames[1]=\n");
  for (const char* wrong :
       {"flag=2",     "flag=",         "flag=0x1",      "flag= 1",      "flag=+1",
        "flag=-0x",   "flag",          "flag[0]=1",     "number=1001",  "number=99999999999",
        "text=",      "text=12345678", "text=\\",       "text=\\x0",    "text=\\x00",
        "text=\\xg1", "text=\\t",      "text=a\tb",     "names=x",      "names[01]=x",
        "names[2]=x", "spare=00000",   "spare=0000000", "spare=00000g", "unknown=1",
        "=1"}) {
    EXPECT_EQ(run({"set", "sample", "number=6", wrong}), 1) << wrong;
    EXPECT_EQ(get("sample"), stored) << wrong;
  }
}

TEST(RecordText, IsReadBackAsItWasWritten) {
  struct Row {
    std::string value;
    const char* text;
  };
  constexpr Field kText = describe::ofType<char[8]>("text", 0);
  for (const Row& row : {Row{"", ""}, Row{" a b ", " a b "}, Row{"\\\n", "\\\\\\n"}, Row{"\\n", "\\\\n"},
                         Row{"\t\r\x7F\x01", "\\x09\\x0d\\x7f\\x01"}, Row{"\xC3\xA4=", "\xC3\xA4="}}) {
    char field[8]{};
    row.value.copy(field, sizeof field);
    EXPECT_EQ(formatElement(kText, field), row.text);
    char parsed[8] = "xxxxxxx";
    EXPECT_TRUE(parseElement(kText, row.text, parsed)) << row.text;
    EXPECT_EQ(std::memcmp(field, parsed, sizeof field), 0) << row.text;
  }
}

TEST_F(SettingsCommand, RestoresExactlyWhatItBackedUp) {
  ASSERT_EQ(run({"set", "sample", "text=\\\\\\n\\x1b", "names[0]==", "spare=0102ff", "levels[3]=255"}), 0);
  ASSERT_EQ(run({"set", "whole", "number=-100"}), 0);
  ASSERT_EQ(run({"route", "1,4,2"}), 0);
  ASSERT_EQ(run({"backup"}), 0);
  const std::string backup = streams.output;
  const std::string sample = disk.content("sample");
  ASSERT_EQ(run({"reset"}), 0);
  EXPECT_FALSE(disk.has("sample") || disk.has("whole") || disk.has("route"));
  ASSERT_EQ(run({"restore"}, backup), 0) << streams.error;
  EXPECT_EQ(disk.content("sample"), sample);
  EXPECT_EQ(run({"backup"}), 0);
  EXPECT_EQ(streams.output, backup);
}

TEST_F(SettingsCommand, RestoreStartsFromTheDefaultsAndLeavesOtherRecordsAlone) {
  ASSERT_EQ(run({"set", "sample", "number=5", "flag=0"}), 0);
  ASSERT_EQ(run({"set", "whole", "number=5"}), 0);
  ASSERT_EQ(run({"restore"}, "camera-settings backup 1\nsample.number=9\n"), 0) << streams.error;
  EXPECT_EQ(get("sample").substr(0, 16), "number=9\nflag=1\n");
  EXPECT_EQ(get("whole").substr(0, 9), "number=5\n");
}

TEST_F(SettingsCommand, RestoreWritesNothingOfABackupWithAWrongLine) {
  struct Row {
    std::string text;
    const char* line;
  };
  const std::string good = "camera-settings backup 1\nsample.number=9\n";
  const Row rows[] = {
      {"", "line 1:"},
      {"sample.number=9\n", "line 1:"},
      {"camera-settings backup 2\n", "line 1:"},
      {good + "sample.number=9\n", "line 3:"},
      {good + "\nsample.flag=0\n", "line 3:"},
      {good + "whole.number=5\nsample.flag=2\n", "line 4:"},
      {good + "other.flag=0\n", "line 3:"},
      {good + "sample.other=0\n", "line 3:"},
      {good + "sample=0\n", "line 3:"},
      {good + "sample.flag\n", "line 3:"},
      {good + "sample.names=x\n", "line 3:"},
      {good + "sample.flag=0\r\n", "line 3:"},
      {good + "sample.text=a\r\n", "line 3:"},
      {good + "route.stops=1;2\n", "line 3:"},
      {good + "sample.levels[0]=1", "line 3:"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(run({"restore"}, row.text), 1) << row.text;
    EXPECT_EQ(streams.error.substr(0, 7), row.line) << row.text;
    EXPECT_EQ(get("sample"), kDefaults) << row.text;
  }
}

TEST_F(SettingsCommand, KeepsARouteOfDigitsAndCommas) {
  const std::string longest(63, '1');
  struct Row {
    std::string route;
    int status;
  };
  for (const Row& row :
       {Row{"1,4,2", 0}, Row{longest, 0}, Row{longest + "1", 1}, Row{"1;2", 1}, Row{"", 0}}) {
    ASSERT_EQ(run({"route", "7"}), 0);
    EXPECT_EQ(run({"route", row.route}), row.status) << row.route;
    ASSERT_EQ(run({"route"}), 0);
    EXPECT_EQ(streams.output, (row.status == 0 ? row.route : "7") + "\n");
  }
}

TEST_F(SettingsCommand, NamesTheFileThatCannotBeReadOrWritten) {
  ASSERT_EQ(run({"set", "sample", "number=5"}), 0);
  disk.content("sample").resize(3);
  for (const Arguments& arguments : {Arguments{"get", "sample"}, {"set", "sample", "flag=0"}, {"backup"}}) {
    EXPECT_EQ(run(arguments), 2) << arguments[0];
    EXPECT_EQ(streams.error, "disk/sample: wrong size") << arguments[0];
    EXPECT_EQ(streams.output, "") << arguments[0];
  }
  disk.failing = "sync";
  EXPECT_EQ(run({"route", "1"}), 2);
  EXPECT_EQ(streams.error, std::string("disk/route: ") + std::strerror(EIO));
  disk.failing.clear();
  EXPECT_EQ(run({"reset"}), 0);
  EXPECT_EQ(get("sample"), kDefaults);
}

}  // namespace
}  // namespace camera::test
