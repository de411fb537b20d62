// The patrol route's record.
#include "platform/store/route.h"

namespace camera {
namespace {

constexpr Route kDefaults{};

constexpr Field kFields[] = {CAMERA_FIELD(Route, stops)};
static_assert(describe::tiles(kFields, sizeof(Route)));

}  // namespace

constexpr RecordInfo kRouteRecord{.name = "route",
                                  .version = 1,
                                  .size = sizeof(Route),
                                  .fields = kFields,
                                  .defaults = &kDefaults,
                                  .whole = false,
                                  .linked = 0};

bool isRoute(std::string_view text) {
  return text.size() < sizeof(Route::stops) && text.find_first_not_of("0123456789,") == text.npos;
}

}  // namespace camera
