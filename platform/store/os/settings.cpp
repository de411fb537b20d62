// The settings store for endpoints, in the camera's own folders.
#include "platform/store/settings.h"

#include <cerrno>
#include <ctime>

#include "platform/clock/clock.h"
#include "platform/store/actions.h"
#include "platform/store/records/curtime.h"
#include "platform/store/records/image.h"
#include "platform/store/settings_store.h"

namespace camera {
namespace {

static_assert(sizeof(std::time_t) == sizeof(std::int64_t), "the camera is in use beyond 2038");

constexpr int kActionMilliseconds = 10'000;

// Intentionally leaked: the process ends with its one request.
SettingsStore& store() {
  static PosixStoreFiles& files = *new PosixStoreFiles(kSettingsFolder);
  static SettingsStore& store = *new SettingsStore(files, kRecords);
  return store;
}

const RecordInfo& infoOf(RecordIndex index) {
  return *kRecords[static_cast<std::size_t>(index)];
}

}  // namespace

// The clock's record stores an offset; its date and time follow from that.
StoreResult loadRecord(RecordIndex index, void* record) {
  return index == RecordIndex::curtime
             ? readClock(store(), std::time(nullptr), static_cast<ClockSettings*>(record))
             : store().read(infoOf(index), record);
}

StoreResult storeRecord(RecordIndex index, const void* record, Actions* actions) {
  const StoreResult result =
      index == RecordIndex::curtime
          ? setClock(store(), std::time(nullptr), *static_cast<const ClockSettings*>(record))
          : store().write(infoOf(index), record);
  if (result == StoreResult::kDone) actions->records |= recordBit(index);
  return result;
}

bool isStoreOvertaken() {
  return store().overtaken();
}

bool isStoreFull() {
  return store().error() == ENOSPC || store().error() == EDQUOT;
}

void holdStore() {
  store().hold();
}

void releaseStore() {
  store().release();
}

void runActions(const Actions& actions) {
  runActions(store(), actions.records, {kActionsFolder, kActionMilliseconds});
}

void applyTimeZone() {
  applyTimeZone(store());
}

std::int64_t cameraTime() {
  return cameraTime(store(), std::time(nullptr));
}

StoreResult resetImage(const ImageSettings& factory) {
  const StoreResult result = store().overwrite(imageRecord, &factory);
  if (result == StoreResult::kDone) runActions({recordBit(RecordIndex::image)});
  return result;
}

}  // namespace camera
