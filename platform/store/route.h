// The patrol route's record: kept like any other, but reached through calls of its own and without an action.
#pragma once

#include <string_view>

#include "platform/store/record.h"

namespace camera {

struct Route {
  char stops[64];  // slot numbers, counted from 1, joined by commas; empty: no route
};

extern const RecordInfo kRouteRecord;

// True for a text of at most 63 digits and commas.
bool isRoute(std::string_view text);

}  // namespace camera
