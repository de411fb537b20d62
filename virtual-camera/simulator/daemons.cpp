// The daemons' protocols: the answer of each to the bytes of one request.
#include "virtual-camera/simulator/daemons.h"

#include <algorithm>
#include <cstdint>

#include "platform/little_endian.h"
#include "platform/text.h"

namespace camera::simulator {
namespace {

constexpr std::size_t kHeadAnswer = 427;
constexpr std::size_t kShortAnswer = 140;

std::int32_t wordAt(const std::string& bytes, std::size_t offset) {
  return loadLittle<std::int32_t>(&bytes[offset]);
}

void putPosition(std::string* answer, std::size_t offset, Position position) {
  storeLittle<std::int32_t>(&(*answer)[offset], position.pan);
  storeLittle<std::int32_t>(&(*answer)[offset + 4], position.tilt);
}

void putLimits(std::string* answer, const HeadDesign& design) {
  std::size_t offset = 4;
  for (const int limit : {design.pmax, design.pmin, design.tmax, design.tmin}) {
    storeLittle(&(*answer)[offset], static_cast<std::int16_t>(limit));
    offset += 2;
  }
}

void putPresets(std::string* answer, const Head& head) {
  std::size_t offset = 22;
  for (const auto& [name, at] : head.presets()) {
    name.copy(&(*answer)[offset], Head::kNameSize - 1);
    putPosition(answer, offset + 32, at);
    offset += 40;
  }
}

std::vector<int> slotsOf(std::string_view route) {
  std::vector<int> slots;
  while (!route.empty()) {
    int number = 0;
    if (readNumber(takeUntil(',', &route), &number)) slots.push_back(number - 1);
  }
  return slots;
}

bool stored(const CameraState& camera, bool done) {
  if (done) camera.headChanged();
  return done;
}

// All fields of a request; a command uses some of them.
struct HeadRequest {
  explicit HeadRequest(const std::string& bytes)
      : code(wordAt(bytes, 0)),
        argument(static_cast<unsigned char>(bytes[4])),
        target{wordAt(bytes, 8), wordAt(bytes, 12)},
        slot(loadLittle<std::int16_t>(&bytes[16])),
        name(bytes, 18, std::min(bytes.find('\0', 18), bytes.size()) - 18) {}

  int code;
  int argument;
  Position target;
  int slot;
  std::string name;
};

bool obeys(CameraState& camera, const HeadRequest& request) {
  Head& head = camera.head;
  switch (request.code) {
    case 2:
      return head.moveTo(request.target);
    case 3:
      return head.moveBy(request.target), true;
    case 6:
      return stored(camera, head.storePreset(request.slot, request.name));
    case 7:
      return head.goToPreset(request.argument);
    case 8:
      return head.goHome(), true;
    case 16:
      return head.stop(), true;
    case 24:
      return head.setHome(), stored(camera, true);
    case 25:
      return head.resetHome(), stored(camera, true);
    case 34:
      return head.autoPan(), true;
    case 35:
      return head.patrol(slotsOf(camera.route()));
    default:
      return false;
  }
}

// True if the code is that of a line; index is then the line, counted from 0. first is the code of line 0.
bool isLine(int code, int first, std::size_t count, std::size_t* index) {
  if (code < first || code >= first + static_cast<int>(count)) return false;
  *index = static_cast<std::size_t>(code - first);
  return true;
}

void setOutput(CameraState& camera, std::size_t index, bool on) {
  if (camera.outputs[index] != on) {
    camera.log.add("Digital Output " + std::to_string(index + 1) + (on ? " switched on" : " switched off"));
  }
  camera.outputs[index] = on;
}

}  // namespace

std::string answerHead(CameraState& camera, const std::string& request) {
  std::string answer(kHeadAnswer, '\0');
  const Head& head = camera.head;
  const HeadRequest command{request};
  switch (command.code) {
    case 1:
      putPosition(&answer, 12, head.position());
      break;
    case 4:
      putPresets(&answer, head);
      break;
    case 19:
      putLimits(&answer, head.design());
      break;
    case 32:
      putPosition(&answer, 12, head.home());
      break;
    default:
      storeLittle<std::int32_t>(answer.data(), obeys(camera, command) ? 0 : 1);
  }
  return answer;
}

std::string answerIo(CameraState& camera, const std::string& request) {
  std::string answer(kShortAnswer, '\0');
  const int code = wordAt(request, 0);
  std::size_t index = 0;
  if (isLine(code, 606, camera.outputCount, &index)) {
    setOutput(camera, index, true);
  } else if (isLine(code, 624, camera.outputCount, &index)) {
    setOutput(camera, index, false);
  } else if (isLine(code, 615, camera.inputCount, &index)) {
    storeLittle<std::int32_t>(&answer[4], camera.inputs[index] ? 1 : 0);
  } else if (isLine(code, 620, camera.outputCount, &index)) {
    storeLittle<std::int32_t>(&answer[4], camera.outputs[index] ? 1 : 0);
  } else {
    storeLittle<std::int32_t>(answer.data(), 1);
  }
  return answer;
}

std::string answerEvents(CameraState& camera, const std::string& request) {
  std::string answer(kShortAnswer, '\0');
  const int release = wordAt(request, 8);
  if (wordAt(request, 0) != 9 || release < 0 || release > 1) {
    storeLittle<std::int32_t>(answer.data(), 1);
    return answer;
  }
  camera.softwareInput = release == 0;
  camera.log.add(camera.softwareInput ? "Event triggered by Software Input" : "Software Input released");
  return answer;
}

std::string answerLog(CameraState& camera, const std::string& request) {
  switch (wordAt(request, 0)) {
    case 402:
      return camera.log.text();
    case 403:
      return std::to_string(camera.log.size()) + "\n" + camera.log.textAfter(wordAt(request, 4));
    default:
      return "";
  }
}

void setInput(CameraState& camera, std::size_t index, bool on) {
  if (on && !camera.inputs[index]) {
    camera.log.add("Event triggered by Digital Input " + std::to_string(index + 1));
  }
  camera.inputs[index] = on;
}

}  // namespace camera::simulator
