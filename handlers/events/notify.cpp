// notify.cgi: the camera's present state, from the packages that its daemons send within four seconds.
#include "handlers/endpoint.h"
#include "handlers/events/daemon_command.h"
#include "handlers/events/status_packages.h"
#include "handlers/numbered.h"
#include "platform/store/records/audio.h"
#include "platform/store/records/host.h"
#include "platform/store/records/ir.h"

namespace camera {
namespace {

constexpr int kListeningSeconds = 4;
constexpr std::chrono::seconds kAskingTime{25};  // after listening; a request takes 30 seconds at most

constexpr const char* kStateWords[] = {"off", "on", "fail"};
constexpr const char* kOn[] = {"on"};

// The state that the packages report: 0 off, 1 on; an output can also be 2, failed, or another number.
struct Status {
  std::uint8_t motion;
  std::int32_t motionValue;
  std::uint8_t input[kMostLines];
  std::uint8_t output[kMostLines];
  std::uint8_t storageFull;
  std::uint8_t storageFailed;
  std::uint8_t recording;
  std::uint8_t soundDetected;
  std::uint8_t soundLevel;
  std::uint8_t speakerOccupied;
  std::uint8_t micMuted;
  std::uint8_t pir;
};

void foldStorage(const StatusPackage& package, Status* status) {
  if ((package.event & kRecordingEvent) != 0) {
    status->recording = package.flags == 0 ? 1 : 0;
    if (package.flags == 0) status->storageFull = status->storageFailed = 0;
  }
  if ((package.flags & kStorageFullFlag) != 0) {
    status->storageFull = 1;
    status->storageFailed = 0;
  }
  if ((package.flags & kStorageFailedFlag) != 0) {
    status->storageFailed = 1;
    status->storageFull = 0;
  }
}

void foldLines(const StatusPackage& package, Status* status) {
  for (int i = 0; i < kMostLines; ++i) {
    if ((package.event & kInputEvent << i) != 0) status->input[i] = 1;
    if ((package.event & kOutputEvent << i) != 0) status->output[i] = lowByte(package.value2);
  }
}

void foldSound(const StatusPackage& package, Status* status) {
  if ((package.event & kSoundEvent) != 0) status->soundDetected = 1;
  if ((package.event & (kSoundEvent | kSoundLevelEvent)) != 0) status->soundLevel = lowByte(package.value);
  if ((package.event & kSpeakerOccupiedEvent) != 0) status->speakerOccupied = 1;
  if ((package.event & kMicMutedEvent) != 0) status->micMuted = 1;
}

void fold(const StatusPackage& package, Status* status) {
  if ((package.event & kMotionEvent) != 0) {
    status->motion = 1;
    status->motionValue = package.value;
  }
  if ((package.flags & kPirFlag) != 0) status->pir = 1;
  foldStorage(package, status);
  foldLines(package, status);
  foldSound(package, status);
}

}  // namespace

class NotifyEndpoint final : public ReadOnlyEndpoint {
  int reply() override {
    // Before listening, so that a failure is reported at once.
    const ProductInfo* info = product();
    if (info == nullptr) return 500;
    listen(kEventsWithFlags, kListeningSeconds, [this](const StatusPackage& package) {
      fold(package, &status_);
      return true;
    });
    replyDetections();
    replyLines(*info);
    if (replyParts(*info) != 200) return 500;
    state("audio_detected", status_.soundDetected);
    pair("audio_detect_val", status_.soundLevel);
    if (info->has_speaker) state("speaker_occupied", status_.speakerOccupied);
    state("mic_muted", status_.micMuted);
    HostSettings host;
    if (read(host) == 200) pair("cameraname", host.name);
    return 200;
  }

  void replyDetections() {
    state("md1", status_.motion);
    pair("mdv1", status_.motionValue);
    state("pir", status_.pir);
    if (status_.storageFull != 0) state("storagefull", status_.storageFull);
    if (status_.storageFailed != 0) state("storagefail", status_.storageFailed);
    state("recording", status_.recording);
  }

  // Lines above kMostLines have neither packages nor commands, and are reported as off.
  void replyLines(const ProductInfo& product) {
    for (std::uint32_t i = 0; i < product.input_count; ++i) {
      state(numbered("input", std::int64_t{i} + 1), i < kMostLines ? status_.input[i] : 0);
    }
    DaemonClient client{kAskingTime};
    for (std::uint32_t i = 0; i < product.output_count; ++i) {
      int output = i < kMostLines ? status_.output[i] : 0;
      if (output == 0 && i < kMostLines) output = askOutput(client, static_cast<std::int32_t>(i));
      state(numbered("output", std::int64_t{i} + 1), output);
    }
  }

  // Parts that no daemon reports: the video signal, which is always there, and those that the settings
  // switch.
  int replyParts(const ProductInfo& product) {
    state("vsignal", 1);
    AudioSettings audio{};
    IrSettings ir{};
    const bool hasSound = product.has_speaker || product.has_mic;
    if (hasSound && read(audio) != 200) return 500;
    if (product.has_irled && read(ir) != 200) return 500;
    if (product.has_speaker) state("speaker", audio.speaker_enable);
    if (product.has_mic) state("mic", audio.mic_enable);
    if (product.has_irled) state("irled", ir.ir_led);
    return 200;
  }

  static int askOutput(DaemonClient& client, std::int32_t index) {
    DaemonAnswer answer;
    const bool isOn = askDaemon(client, kIoDaemon, kReadOutput + index, 0, &answer) && answer.state == 1;
    return isOn ? 1 : 0;
  }

  // Adds no line for a number without a word.
  void state(std::string_view key, int value) {
    const auto index = static_cast<std::size_t>(value);
    if (index < std::size(kStateWords)) pair(std::string{key}, kStateWords[index]);
  }

  Status status_{};
};

template <>
const Api kApi<NotifyEndpoint> = {
    .subsystem = Subsystem::kEvents,
    .summary = "What happens at the camera now.",
    .records = "none; reads `audio`, `host`, `ir`",
    .reply = {{"md1", ApiType::kText, "Whether there was motion in the picture.", kOffOn},
              {"mdv1", ApiType::kNumber, "How much motion there was."},
              {"pir", ApiType::kText, "Whether the infrared sensor detected something.", kOffOn},
              {.name = "storagefull",
               .type = ApiType::kText,
               .meaning = "The storage is full; missing while it is not.",
               .words = kOn,
               .isOptional = true},
              {.name = "storagefail",
               .type = ApiType::kText,
               .meaning = "The storage does not work; missing while it does.",
               .words = kOn,
               .isOptional = true},
              {"recording", ApiType::kText, "Whether a recording runs.", kOffOn},
              {"input#", ApiType::kText, "Whether the input was triggered, for each digital input.", kOffOn},
              {.name = "output#",
               .type = ApiType::kText,
               .meaning = "The state of the output, for each digital output; `off` also if the I/O daemon "
                          "does not answer, and from the fifth output on; missing in any other state.",
               .words = kStateWords,
               .isOptional = true},
              {"vsignal", ApiType::kText, "Whether there is a video signal; always `on`.", kOn},
              {.name = "speaker",
               .type = ApiType::kText,
               .meaning = "Whether the speaker is switched on; only if the camera has one.",
               .words = kOffOn,
               .isOptional = true},
              {.name = "mic",
               .type = ApiType::kText,
               .meaning = "Whether the microphone is switched on; only if the camera has one.",
               .words = kOffOn,
               .isOptional = true},
              {.name = "irled",
               .type = ApiType::kText,
               .meaning = "Whether the infrared LEDs are switched on; only if the camera has them.",
               .words = kOffOn,
               .isOptional = true},
              {"audio_detected", ApiType::kText, "Whether there was a sound.", kOffOn},
              {"audio_detect_val", ApiType::kNumber,
               "The last reported sound level, 0 to 255; 0 if none was reported."},
              {.name = "speaker_occupied",
               .type = ApiType::kText,
               .meaning = "Whether somebody speaks through the speaker; only if the camera has one.",
               .words = kOffOn,
               .isOptional = true},
              {"mic_muted", ApiType::kText, "Whether the microphone is muted.", kOffOn},
              {.name = "cameraname",
               .type = ApiType::kText,
               .meaning = "The camera's name; missing if it cannot be read.",
               .isOptional = true}}};
template struct EndpointOf<NotifyEndpoint>;

}  // namespace camera
