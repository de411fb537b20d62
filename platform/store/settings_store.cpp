// The settings store: records in files that are replaced atomically.
#include "platform/store/settings_store.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include "platform/little_endian.h"
#include "platform/log.h"
#include "platform/store/record_fields.h"
#include "platform/text.h"

namespace camera {
namespace {

// One name for all records, so that the next writer removes what a killed process left.
constexpr char kTemporary[] = ".new";

constexpr std::size_t kMostBytes = 2048;  // more than any file has

// The header, little-endian: magic, format version, record version, payload length, CRC-32 of the payload.
constexpr std::size_t kHeaderSize = 16;
constexpr char kMagic[] = {'C', 'S', 'E', 'T'};
constexpr std::uint16_t kFormatVersion = 1;
enum HeaderOffset : std::size_t { kFormatAt = 4, kVersionAt = 6, kLengthAt = 8, kCrcAt = 12 };

// The CRC-32 of IEEE 802.3 of a byte that so many zero bytes follow.
template <int kZeros>
constexpr auto kCrcOfByte = [] {
  std::array<std::uint32_t, 256> table{};
  for (std::uint32_t byte = 0; byte < table.size(); ++byte) {
    table[byte] = byte;
    for (int bit = 0; bit < 8 * (kZeros + 1); ++bit)
      table[byte] = table[byte] >> 1 ^ ((table[byte] & 1) != 0 ? 0xEDB88320U : 0U);
  }
  return table;
}();

// Four bytes at once: byte by byte, this would be half the cost of a read.
std::uint32_t crc32(std::span<const std::uint8_t> bytes) {
  std::uint32_t crc = ~std::uint32_t{0};
  for (; bytes.size() >= 4; bytes = bytes.subspan(4)) {
    crc ^= loadLittle<std::uint32_t>(bytes.data());
    crc = kCrcOfByte<3>[crc & 0xFF] ^ kCrcOfByte<2>[crc >> 8 & 0xFF] ^ kCrcOfByte<1>[crc >> 16 & 0xFF] ^
          kCrcOfByte<0>[crc >> 24];
  }
  for (const std::uint8_t byte : bytes) crc = crc >> 8 ^ kCrcOfByte<0>[(crc ^ byte) & 0xFF];
  return ~crc;
}

// A newer version may have given a field values that this one does not know: they become the default.
void replaceUnknownValues(const RecordInfo& info, std::uint8_t* record) {
  const auto* defaults = static_cast<const std::uint8_t*>(info.defaults);
  forEachElement(info, [&](const Field& field, unsigned, std::size_t offset) {
    if (!validElement(field, record + offset)) copyElement(field, record + offset, defaults + offset);
  });
}

// Decodes a file. The new fields that an older file lacks come from the defaults; of a newer file, the fields
// that this version knows are read. Returns what is wrong with the file, empty if nothing is.
std::string decode(const RecordInfo& info, std::span<const std::uint8_t> file,
                   std::vector<std::uint8_t>* record) {
  if (file.size() < kHeaderSize) return "wrong size";
  if (!std::equal(std::begin(kMagic), std::end(kMagic), file.begin())) return "corrupt: not a settings file";
  if (loadLittle<std::uint16_t>(&file[kFormatAt]) != kFormatVersion) return "corrupt: unknown format";
  const auto version = loadLittle<std::uint16_t>(&file[kVersionAt]);

  // A record grows with each version.
  const std::span<const std::uint8_t> payload = file.subspan(kHeaderSize);
  const bool fits = (version <=> info.version) == (payload.size() <=> info.size);
  if (!fits || loadLittle<std::uint32_t>(&file[kLengthAt]) != payload.size()) return "wrong size";
  if (loadLittle<std::uint32_t>(&file[kCrcAt]) != crc32(payload)) return "corrupt: checksum";

  const auto* defaults = static_cast<const std::uint8_t*>(info.defaults);
  const std::size_t known = std::min<std::size_t>(payload.size(), info.size);
  record->reserve(info.size);
  record->assign(payload.begin(), payload.begin() + static_cast<std::ptrdiff_t>(known));
  convertByteOrder(info, *record);
  record->insert(record->end(), defaults + known, defaults + info.size);
  if (version > info.version) replaceUnknownValues(info, record->data());
  const std::string invalid = firstInvalid(info, record->data());
  return invalid.empty() ? "" : "corrupt: " + invalid;
}

std::vector<std::uint8_t> encode(const RecordInfo& info, std::vector<std::uint8_t> record) {
  convertByteOrder(info, record);
  std::vector<std::uint8_t> file(kHeaderSize);
  std::copy(std::begin(kMagic), std::end(kMagic), file.begin());
  storeLittle(&file[kFormatAt], kFormatVersion);
  storeLittle(&file[kVersionAt], info.version);
  storeLittle(&file[kLengthAt], static_cast<std::uint32_t>(record.size()));
  storeLittle(&file[kCrcAt], crc32(record));
  file.insert(file.end(), record.begin(), record.end());
  return file;
}

// Copies the elements in which wanted differs from base; without a base, all of them.
void merge(const RecordInfo& info, const std::uint8_t* base, const std::uint8_t* wanted,
           std::uint8_t* stored) {
  forEachElement(info, [&](const Field& field, unsigned, std::size_t offset) {
    if (base != nullptr && sameElement(field, base + offset, wanted + offset)) return;
    copyElement(field, stored + offset, wanted + offset);
  });
}

// Whether a file system or a kernel lacks hard links or the exchange of two folders, or the folder is a link.
bool isUnsupported(int error) {
  constexpr int kErrors[] = {EINVAL, ENOSYS, EXDEV, EPERM, EOPNOTSUPP, EMLINK, ENOTDIR};
  return std::find(std::begin(kErrors), std::end(kErrors), error) != std::end(kErrors);
}

}  // namespace

class SettingsStore::Lock {
 public:
  explicit Lock(SettingsStore& store)
      : files_(store.files_), isHeld_(store.isHeld_), error_(isHeld_ ? 0 : files_.lock()) {}
  ~Lock() {
    if (error_ == 0 && !isHeld_) files_.unlock();
  }
  Lock(const Lock&) = delete;
  Lock& operator=(const Lock&) = delete;
  int error() const { return error_; }

 private:
  StoreFiles& files_;
  bool isHeld_;  // by hold(), beyond this lock
  int error_;
};

StoreResult SettingsStore::read(const RecordInfo& info, void* record) {
  Bytes stored;
  const StoreResult result = load(info, &stored);
  if (result != StoreResult::kDone) return result;
  std::memcpy(record, stored.data(), info.size);
  remember(info, {}, std::move(stored));
  return result;
}

StoreResult SettingsStore::peek(const RecordInfo& info, void* record) {
  Bytes stored;
  const StoreResult result = load(info, &stored);
  if (result == StoreResult::kDone) std::memcpy(record, stored.data(), info.size);
  return result;
}

StoreResult SettingsStore::write(const RecordInfo& info, const void* record) {
  // The stored record is valid too, so the merged one need not be checked.
  if (const std::string invalid = firstInvalid(info, record); !invalid.empty()) {
    return refuseInvalid(info, invalid);
  }
  const Lock lock(*this);
  Bytes stored;
  StoreResult result = begin(lock);
  if (result == StoreResult::kDone) result = checkDependencies(info);
  if (result == StoreResult::kDone) result = load(info, &stored);
  if (result != StoreResult::kDone) return result;

  const Known* before = known(info);
  if (info.indivisible && before != nullptr && before->storedCopy != stored) return refuseOvertaken(info);
  const auto* wanted = static_cast<const std::uint8_t*>(record);
  Bytes merged = stored;
  merge(info, before == nullptr ? nullptr : before->callersBytes().data(), wanted, merged.data());
  if (merged != stored) {
    result = replace(info, merged);
    if (result != StoreResult::kDone) return result;
  }
  return finish(info, Bytes(wanted, wanted + info.size), std::move(merged));
}

StoreResult SettingsStore::overwrite(const RecordInfo& info, const void* record) {
  if (const std::string invalid = firstInvalid(info, record); !invalid.empty()) {
    return refuseInvalid(info, invalid);
  }
  const Lock lock(*this);
  StoreResult result = begin(lock);
  if (result != StoreResult::kDone) return result;
  Bytes whole(info.size);
  merge(info, nullptr, static_cast<const std::uint8_t*>(record), whole.data());
  result = replace(info, whole);
  return result == StoreResult::kDone ? finish(info, {}, std::move(whole)) : result;
}

StoreResult SettingsStore::reset(const RecordInfo& info) {
  const Lock lock(*this);
  const StoreResult result = begin(lock);
  if (result != StoreResult::kDone) return result;
  const int error = files_.remove(info.name);
  if (error != 0 && error != ENOENT) return fail(info.name, error);
  const auto* defaults = static_cast<const std::uint8_t*>(info.defaults);
  return finish(info, {}, Bytes(defaults, defaults + info.size));
}

StoreResult SettingsStore::replaceAll(std::span<const Replacement> replacements) {
  for (const Replacement& each : replacements) {
    if (each.record == nullptr) continue;
    const std::string invalid = firstInvalid(*each.info, each.record);
    if (!invalid.empty()) return refuseInvalid(*each.info, invalid);
  }
  const Lock lock(*this);
  StoreResult result = begin(lock);
  if (result != StoreResult::kDone) return result;
  bool isPossible = true;
  result = replaceFolder(replacements, &isPossible);
  if (!isPossible) {
    result = putAll(replacements);
    const int error = result == StoreResult::kDone ? files_.syncFolder() : 0;
    if (error != 0) result = fail("", error);
  }
  known_.clear();
  return result;
}

StoreResult SettingsStore::replaceFolder(std::span<const Replacement> replacements, bool* isPossible) {
  int error = files_.beginReplacement();
  if (error == 0) {
    const StoreResult result = putAll(replacements);
    error = files_.endReplacement(result == StoreResult::kDone);
    if (result != StoreResult::kDone) return result;
  }
  *isPossible = !isUnsupported(error);
  return error == 0 ? StoreResult::kDone : fail("", error);
}

StoreResult SettingsStore::putAll(std::span<const Replacement> replacements) {
  for (const Replacement& each : replacements) {
    const RecordInfo& info = *each.info;
    if (each.record == nullptr) {
      const int error = files_.remove(info.name);
      if (error != 0 && error != ENOENT) return fail(info.name, error);
      continue;
    }
    Bytes whole(info.size);
    merge(info, nullptr, static_cast<const std::uint8_t*>(each.record), whole.data());
    if (const StoreResult result = replace(info, whole); result != StoreResult::kDone) return result;
  }
  return StoreResult::kDone;
}

void SettingsStore::hold() {
  if (!isHeld_) isHeld_ = files_.lock() == 0;
}

void SettingsStore::release() {
  if (isHeld_) files_.unlock();
  isHeld_ = false;
}

StoreResult SettingsStore::begin(const Lock& lock) {
  if (lock.error() != 0) return fail("", lock.error());
  const int error = files_.remove(kTemporary);
  return error == 0 || error == ENOENT ? StoreResult::kDone : fail(kTemporary, error);
}

StoreResult SettingsStore::load(const RecordInfo& info, Bytes* record) {
  std::array<std::uint8_t, kMostBytes> file;
  std::size_t length = 0;
  const int error = files_.read(info.name, file.data(), file.size(), &length);
  if (error == ENOENT) {
    const auto* defaults = static_cast<const std::uint8_t*>(info.defaults);
    record->assign(defaults, defaults + info.size);
    return StoreResult::kDone;
  }
  if (error != 0) return fail(info.name, error);
  const std::string wrong = decode(info, std::span(file).first(length), record);
  return wrong.empty() ? StoreResult::kDone : fail(info.name, wrong);
}

StoreResult SettingsStore::checkDependencies(const RecordInfo& info) {
  for (std::size_t i = 0; i < records_.size(); ++i) {
    const Known* before = (info.dependsOn >> i & 1) != 0 ? known(*records_[i]) : nullptr;
    if (before == nullptr) continue;
    Bytes stored;
    if (const StoreResult result = load(*records_[i], &stored); result != StoreResult::kDone) return result;
    if (before->storedCopy != stored) return refuseOvertaken(*records_[i]);
  }
  return StoreResult::kDone;
}

StoreResult SettingsStore::replace(const RecordInfo& info, const Bytes& record) {
  const Bytes file = encode(info, record);
  int error = files_.create(kTemporary);
  if (error != 0) return fail(kTemporary, error);
  error = files_.write(file.data(), file.size());
  if (error == 0) error = files_.sync();
  files_.close();
  if (error == 0) error = files_.rename(kTemporary, info.name);
  if (error == 0) return StoreResult::kDone;
  files_.remove(kTemporary);
  return fail(info.name, error);
}

// Makes a write durable and remembers it. Syncs even if nothing changed: another process may have made the
// same change and died before it synced.
StoreResult SettingsStore::finish(const RecordInfo& info, Bytes callersCopy, Bytes storedCopy) {
  if (const int error = files_.syncFolder(); error != 0) return fail(info.name, error);
  remember(info, std::move(callersCopy), std::move(storedCopy));
  return StoreResult::kDone;
}

const SettingsStore::Known* SettingsStore::known(const RecordInfo& info) const {
  const auto found =
      std::find_if(known_.begin(), known_.end(), [&](const Known& k) { return k.info == &info; });
  return found == known_.end() ? nullptr : &*found;
}

void SettingsStore::remember(const RecordInfo& info, Bytes callersCopy, Bytes storedCopy) {
  Known now{&info, std::move(callersCopy), std::move(storedCopy)};
  for (Known& entry : known_) {
    if (entry.info != &info) continue;
    entry = std::move(now);
    return;
  }
  known_.push_back(std::move(now));
}

StoreResult SettingsStore::refuse(const RecordInfo& info, const char* reason) {
  fault_ = std::string(info.name) + ": " + reason;
  overtaken_ = false;
  return StoreResult::kRefused;
}

StoreResult SettingsStore::refuseInvalid(const RecordInfo& info, const std::string& field) {
  return refuse(info, (field + " is outside its bounds").c_str());
}

StoreResult SettingsStore::refuseOvertaken(const RecordInfo& info) {
  const StoreResult result = refuse(info, "changed meanwhile");
  overtaken_ = true;
  return result;
}

StoreResult SettingsStore::fail(const char* name, const std::string& reason, int error) {
  error_ = error;
  fault_ = files_.path(name) + ": " + reason;
  logDebug(joined({"settings: ", fault_}));
  return StoreResult::kFailed;
}

StoreResult SettingsStore::fail(const char* name, int error) {
  return fail(name, errorText(error), error);
}

}  // namespace camera
