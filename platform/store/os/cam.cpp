// The settings store as handlers use it, over the camera's own folders.
#include "platform/store/cam.h"

#include <cstring>
#include <ctime>

#include "platform/clock/clock.h"
#include "platform/store/actions.h"
#include "platform/store/record.h"
#include "platform/store/route.h"
#include "platform/store/settings_store.h"

namespace {

using camera::RecordIndex;
using camera::StoreResult;

static_assert(sizeof(std::time_t) == sizeof(std::int64_t), "the camera is in use beyond 2038");

constexpr char kActionsFolder[] = "/usr/lib/camera/actions";
constexpr int kActionMilliseconds = 10'000;

// Lives as long as the process, which has better to do at its end than to tidy up.
camera::SettingsStore& store() {
  static camera::PosixStoreFiles& files = *new camera::PosixStoreFiles(camera::kSettingsFolder);
  static camera::SettingsStore& store = *new camera::SettingsStore(files, camera::kRecords);
  return store;
}

int getRecord(RecordIndex index, void* record) {
  return static_cast<int>(store().read(*camera::kRecords[static_cast<std::size_t>(index)], record));
}

// The clock's record holds an offset, and shows the date and time that follow from it.
int getRecord(RecordIndex /*index*/, _curtime_setting* record) {
  return static_cast<int>(camera::readClock(store(), std::time(nullptr), record));
}

bool lastWriteOvertaken = false;

int written(StoreResult result, RecordIndex index, _cam_actions* actions) {
  lastWriteOvertaken = result == StoreResult::kRefused && store().overtaken();
  if (result == StoreResult::kDone) actions->records |= camera::recordBit(index);
  return static_cast<int>(result);
}

int setRecord(RecordIndex index, const void* record, _cam_actions* actions) {
  return written(store().write(*camera::kRecords[static_cast<std::size_t>(index)], record), index, actions);
}

int setRecord(RecordIndex index, const _curtime_setting* record, _cam_actions* actions) {
  return written(camera::setClock(store(), std::time(nullptr), *record), index, actions);
}

}  // namespace

#define CAMERA_DEFINE_RECORD(name, type)                                                         \
  int cam_get_##name(struct type* record) {                                                      \
    return getRecord(RecordIndex::name, record);                                                 \
  }                                                                                              \
  int cam_set_##name(const struct type* record, _cam_actions* actions, unsigned char /*flag*/) { \
    return setRecord(RecordIndex::name, record, actions);                                        \
  }
CAMERA_RECORDS(CAMERA_DEFINE_RECORD)
#undef CAMERA_DEFINE_RECORD

bool cam_overtaken() {
  return lastWriteOvertaken;
}

void cam_hold() {
  store().hold();
}

void cam_release() {
  store().release();
}

void cam_clean_actions(_cam_actions* actions) {
  actions->records = 0;
}

int cam_work_actions(_cam_actions* actions) {
  store().release();
  return camera::runActions(actions->records, camera::kRecords, {kActionsFolder, kActionMilliseconds});
}

void apply_timezone() {
  camera::applyTimeZone(store());
}

std::int64_t camera::cameraTime() {
  return cameraTime(store(), std::time(nullptr));
}

int cam_get_route(char* route, std::size_t size) {
  camera::Route stored;
  const StoreResult result = store().read(camera::kRouteRecord, &stored);
  if (result != StoreResult::kDone) return static_cast<int>(result);
  const std::size_t needed = std::strlen(stored.stops) + 1;
  if (needed > size) return static_cast<int>(StoreResult::kRefused);
  std::memcpy(route, stored.stops, needed);
  return 0;
}

int cam_set_route(const char* route) {
  if (!camera::isRoute(route)) return static_cast<int>(store().refuse(camera::kRouteRecord, "no route"));
  camera::Route wanted{};
  std::memcpy(wanted.stops, route, std::strlen(route));
  return static_cast<int>(store().write(camera::kRouteRecord, &wanted));
}

int cam_reset_image(_image_setting* record) {
  const camera::RecordInfo& info = camera::imageRecord;
  const StoreResult result = store().overwrite(info, info.defaults);
  if (result != StoreResult::kDone) return static_cast<int>(StoreResult::kFailed);
  std::memcpy(record, info.defaults, info.size);
  _cam_actions actions{camera::recordBit(RecordIndex::image)};
  cam_work_actions(&actions);
  return 0;
}
