// Parameter tables as the camera's other programs declare them: entries, their checks and merges. Handlers
// use the rows of framework/params.h, which are made of these.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "framework/common_api.h"

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
