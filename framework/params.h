// Parameters as constant data: an endpoint lists what its request may hold, and checking, taking and replying
// follow.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

#include "framework/checks.h"
#include "framework/form.h"
#include "framework/param_checks.h"
#include "framework/value_tables.h"

class InfCgilet;

namespace camera {

// A parameter that an endpoint takes with a function of its own, besides the kinds of
// framework/param_checks.h.
inline constexpr std::uint8_t kOwnParam = 6;

// Of an integer its value, of a text its length in bytes.
struct Bounds {
  int min;
  int max;
};

// What a row's field holds. A view is of the request's own text and lives as long as the request.
enum class FieldType : std::uint8_t { kNone, kByte, kInteger, kText, kView };

// One parameter. The state that its functions get is the endpoint's: a settings record, or a struct with what
// the endpoint works on. Rows are built with the functions at the end of this file.
struct ParamRow {
  const char* name;
  std::uint8_t kind;
  bool isRequired = false;
  bool storesNumber = false;  // of a choice among numbers: the number itself, not its position, is stored
  CharClass characters{};
  FieldType type = FieldType::kNone;
  std::uint16_t size = 0;  // of a text field, its NUL included
  Bounds bounds{};
  const char* extra = "";                           // further characters of a text
  Words words{};                                    // of a choice
  void* (*field)(void* state) = nullptr;            // where a given value goes and a reported one comes from
  Bounds (*boundsOf)(const void* state) = nullptr;  // in place of bounds
  Words (*wordsOf)(const void* state) = nullptr;    // in place of words
  bool (*isHandled)(const void* state) = nullptr;   // false: known, but neither checked nor reported
  bool (*check)(std::string_view value) = nullptr;  // a further check of a text that is not empty
  bool (*take)(std::string_view value, void* state) = nullptr;  // of kOwnParam; false: not acceptable
  const char* accepted = nullptr;  // what is accepted, where the rest of the row does not tell
};

// What is accepted, in words: "1 to 65535", "off or on", "1 to 36 letters, digits, _ - .". Without a state,
// bounds and words that depend on it are told as the row says.
std::string acceptedBy(const ParamRow& row, const void* state);

// "off or on", "auto, manual, day or night"; the gaps of a list are no words.
std::string anyOf(Words words);

// What a refusal says of a name that the endpoint does not know; of a long one, its begin.
std::string unknownParam(std::string_view name);

// Which parameters of a table a request gave.
class GivenParams {
 public:
  explicit GivenParams(std::span<const ParamRow> rows) : rows_(rows) {}

  // The name must be one of the table.
  bool has(std::string_view name) const;
  void mark(std::size_t row) { given_ |= std::uint64_t{1} << row; }

 private:
  std::span<const ParamRow> rows_;
  std::uint64_t given_ = 0;  // a bit per row
};

enum class UnknownNames : std::uint8_t { kRefuse, kIgnore };

// Rows whose order is the order of checking, of taking and of the reply lines.
struct ParamList {
  std::span<const ParamRow> rows;
  UnknownNames unknown = UnknownNames::kRefuse;
  std::size_t most = SIZE_MAX;  // of parameters in a request

  // Takes every given parameter into the state. False, with the refusal ("NAME: what is accepted"), when one
  // is missing, unknown or not acceptable; the state is then half written, so it is to be a copy.
  bool take(const Queries& queries, void* state, GivenParams* given, std::string* refusal) const;

  // One pair for each row that has a field and is handled.
  void reply(InfCgilet& cgilet, const void* state) const;
};

// The same for a state of one type.
template <class State>
struct ParamTable : ParamList {
  template <std::size_t N>
  constexpr ParamTable(const std::array<ParamRow, N>& all, UnknownNames unknownNames = UnknownNames::kRefuse,
                       std::size_t mostParams = SIZE_MAX)
      : ParamList{all, unknownNames, mostParams} {
    static_assert(N <= 64, "GivenParams holds a bit per row");
  }
};

namespace params {

template <class Pointer>
struct Member;
template <class Object, class Value>
struct Member<Value Object::*> {
  using ObjectType = Object;
  using ValueType = Value;
};
template <auto kPointer>
using ObjectOf = typename Member<decltype(kPointer)>::ObjectType;

// Follows a path of members from the state. A step after an array is the member of the state that holds the
// index.
template <class State, class Object>
constexpr Object& follow(State&, Object& object) {
  return object;
}
template <auto kStep, auto... kRest, class State, class Object>
constexpr auto& follow(State& state, Object& object) {
  if constexpr (std::is_array_v<Object>) {
    auto& element = object[state.*kStep];
    if constexpr (sizeof...(kRest) == 0) {
      return element;
    } else {
      return follow<kRest...>(state, element);
    }
  } else {
    auto& member = object.*kStep;
    if constexpr (sizeof...(kRest) == 0) {
      return member;
    } else {
      return follow<kRest...>(state, member);
    }
  }
}

template <class State, auto... kPath>
void* locate(void* state) {
  State& typed = *static_cast<State*>(state);
  return &follow<kPath...>(typed, typed);
}

template <class Value>
constexpr FieldType typeOf() {
  if constexpr (std::is_same_v<Value, std::uint8_t>) return FieldType::kByte;
  if constexpr (std::is_same_v<Value, std::int32_t>) return FieldType::kInteger;
  if constexpr (std::is_same_v<Value, std::string_view>) return FieldType::kView;
  if constexpr (std::is_same_v<std::remove_extent_t<Value>, char>) return FieldType::kText;
  return FieldType::kNone;
}

// The state's type at the begin of a path, and what lies at its end.
template <auto kFirst, auto...>
struct Path {
  using State = ObjectOf<kFirst>;
};
template <auto... kPath>
using StateOf = typename Path<kPath...>::State;
template <auto... kPath>
using ValueOf = std::remove_reference_t<decltype(follow<kPath...>(std::declval<StateOf<kPath...>&>(),
                                                                  std::declval<StateOf<kPath...>&>()))>;

}  // namespace params

// A row for a state of one type; void for a row that fits any.
template <class State>
struct TypedRow : ParamRow {
  constexpr TypedRow required() const {
    TypedRow row = *this;
    row.isRequired = true;
    return row;
  }
  constexpr TypedRow storingNumber() const {
    TypedRow row = *this;
    row.storesNumber = true;
    return row;
  }
  constexpr TypedRow saying(const char* text) const {
    TypedRow row = *this;
    row.accepted = text;
    return row;
  }
  // A further check; what it accepts is to be said.
  constexpr TypedRow also(bool (*further)(std::string_view), const char* text) const {
    TypedRow row = saying(text);
    row.check = further;
    return row;
  }
  // Bounds (const State&); what they are is said for those who ask without a state.
  template <auto kBounds>
  constexpr TypedRow within(const char* text) const {
    TypedRow row = saying(text);
    row.boundsOf = [](const void* state) -> Bounds { return kBounds(*static_cast<const State*>(state)); };
    return row;
  }
  // Words (const State&), in which a position is counted; what they are is said for those who ask without a
  // state.
  template <auto kWords>
  constexpr TypedRow among(const char* text) const {
    TypedRow row = saying(text);
    row.wordsOf = [](const void* state) -> Words { return kWords(*static_cast<const State*>(state)); };
    return row;
  }
  // bool (const State&)
  template <auto kIsHandled>
  constexpr TypedRow onlyIf() const {
    TypedRow row = *this;
    row.isHandled = [](const void* state) -> bool { return kIsHandled(*static_cast<const State*>(state)); };
    return row;
  }
};

// The path leads from the state to the field: &HostSettings::name, or &Wanted::profile,
// &ProfileSettings::codec, &Wanted::id, where the last names the element of an array.
template <auto... kPath>
constexpr auto paramRow(const char* name, std::uint8_t kind) {
  using State = params::StateOf<kPath...>;
  using Value = params::ValueOf<kPath...>;
  TypedRow<State> row{};
  row.name = name;
  row.kind = kind;
  row.type = params::typeOf<Value>();
  row.size = sizeof(Value);
  row.field = params::locate<State, kPath...>;
  static_assert(params::typeOf<Value>() != FieldType::kNone);
  return row;
}

template <auto... kPath>
constexpr auto integerParam(const char* name, int min, int max) {
  auto row = paramRow<kPath...>(name, kIntParam);
  row.bounds = {min, max};
  return row;
}

// Letters, digits and the extra characters, or those of another class.
template <auto... kPath>
constexpr auto textParam(const char* name, int min, int max, const char* extra,
                         CharClass characters = kAlnum) {
  auto row = paramRow<kPath...>(name, kStrParam);
  row.bounds = {min, max};
  row.characters = characters;
  row.extra = extra;
  return row;
}

template <auto... kPath>
constexpr auto choiceParam(const char* name, Words words = {}) {
  auto row = paramRow<kPath...>(name, kCStrParam);
  row.words = words;
  return row;
}

// A parameter that the function bool (std::string_view value, State& state) checks and takes. It has no reply
// line.
template <auto kTake, class State>
constexpr TypedRow<State> ownParam(const char* name, const char* accepted) {
  TypedRow<State> row{};
  row.name = name;
  row.kind = kOwnParam;
  row.accepted = accepted;
  row.take = [](std::string_view value, void* state) { return kTake(value, *static_cast<State*>(state)); };
  return row;
}

// Known, whatever its value, and nothing more.
constexpr TypedRow<void> ignoredParam(const char* name) {
  TypedRow<void> row{};
  row.name = name;
  row.kind = kUnhandledParam;
  return row;
}

// The rows of a table over that state.
template <class State, class... Rows>
constexpr std::array<ParamRow, sizeof...(Rows)> paramRows(const TypedRow<Rows>&... rows) {
  static_assert(((std::is_same_v<Rows, State> || std::is_void_v<Rows>)&&...), "a row of another state");
  return {static_cast<const ParamRow&>(rows)...};
}

}  // namespace camera
