// The files of a card: grey snapshots, brighter by day, and recordings that show one such picture.
#include "virtual-camera/simulator/card.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <string_view>

#include "platform/descriptor.h"
#include "platform/little_endian.h"

namespace camera::simulator {
namespace {

constexpr int kDays = 14;
constexpr int kEverySeconds = 2 * 60 * 60;
constexpr std::time_t kDaySeconds = 86400;
constexpr int kWidth = 640;
constexpr int kHeight = 480;

using namespace std::string_view_literals;

constexpr std::string_view kJpegStart =
    "\xFF\xD8\xFF\xE0\x00\x10JFIF\x00\x01\x01\x00\x00\x01\x00\x01\x00\x00"sv;
constexpr std::string_view kQuantizationTable = "\xFF\xDB\x00\x43\x00"sv;
constexpr std::size_t kQuantities = 64;
constexpr char kQuantity = 16;
// A grey picture of 640 by 480. The Huffman codes stand for: no change of brightness, a change of six bits,
// and the end of a block.
constexpr std::string_view kJpegTables =
    "\xFF\xC0\x00\x0B\x08\x01\xE0\x02\x80\x01\x01\x11\x00"
    "\xFF\xC4\x00\x15\x00\x01\x01\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x06"
    "\xFF\xC4\x00\x14\x10\x01\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00"
    "\xFF\xDA\x00\x08\x01\x01\x00\x00\x3F\x00"sv;
constexpr std::string_view kJpegEnd = "\xFF\xD9"sv;
constexpr std::size_t kBlocks = std::size_t{kWidth} * kHeight / 64;

// A file of the given size, with zeros between its head and its tail.
struct Sparse {
  std::string head;
  std::string tail;
  off_t size;
};

// A picture in two parts; a comment may be inserted between them. Brightness is 0 to 63.
std::array<std::string, 2> jpeg(int brightness) {
  std::string tail{kQuantizationTable};
  tail.append(kQuantities, kQuantity).append(kJpegTables);
  tail.push_back(static_cast<char>(0x80 | brightness));
  tail.append(kBlocks / 4 - 1, '\0').append("\x01"sv).append(kJpegEnd);  // two bits a block
  return {std::string{kJpegStart}, tail};
}

Sparse snapshot(int brightness, off_t size) {
  auto [head, tail] = jpeg(brightness);
  const std::size_t comment = static_cast<std::size_t>(size) - head.size() - tail.size() - 2;
  head += "\xFF\xFE"sv;
  head.push_back(static_cast<char>(comment >> 8));
  head.push_back(static_cast<char>(comment));
  return {head, tail, size};
}

std::string words(const std::initializer_list<std::int32_t>& values) {
  std::string text(4 * values.size(), '\0');
  std::size_t at = 0;
  for (const std::int32_t value : values) storeLittle<std::int32_t>(&text[4 * at++], value);
  return text;
}

std::string chunk(std::string_view name, const std::string& content) {
  return std::string{name} + words({static_cast<std::int32_t>(content.size())}) + content;
}

// A recording: one picture that lasts for all of it, and padding.
Sparse recording(int brightness, off_t size) {
  const auto [start, rest] = jpeg(brightness);
  std::string picture = start + rest;
  picture.resize((picture.size() + 1) / 2 * 2);
  const std::string list = chunk(
      "LIST",
      "hdrl" + chunk("avih", words({60'000'000, 0, 0, 0, 1, 0, 1, 0, kWidth, kHeight, 0, 0, 0, 0})) +
          chunk("LIST", "strl" + chunk("strh", "vidsMJPG" + words({0, 0, 0, 60, 1, 0, 1, 0, -1, 0, 0, 0})) +
                            chunk("strf", words({40, kWidth, kHeight, 0x80001, 0x47504A4D, kWidth * kHeight,
                                                 0, 0, 0, 0}))));
  const std::string body = list + chunk("LIST", "movi" + chunk("00dc", picture));
  const auto whole = static_cast<std::int32_t>(size);
  const auto used = static_cast<std::int32_t>(12 + body.size());
  return {"RIFF" + words({whole - 8}) + "AVI " + body + "JUNK" + words({whole - used - 8}), "", size};
}

// Whole or not at all, so that a disk without space or a kill leaves no part of a file under its name.
int write(const std::string& path, const Sparse& content, std::time_t time) {
  const std::string part = path + ".part";
  const Descriptor file(open(part.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
  if (!file.isOpen()) return errno;
  const timespec stamp{.tv_sec = time, .tv_nsec = 0};
  const timespec stamps[] = {stamp, stamp};
  const off_t tail = content.size - static_cast<off_t>(content.tail.size());
  const bool isDone =
      pwrite(file.number(), content.head.data(), content.head.size(), 0) == std::ssize(content.head) &&
      pwrite(file.number(), content.tail.data(), content.tail.size(), tail) == std::ssize(content.tail) &&
      ftruncate(file.number(), content.size) == 0 && futimens(file.number(), stamps) == 0 &&
      rename(part.c_str(), path.c_str()) == 0;
  const int error = isDone ? 0 : errno != 0 ? errno : EIO;
  if (!isDone) unlink(part.c_str());
  return error;
}

std::string text(const char* format, std::time_t time) {
  std::tm parts{};
  gmtime_r(&time, &parts);
  std::array<char, 16> buffer{};
  return {buffer.data(), std::strftime(buffer.data(), buffer.size(), format, &parts)};
}

// A recording, and a snapshot of its beginning.
int record(const std::string& folder, std::time_t time) {
  const auto hour = static_cast<int>(time % kDaySeconds / 3600);
  const bool isDay = hour >= 6 && hour < 20;
  const int brightness = isDay ? 32 + (hour * 5) % 32 : hour;
  const auto chance = static_cast<off_t>(static_cast<std::uint64_t>(time) * 2654435761U % 1'000'003);
  const std::string name = folder + text("%H%M%S", time);
  const int error = write(name + ".jpg", snapshot(brightness, 20'000 + chance % 40'000), time);
  if (error != 0) return error;
  const off_t size = (off_t{6} << 20) + chance * 24 / 2 * 2;
  return write(name + ".avi", recording(brightness, size), time + 60);
}

}  // namespace

int fillCard(const std::string& folder, std::time_t now) {
  if (mkdir(folder.c_str(), 0777) != 0 && errno != EEXIST) return errno;
  for (std::time_t day = now / kDaySeconds - kDays + 1; day <= now / kDaySeconds; ++day) {
    const std::string dated = folder + text("%Y%m%d/", day * kDaySeconds);
    if (mkdir(dated.c_str(), 0777) != 0 && errno != EEXIST) return errno;
    for (std::time_t time = day * kDaySeconds; time < (day + 1) * kDaySeconds; time += kEverySeconds) {
      const std::time_t begin = time + (time / kEverySeconds * 1237) % kEverySeconds;
      if (begin + 60 > now) break;
      if (const int error = record(dated, begin); error != 0) return error;
    }
  }
  return 0;
}

}  // namespace camera::simulator
