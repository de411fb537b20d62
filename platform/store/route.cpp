// The patrol route's record.
#include "platform/store/route.h"

namespace camera {
namespace {

constexpr Route kDefaults{};

constexpr Field kFields[] = {CAMERA_FIELD(Route, stops)};

}  // namespace

constexpr RecordInfo kRouteRecord = describe::record("route", kDefaults, kFields);

bool isRoute(std::string_view text) {
  return text.size() < sizeof(Route::stops) && text.find_first_not_of("0123456789,") == text.npos;
}

}  // namespace camera
