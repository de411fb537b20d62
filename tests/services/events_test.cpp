// The event stream: what a status package becomes, and how the recorder serves its listeners over real
// sockets.
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>

#include <csignal>

#include "handlers/events/status_packages.h"
#include "platform/daemons/daemon_client.h"
#include "services/events/recorder.h"
#include "services/events/status_events.h"
#include "tests/support/own_network.h"
#include "tests/support/status_sender.h"
#include "tests/support/temporary_folder.h"

namespace camera::events {
namespace {

using test::package;

TEST(StatusEvents, HaveTheKeysOfNotify) {
  const struct {
    std::uint32_t event, flags;
    std::int32_t value, value2;
    const char* events;
  } rows[] = {{kMotionEvent, 0, 42, 0, "md1=42 "},
              {kMotionEvent, kPirFlag, -1, 0, "md1=-1 pir=1 "},
              {kFlagsEvent, 0, 42, 0, ""},
              {kFlagsEvent, kStorageFullFlag, 0, 0, "storagefull=1 "},
              {kRecordingEvent, 0, 0, 0, "recording=1 "},
              {kRecordingEvent, kStorageFailedFlag, 0, 0, "recording=0 storagefail=1 "},
              {kInputEvent << 3 | kInputEvent, 0, 0, 0, "input1=1 input4=1 "},
              {kInputEvent << 4, kPirFlag, 0, 2, "output1=2 "},
              {kOutputEvent << 3, 0, 0, 257, "output4=1 "},
              {kOutputEvent << 4, kPirFlag, 0, 1, ""},
              {kSoundEvent, 0, 255, 0, "audio_detected=255 "},
              {kSoundLevelEvent | kSpeakerOccupiedEvent | kMicMutedEvent, 0, 30, 0,
               "audio_detect_val=30 speaker_occupied=1 mic_muted=1 "}};
  for (const auto& row : rows) {
    StatusPackage sent = package(row.event, row.value);
    sent.flags = row.flags;
    sent.value2 = row.value2;
    std::string all;
    for (const auto& [kind, number, value] : eventsOf(sent))
      all.append(kind) += (number > 0 ? std::to_string(number) : "") + "=" + std::to_string(value) + " ";
    EXPECT_EQ(all, row.events) << std::hex << row.event << " " << row.flags;
  }
  EXPECT_EQ(
      streamText(7, timeText(951827696005), {"output", 2, -3}),
      "id: 7\nevent: status\ndata: {\"time\":\"2000-02-29T12:34:56.005\",\"kind\":\"output\",\"number\":2,"
      "\"value\":-3}\n\n");
}

constexpr char kStart[] = "retry: 2000\n: alive\n\n";

class Listener {
 public:
  Listener(const std::string& path, const std::string& line)
      : socket_(connectToDaemon(path.c_str(), std::chrono::seconds(1))) {
    EXPECT_EQ(send(socket_.number(), line.data(), line.size(), MSG_NOSIGNAL),
              static_cast<ssize_t>(line.size()));
  }
  // Reads until the text ends so. Returns false if nothing comes for five seconds, or if the connection ends.
  bool reads(std::string_view end) {
    for (char block[65536]; !text.ends_with(end);) {
      pollfd entry{socket_.number(), POLLIN, 0};
      if (poll(&entry, 1, 5000) <= 0) return false;
      const ssize_t size = recv(socket_.number(), block, sizeof block, 0);
      isEnded_ = size <= 0;
      if (isEnded_) return false;
      text.append(block, static_cast<std::size_t>(size));
    }
    return true;
  }
  bool isEnded() { return !reads("never") && isEnded_; }
  std::size_t count() const {
    std::size_t events = 0;
    for (std::size_t at = 0; (at = text.find("\ndata: ", at)) != text.npos; ++at) ++events;
    return events;
  }
  std::string text;

 private:
  Descriptor socket_;
  bool isEnded_ = false;
};

std::string motion(int value) {
  return "\"kind\":\"md\",\"number\":1,\"value\":" + std::to_string(value) + "}\n\n";
}

struct Recording {
  Recording() {
    recorder = fork();
    if (recorder == 0) {
      Recorder own;
      if (own.open(path.c_str()) != 0) _exit(1);
      own.run();
    }
    while (!connectToDaemon(path.c_str(), std::chrono::seconds(1)).isOpen()) usleep(1000);
  }
  ~Recording() {
    kill(recorder, SIGKILL);
    waitpid(recorder, nullptr, 0);
  }
  Listener listen(const std::string& after = "") { return {path, "listen" + after + "\n"}; }

  test::TemporaryFolder folder;
  const std::string path = folder.path("events");
  pid_t recorder;
};

void expectToBeInTimeAndResumed() {
  Recording recording;
  test::Sender sender;
  Listener first = recording.listen();
  ASSERT_TRUE(first.reads(kStart));
  const auto start = std::chrono::steady_clock::now();
  sender.send(package(kMotionEvent, 1'000'000));
  EXPECT_TRUE(first.reads(motion(1'000'000)));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(100));
  for (int i = 1; i <= 150; ++i) sender.send(package(kMotionEvent, i));
  EXPECT_TRUE(first.reads(motion(150)));
  EXPECT_EQ(first.count(), 151U);

  const std::int64_t last = std::stoll(first.text.substr(first.text.rfind("id: ") + 4));
  const std::tuple<std::string, std::size_t> rows[] = {{"", 0},
                                                       {" " + std::to_string(last), 0},
                                                       {" " + std::to_string(last - 1), 1},
                                                       {" " + std::to_string(last - 99), 99},
                                                       {" " + std::to_string(last - 100), 100},
                                                       {" 0", 100},
                                                       {" " + std::to_string(last + 1), 100},
                                                       {" x", 0}};
  for (const auto& [after, count] : rows) {
    Listener again = recording.listen(after);
    EXPECT_TRUE(again.reads(count > 0 ? motion(150) : kStart)) << after;
    EXPECT_EQ(again.count(), count) << after;
  }
}

TEST(Recorder, PassesEventsOnAtOnceAndKeepsAHundred) {
  test::expectInOwnNetwork(expectToBeInTimeAndResumed);
}

void expectSixteenOfWhichOneMayHang() {
  Recording recording;
  test::Sender sender;
  std::list<Listener> listeners;
  while (listeners.size() < kMostListeners) {
    listeners.push_back(recording.listen());
    EXPECT_TRUE(listeners.back().reads(kStart)) << listeners.size();
  }
  EXPECT_TRUE(recording.listen().isEnded());

  listeners.pop_back();
  Listener reading = recording.listen();
  EXPECT_TRUE(reading.reads(kStart));
  for (int sent = 1; sent <= 6000; ++sent) {
    sender.send(package(kMotionEvent, sent));
    if (sent % 100 != 0) continue;
    ASSERT_TRUE(reading.reads(motion(sent)));
  }
  EXPECT_EQ(reading.count(), 6000U);
  EXPECT_TRUE(listeners.front().isEnded()) << "it did not read";
  Listener next = recording.listen();
  EXPECT_TRUE(next.reads(kStart));

  Listener stranger(recording.path, std::string(4000, 'x'));
  EXPECT_TRUE(stranger.isEnded());
  Listener breaker(recording.path, "disconnect\n");
  EXPECT_TRUE(breaker.isEnded());
  EXPECT_TRUE(next.isEnded());
  EXPECT_TRUE(recording.listen().reads(kStart));
}

TEST(Recorder, ServesSixteenAndDropsWhoDoesNotRead) {
  test::expectInOwnNetwork(expectSixteenOfWhichOneMayHang);
}

}  // namespace
}  // namespace camera::events
