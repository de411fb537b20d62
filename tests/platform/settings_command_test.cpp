// camera-settings: what its verbs print, store and refuse.
#include "platform/store/settings_command.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstring>

#include "tests/platform/memory_disk.h"
#include "tests/platform/sample_record.h"
#include "tests/support/temporary_folder.h"

namespace camera::test {
namespace {

constexpr char kDefaults[] =
    "number=-7\nflag=1\nreserved=000000\ntext=abc\nnames[0]=one\nnames[1]=two\nlevels[0]=1\nlevels[1]="
    "2\nlevels["
    "2]=3\nlevels[3]=4\n";

class SettingsCommand : public testing::Test {
 protected:
  using Arguments = std::vector<std::string_view>;

  // The input is the path of a device, or the content of a file.
  int run(const Arguments& arguments, const std::string& input = "") {
    folder.put("input", input);
    const std::string path = input.starts_with("/dev/") ? input : folder.path("input");
    streams = {open(path.c_str(), O_RDONLY | O_CLOEXEC), {}, {}};
    SettingsStore store(disk, kSampleRecords);
    const int status = runSettingsCommand(store, "./run settings", arguments, &streams);
    close(streams.input);
    EXPECT_EQ(streams.error.empty(), status == 0) << streams.error;
    EXPECT_EQ(streams.error.find('\n'), std::string::npos) << streams.error;
    return status;
  }
  std::string output(const Arguments& arguments) {
    EXPECT_EQ(run(arguments), 0) << streams.error;
    return streams.output;
  }

  MemoryDisk disk;
  TemporaryFolder folder;
  CommandStreams streams;
};

TEST_F(SettingsCommand, PrintsAndRefusesByItsArguments) {
  EXPECT_EQ(output({"list"}), "sample\nwhole\nlinked\n");
  EXPECT_EQ(output({"get", "sample"}), kDefaults);
  EXPECT_EQ(output({"get", "sample", "names[1]"}), "names[1]=two\n");
  EXPECT_EQ(output({"get", "sample", "names"}), "names[0]=one\nnames[1]=two\n");
  for (const Arguments& wrong :
       {Arguments{}, Arguments{"get", "sample", "names[2]"}, Arguments{"get", "sample", "number[0]"},
        Arguments{"get"}, Arguments{"set", "sample"}, Arguments{"reset", "nothing"},
        Arguments{"list", "more"}, Arguments{"--version", "more"}, Arguments{"format"},
        Arguments{"get", "a\nb"}}) {
    EXPECT_EQ(run(wrong), 1) << testing::PrintToString(wrong);
    EXPECT_EQ(streams.output, "") << testing::PrintToString(wrong);
  }
  EXPECT_NE(output({"--help"}).find("./run settings restore "), std::string::npos);
  run({"get", "a\nb" + std::string(62, 'x')});
  EXPECT_EQ(streams.error, "no record a?b" + std::string(61, 'x') + "; there are sample, whole, linked");
  run({"get"});
  EXPECT_EQ(streams.error, "usage: ./run settings get RECORD [FIELD]");
}

TEST_F(SettingsCommand, SetsAllFieldsOrNone) {
  ASSERT_EQ(run({"set", "sample", "number=5", "names[1]=", "text=a=b", "reserved=00fF10"}), 0)
      << streams.error;
  const std::string stored = output({"get", "sample"});
  EXPECT_EQ(stored.substr(0, stored.find("levels")),
            "number=5\nflag=1\nreserved=00ff10\ntext=a=b\nnames[0]=one\nnames[1]=\n");
  const std::string fields = "; sample has number, flag, text, names[0] to names[1], levels[0] to levels[3]";
  const std::pair<std::string, std::vector<const char*>> rows[] = {
      {"sample.flag: 0 to 1", {"flag=2", "flag=0x1", "flag= 1"}},
      {"sample.number: -100 to 1000", {"number=99999999999"}},
      {"sample.text: 1 to 7 bytes, \\\\ for a backslash, \\n and \\xNN for control bytes",
       {"text=", "text=12345678", "text=\\", "text=\\x0", "text=a\\x00b", "text=\\xg1", "text=\\t",
        "text=a\tb"}},
      {"sample.reserved: 6 hexadecimal digits", {"reserved=0000000", "reserved=00000g"}},
      {"no value for flag", {"flag"}},
      {"no field names[01]" + fields, {"names[01]=x"}},
      {"no field flag[0]" + fields, {"flag[0]=1"}},
      {"no field " + fields, {"=1"}}};
  for (const auto& [rule, assignments] : rows) {
    for (const char* wrong : assignments) {
      EXPECT_EQ(run({"set", "sample", "number=6", wrong}), 1) << wrong;
      EXPECT_EQ(streams.error, rule) << wrong;
      EXPECT_EQ(output({"get", "sample"}), stored) << wrong;
    }
  }
}

TEST_F(SettingsCommand, SetsTheLinesOfStandardInput) {
  ASSERT_EQ(run({"set", "sample", "number=5", "-", "flag=0"}, "text=a=b\nnames[0]= x"), 0) << streams.error;
  EXPECT_EQ(output({"get", "sample"}).substr(0, 53),
            "number=5\nflag=0\nreserved=000000\ntext=a=b\nnames[0]= x\n");
  EXPECT_EQ(run({"set", "sample", "number=6", "-"}, "flag=1\nflag=2"), 1);
  EXPECT_EQ(streams.error, "line 2: sample.flag: 0 to 1");
  EXPECT_EQ(output({"get", "sample", "number"}), "number=5\n");
}

TEST_F(SettingsCommand, RestoresExactlyWhatItBackedUp) {
  ASSERT_EQ(
      run({"set", "sample", "text=\\\\\\n\\x1b\xC3\xA4=", "names[0]==", "reserved=0102ff", "levels[3]=255"}),
      0);
  ASSERT_EQ(run({"set", "whole", "number=-100"}), 0);
  const std::string backup = output({"backup"});
  const std::string sample = disk.content("sample");
  ASSERT_EQ(run({"reset"}), 0);
  EXPECT_FALSE(disk.has("sample") || disk.has("whole"));
  ASSERT_EQ(run({"restore"}, backup), 0) << streams.error;
  EXPECT_EQ(disk.content("sample"), sample);
  EXPECT_EQ(output({"backup"}), backup);
}

TEST_F(SettingsCommand, RestoreWritesNothingOfAMalformedBackup) {
  const std::string title = "camera-settings backup 2\n";
  const std::string good = title + "sample.number=9\nlinked.number=1\n";
  std::vector<std::pair<std::string, std::string>> rows{{"sample.number=9\n", "line 1: "},
                                                        {"camera-settings backup 1\nend 0\n", "line 1: "},
                                                        {"/dev/urandom", "line 1: "},
                                                        {good + "end 1\n", "line 4: "},
                                                        {good + "sample.flag=0\nend 2\n", "line 5: "},
                                                        {good + "end 2\n\n", "line 5: "}};
  for (const char* line : {"sample.number=8", "linked.number=1", "", "other.flag=0", "sample.other=0",
                           "sample=0", "sample.flag", "sample.flag=0\r", "sample.flag=2", "sample.text=a\r"})
    rows.emplace_back(good + line + "\nend 3\n", "line 4: ");
  for (std::size_t length = 0; length < good.size() + 6; ++length)
    rows.emplace_back((good + "end 2\n").substr(0, length), "line ");
  for (const auto& [wrong, place] : rows) {
    EXPECT_EQ(run({"restore"}, wrong), 1) << wrong;
    EXPECT_TRUE(streams.error.starts_with(place)) << wrong << streams.error;
    EXPECT_EQ(output({"get", "sample"}), kDefaults) << wrong;
  }
  // A field that the backup lacks gets its default if the backup has others of its record.
  for (const char* record : {"sample", "whole"}) ASSERT_EQ(run({"set", record, "number=5", "flag=0"}), 0);
  ASSERT_EQ(run({"restore"}, good + "end 2\n"), 0) << streams.error;
  EXPECT_EQ(output({"get", "sample"}).substr(0, 16), "number=9\nflag=1\n");
  EXPECT_EQ(output({"get", "whole"}).substr(0, 16), "number=5\nflag=0\n");
}

TEST_F(SettingsCommand, FactoryReplacesAllRecordsOrNone) {
  for (const char* record : {"sample", "whole"}) ASSERT_EQ(run({"set", record, "number=5", "flag=0"}), 0);
  const std::string good = "# a product's\n\nlinked number=1\nsample text=a =b\n";
  const std::pair<std::string, const char*> rows[] = {
      {"other number=1\n", "line 5: no record other; there are sample, whole, linked"},
      {"linked flag=2", "line 5: linked.flag: 0 to 1"}};
  for (const auto& [line, error] : rows) {
    EXPECT_EQ(run({"factory"}, good + line), 1);
    EXPECT_EQ(streams.error, error);
    EXPECT_EQ(output({"get", "whole"}).substr(0, 16), "number=5\nflag=0\n");
  }
  ASSERT_EQ(run({"factory"}, good), 0) << streams.error;
  EXPECT_EQ(output({"get", "sample", "number"}), "number=-7\n");
  EXPECT_EQ(output({"get", "sample", "text"}), "text=a =b\n");
  EXPECT_EQ(output({"get", "linked", "number"}), "number=1\n");
  EXPECT_FALSE(disk.has("whole"));
}

TEST_F(SettingsCommand, NamesTheFileThatCannotBeReadOrWritten) {
  ASSERT_EQ(run({"set", "sample", "number=5"}), 0);
  disk.content("sample").resize(3);
  for (const Arguments& arguments : {Arguments{"get", "sample"}, {"set", "sample", "flag=0"}, {"backup"}}) {
    EXPECT_EQ(run(arguments), 2) << arguments[0];
    EXPECT_EQ(streams.error + streams.output,
              "sample: wrong size; restore its factory defaults: ./run settings reset sample")
        << arguments[0];
  }
  disk.failing = "sync";
  EXPECT_EQ(run({"set", "linked", "number=1"}), 2);
  EXPECT_EQ(streams.error, std::string("disk/linked: ") + std::strerror(EIO));
  disk.failing.clear();
  EXPECT_EQ(run({"reset"}), 0);
  EXPECT_EQ(output({"get", "sample"}), kDefaults);
}

}  // namespace
}  // namespace camera::test
