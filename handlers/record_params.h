// Parameter rows without bounds of their own: they take those of the record's field.
#pragma once

#include "framework/params.h"
#include "platform/store/record_fields.h"
#include "platform/store/settings.h"

namespace camera {

namespace params {

template <auto... kPath>
struct Last;
template <auto kLast>
struct Last<kLast> {
  static constexpr auto kMember = kLast;
};
template <auto kFirst, auto kNext, auto... kRest>
struct Last<kFirst, kNext, kRest...> : Last<kNext, kRest...> {};

// The bounds of the member at the end of the path, by the record's description.
template <auto... kPath>
Bounds recordBounds() {
  constexpr auto kMember = Last<kPath...>::kMember;
  using Record = ObjectOf<kMember>;
  static_assert(kIndexOf<Record> != RecordIndex::count, "not a settings record");
  const auto* start = reinterpret_cast<const char*>(&describe::kFactory<Record>);
  const auto* field = reinterpret_cast<const char*>(&(describe::kFactory<Record>.*kMember));
  return boundsAt(*kRecords[static_cast<std::size_t>(kIndexOf<Record>)], field - start);
}

}  // namespace params

template <auto... kPath>
constexpr auto integerParam(const char* name) {
  auto row = integerParam<kPath...>(name, 0, 0);
  row.recordBounds = params::recordBounds<kPath...>;
  return row;
}

template <auto... kPath>
constexpr auto textParam(const char* name, const char* extra, CharClass characters = kAlnum) {
  auto row = textParam<kPath...>(name, 0, 0, extra, characters);
  row.recordBounds = params::recordBounds<kPath...>;
  return row;
}

}  // namespace camera
