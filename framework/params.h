// Parameter tables: an endpoint lists its parameters as constant rows. The rows decide how a request is
// checked and stored, and what the reply contains.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "framework/checks.h"
#include "framework/form.h"
#include "framework/value_tables.h"
#include "platform/store/field.h"

namespace camera {

class Reply;

enum class ParamKind : std::uint8_t {
  kInteger,
  kText,
  kChoice,
  kOwn,      // checked and stored by a function of the endpoint
  kIgnored,  // known, but neither checked nor reported
};

// One parameter. Its functions get the endpoint's state: a settings record, or a struct with all values of
// the endpoint. The functions at the end of this file build rows.
struct ParamRow {
  const char* name;
  ParamKind kind;
  bool isRequired = false;
  bool isSecret = false;      // a password or key
  bool storesNumber = false;  // a choice among numbers stores the number, not its position
  CharClass characters{};
  FieldKind fieldKind{};
  std::uint16_t size = 0;  // bytes of a text field, with its NUL
  Bounds bounds{};
  const char* extra = "";                           // further characters of a text
  Words words{};                                    // of a choice; messages leave out empty ones
  void* (*field)(void* state) = nullptr;            // the field that holds the value
  Bounds (*recordBounds)() = nullptr;               // the bounds of a record's field, in place of bounds
  Bounds (*boundsOf)(const void* state) = nullptr;  // in place of both, if there is a state
  Words (*wordsOf)(const void* state) = nullptr;    // in place of words, if there is a state
  bool (*isHandled)(const void* state) = nullptr;   // false: known, but neither checked nor reported
  bool (*check)(std::string_view value) = nullptr;  // a further check of a text that is not empty
  const char* (*fault)(std::string_view value) = nullptr;       // of a rejected value; empty: none to name
  bool (*take)(std::string_view value, void* state) = nullptr;  // of kOwn; false: rejected
  const char* accepted = nullptr;  // describes the accepted values, in place of acceptedBy's own text
  // Of a list in one text, which a JSON request may give as an array: the separator of the items, and further
  // characters that an item cannot hold.
  const char* separators = "";
};

// The bounds and the words of a row, with or without a state, and whether it is checked and reported.
Bounds boundsOf(const ParamRow& row, const void* state);
Words wordsOf(const ParamRow& row, const void* state);
bool isHandled(const ParamRow& row, const void* state);

// Describes the accepted values: "1 to 65535", "off or on", "1 to 36 letters, digits, _ - .". Returns the
// row's accepted text instead if it has one, unless the values depend on the state and there is a state.
std::string acceptedBy(const ParamRow& row, const void* state);

// True if all words are decimal integers.
bool areNumbers(Words words);

// Lists the words: "off or on", "auto, manual, day or night". Leaves out empty words.
std::string anyOf(Words words);

// Returns the start of a text from the request, for a message of the reply.
std::string shortened(std::string_view text);

// Why a request is rejected. In text, the parameter, a colon and the message are one message.
struct Refusal {
  std::string parameter;  // at fault; empty if none is
  std::string message;    // what is accepted, or why the value is not
};

// Rejects an unknown name. A long name is cut.
Refusal unknownParam(std::string_view name);

// A JSON request's word for a switch: "on" or "yes" if these words are the value's choice, "off" or "no";
// empty if the words are no switch.
std::string_view switchWord(bool isOn, Words words);

enum class UnknownNames : std::uint8_t { kRefuse, kIgnore };

// Rows in the order in which they are checked, stored and reported.
struct ParamList {
  std::span<const ParamRow> rows;
  UnknownNames unknown = UnknownNames::kRefuse;
  std::size_t most = SIZE_MAX;  // parameters that a request may have

  // Stores every given parameter in the state and sets its row's bit in given. Appends the names of those
  // that it ignores to ignored. Returns false, with the reason in refusal, if a parameter is missing, unknown
  // or not accepted, or if there are too many. The state may then be half written: pass a copy of one that is
  // still needed.
  bool take(const Queries& params, void* state, std::uint64_t* given, std::vector<std::string>* ignored,
            Refusal* refusal) const;

  // The row of that name; null if there is none.
  const ParamRow* find(std::string_view name) const;

  // Adds one line for each row that has a field and is handled.
  void reply(Reply& reply, const void* state) const;
};

// The rows of an endpoint with a state of that type.
template <class StateType, std::size_t N>
struct ParamTable {
  using State = StateType;
  static_assert(N <= 64, "given has a bit for each row");

  std::array<ParamRow, N> rows;
  UnknownNames unknown = UnknownNames::kRefuse;
  std::size_t most = SIZE_MAX;

  constexpr ParamList list() const { return {rows, unknown, most}; }
  // Returns the table with unknown names ignored. A request with more than mostParams parameters is rejected.
  constexpr ParamTable ignoringUnknown(std::size_t mostParams = SIZE_MAX) const {
    return {rows, UnknownNames::kIgnore, mostParams};
  }
};

// A parameter of a table, by its name. An unknown name does not compile.
template <const auto& kParams>
struct ParamOf {
  std::size_t row = 0;

  consteval ParamOf(const char* name) {
    while (std::string_view{kParams.rows.at(row).name} != name) ++row;
  }
  constexpr const char* name() const { return kParams.rows[row].name; }
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

// Follows a path of members from the state. The step after an array is the member of the state that holds the
// element's index.
template <class State, class Object>
constexpr Object& follow(State&, Object& object) {
  return object;
}
template <auto kStep, auto... kRest, class State, class Object>
constexpr auto& follow(State& state, Object& object) {
  if constexpr (std::is_array_v<Object>) {
    return follow<kRest...>(state, object[state.*kStep]);
  } else {
    return follow<kRest...>(state, object.*kStep);
  }
}

template <class State, auto... kPath>
void* locate(void* state) {
  State& typed = *static_cast<State*>(state);
  return &follow<kPath...>(typed, typed);
}

template <class Value>
constexpr FieldKind kindOf() {
  if constexpr (std::is_same_v<Value, std::uint8_t>) return FieldKind::kByte;
  if constexpr (std::is_same_v<Value, std::int32_t>) return FieldKind::kInteger;
  if constexpr (std::is_same_v<Value, std::string_view>) return FieldKind::kView;
  if constexpr (std::is_same_v<std::remove_extent_t<Value>, char>) return FieldKind::kText;
  return FieldKind::kReserved;
}

// The type of the state at the start of a path, and of the value at its end.
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

// A row for a state of that type; void if the row fits any state.
template <class State>
struct TypedRow : ParamRow {
  constexpr TypedRow required() const {
    TypedRow row = *this;
    row.isRequired = true;
    return row;
  }
  // A reply that holds such a value must not be stored by anybody on its way.
  constexpr TypedRow secret() const {
    TypedRow row = *this;
    row.isSecret = true;
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
  // Adds a check. The text replaces the description of all that the row accepts.
  constexpr TypedRow also(bool (*further)(std::string_view), const char* text) const {
    TypedRow row = saying(text);
    row.check = further;
    return row;
  }
  // Adds a function that names what is wrong with a rejected value, such as "not base64".
  constexpr TypedRow naming(const char* (*fault)(std::string_view)) const {
    TypedRow row = *this;
    row.fault = fault;
    return row;
  }
  // The value is a list with the first of these characters between its items, which hold none of them.
  constexpr TypedRow listedBy(const char* separators) const {
    TypedRow row = *this;
    row.separators = separators;
    return row;
  }
  // kBounds: Bounds (const State&). The text describes them if there is no state.
  template <auto kBounds>
  constexpr TypedRow within(const char* text) const {
    TypedRow row = saying(text);
    row.boundsOf = [](const void* state) -> Bounds { return kBounds(*static_cast<const State*>(state)); };
    return row;
  }
  // kWords: Words (const State&). The text describes them if there is no state.
  template <auto kWords>
  constexpr TypedRow among(const char* text) const {
    TypedRow row = saying(text);
    row.wordsOf = [](const void* state) -> Words { return kWords(*static_cast<const State*>(state)); };
    return row;
  }
  // kIsHandled: bool (const State&).
  template <auto kIsHandled>
  constexpr TypedRow onlyIf() const {
    TypedRow row = *this;
    row.isHandled = [](const void* state) -> bool { return kIsHandled(*static_cast<const State*>(state)); };
    return row;
  }
};

// The path leads from the state to the field. Most paths are a single step: &HostSettings::name. In the path
// &Wanted::profile, &ProfileSettings::codec, &Wanted::id, codec is an array and id holds the index.
template <auto... kPath>
constexpr auto paramRow(const char* name, ParamKind kind) {
  using State = params::StateOf<kPath...>;
  using Value = params::ValueOf<kPath...>;
  TypedRow<State> row{};
  row.name = name;
  row.kind = kind;
  row.fieldKind = params::kindOf<Value>();
  row.size = sizeof(Value);
  row.field = params::locate<State, kPath...>;
  static_assert(params::kindOf<Value>() != FieldKind::kReserved);
  return row;
}

template <auto... kPath>
constexpr auto integerParam(const char* name, int min, int max) {
  auto row = paramRow<kPath...>(name, ParamKind::kInteger);
  row.bounds = {min, max};
  return row;
}

// Accepts the characters of the class (by default letters and digits) and the extra ones.
template <auto... kPath>
constexpr auto textParam(const char* name, int min, int max, const char* extra,
                         CharClass characters = kAlnum) {
  auto row = paramRow<kPath...>(name, ParamKind::kText);
  row.bounds = {min, max};
  row.characters = characters;
  row.extra = extra;
  return row;
}

template <auto... kPath>
constexpr auto choiceParam(const char* name, Words words = {}) {
  auto row = paramRow<kPath...>(name, ParamKind::kChoice);
  row.words = words;
  return row;
}

// kTake: bool (std::string_view value, State& state). It checks and stores the parameter, which has no reply
// line.
template <auto kTake, class State>
constexpr TypedRow<State> ownParam(const char* name, const char* accepted) {
  TypedRow<State> row{};
  row.name = name;
  row.kind = ParamKind::kOwn;
  row.accepted = accepted;
  row.take = [](std::string_view value, void* state) { return kTake(value, *static_cast<State*>(state)); };
  return row;
}

constexpr TypedRow<void> ignoredParam(const char* name) {
  TypedRow<void> row{};
  row.name = name;
  row.kind = ParamKind::kIgnored;
  return row;
}

template <class State, class... Rows>
constexpr ParamTable<State, sizeof...(Rows)> paramRows(const TypedRow<Rows>&... rows) {
  static_assert(((std::is_same_v<Rows, State> || std::is_void_v<Rows>)&&...),
                "a row belongs to another state");
  return {{static_cast<const ParamRow&>(rows)...}};
}

}  // namespace camera
