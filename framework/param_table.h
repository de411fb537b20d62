// Declared parameters: an endpoint lists what its request may hold, and checking, merging and replying
// follow.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "framework/cgilet.h"
#include "framework/value_tables.h"

// Kinds of a declared parameter.
inline constexpr std::uint8_t kIntParam = 2;
inline constexpr std::uint8_t kStrParam = 3;
inline constexpr std::uint8_t kCStrParam = 4;
inline constexpr std::uint8_t kUnhandledParam = 5;  // known, but neither checked nor reported

struct _Param {
  const char* name;
  int presence;           // what getIter returned: negative when the parameter was not given
  std::uint8_t kind;      // one of the above
  std::uint8_t index;     // position among the parameters of the same kind
  std::uint8_t optional;  // 1: may be absent
};

// state: -1 not given, otherwise 0 or more (of a text its length: 0 when given empty).
struct _IntParam {
  int min;
  int max;
  int value;
  int state;
};

struct _StrParam {
  int min;  // length in bytes
  int max;
  std::size_t size;  // of the buffer, the NUL included
  char* value;
  int state;
};

struct _CStrParam {
  const char* const* list;
  int count;
  int index;  // the chosen entry
  bool flag;
  int state;
};

void InitParams(int count, _Param params[], const char* const names[], const std::uint8_t kinds[]);
// The third number is the value until one is given.
void InitIntParam(_IntParam* param, int min, int max, int value);
void InitStrParam(_StrParam* param, int min, int max, std::size_t size, char* buffer);
void InitCStrParam(_CStrParam* param, int count, int index, const char* const list[], bool flag);

// Checks of one declared parameter; codes. A negative presence is acceptable and changes nothing.
int ChkInt(std::string_view text, int presence, int min, int max, int* value, int* state, int flag,
           const char* errorText, int errorFlag);
// The flags accept letters, digits and hexadecimal digits; the fourth adds nothing.
int ChkStr(std::string_view text, int presence, int min, int max, char* out, std::size_t size, bool letters,
           bool digits, bool hexDigits, bool flag, std::string_view extra);
// The text must be one of the list, whole and by case; index and word receive it.
int CmpStr(std::string_view text, const char* const list[], int count, int* index, const char** word, bool,
           bool);
int CmpStr(std::string_view text, const char* const list[], int count, int* index, bool, bool);

// Merges: a negative given-state changes nothing; a value that differs is stored and sets changed.
template <std::size_t N>
void CmpStr(const char* text, int given, char (&field)[N], bool* changed) {
  CommonAPI::CmpStr(text, given, field, changed);
}
void CmpInt(int value, int given, std::int32_t* field, bool* changed);
void CmpInt(int value, int given, std::uint8_t* field, bool* changed);

namespace camera {

// One line of an endpoint's table. Build it with integerParam, textParam, digitsParam, hexParam or
// choiceParam.
struct ParamRow {
  const char* name;
  std::uint8_t kind;
  bool isRequired = false;
  int min = 0;  // of an integer its value, of a text its length in bytes
  int max = 0;
  int initial = 0;  // an integer's value or a choice's index until one is given
  CharClass characters{};
  std::string_view extra{};                  // further characters of a text
  Words words{};                             // of a choice
  int (*check)(std::string_view) = nullptr;  // a further check of a text that is not empty; code

  // Where a given value goes and a reported one comes from: a field of a record, and the record's changed
  // flag.
  std::uint8_t* byteField = nullptr;
  std::int32_t* integerField = nullptr;
  char* textField = nullptr;
  std::size_t textSize = 0;
  bool* changed = nullptr;
  const char* shown = nullptr;  // what the reply says of a text in place of its value

  ParamRow required() const;
  ParamRow startingAt(int value) const;
  ParamRow showing(const char* text) const;
  ParamRow also(int (*further)(std::string_view)) const;
  ParamRow unhandledIf(bool absent) const;
  ParamRow into(std::uint8_t& field, bool& change) const;
  ParamRow into(std::int32_t& field, bool& change) const;
  template <std::size_t N>
  ParamRow into(char (&field)[N], bool& change) const {
    return intoText(field, N, change);
  }

 private:
  ParamRow intoText(char* field, std::size_t size, bool& change) const;
};

ParamRow integerParam(const char* name, int min, int max);
ParamRow textParam(const char* name, int min, int max, std::string_view extra);    // letters, digits, extra
ParamRow digitsParam(const char* name, int min, int max, std::string_view extra);  // digits, extra
ParamRow hexParam(const char* name, int min, int max);
ParamRow choiceParam(const char* name, Words words);

// A table of declared parameters and what one request gave for each. The order of the table is the order of
// checking, of merging and of the reply lines.
class ParamTable {
 public:
  enum class UnknownNames : std::uint8_t { kRefuse, kIgnore };

  explicit ParamTable(std::initializer_list<ParamRow> rows, UnknownNames unknown = UnknownNames::kRefuse);

  // Looks every parameter up and checks what was given. False: a required one is missing, a value is not
  // acceptable, or (unless ignored) the request holds a name that the table does not. No field is written.
  bool check(BaseCgilet& request);

  // What the request gave; the name must be one of the table, of that kind. An unhandled parameter counts as
  // not given and has its initial value.
  bool given(const char* name) const;       // also when given empty
  bool givenEmpty(const char* name) const;  // a text
  int integer(const char* name) const;
  int choice(const char* name) const;
  const char* text(const char* name) const;

  // Writes the given values into their fields and sets the flags of what differed.
  void merge() const;

  // One pair per parameter, of its field where it has one, otherwise of its value.
  void reply(InfCgilet& cgilet) const;

 private:
  std::size_t find(const char* name) const;
  std::size_t findKind(const char* name, std::uint8_t kind) const;
  bool checkOne(std::size_t i, std::string_view text);
  int state(std::size_t i) const;
  int number(std::size_t i) const;
  std::string_view word(std::size_t i, int choice) const;

  std::vector<ParamRow> rows_;
  UnknownNames unknown_;
  std::vector<_Param> params_;
  std::vector<_IntParam> ints_;
  std::vector<_StrParam> strs_;
  std::vector<_CStrParam> choices_;
  std::unique_ptr<char[]> buffers_;  // of all texts, one after the other
};

}  // namespace camera
