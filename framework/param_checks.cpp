// Parameter tables as the camera's other programs declare them: entries, their checks and merges.
#include "framework/param_checks.h"

#include "framework/cgilet.h"

void InitParams(int count, _Param params[], const char* const names[], const std::uint8_t kinds[]) {
  std::uint8_t used[kUnhandledParam + 1] = {};
  for (int i = 0; i < count; ++i) {
    params[i] = {
        .name = names[i], .presence = -1, .kind = kinds[i], .index = used[kinds[i]]++, .optional = 1};
  }
}

void InitIntParam(_IntParam* param, int min, int max, int value) {
  *param = {.min = min, .max = max, .value = value, .state = -1};
}

void InitStrParam(_StrParam* param, int min, int max, std::size_t size, char* buffer) {
  *param = {.min = min, .max = max, .size = size, .value = buffer, .state = -1};
}

void InitCStrParam(_CStrParam* param, int count, int index, const char* const list[], bool flag) {
  *param = {.list = list, .count = count, .index = index, .flag = flag, .state = -1};
}

int ChkInt(std::string_view text, int presence, int min, int max, int* value, int* state, int flag,
           const char* errorText, int /*errorFlag*/) {
  if (presence < 0) return 0;
  if (CommonAPI::ChkInt(text, min, max, value, errorText, flag) != 0) return -1;
  *state = static_cast<int>(text.size());
  return 0;
}

int ChkStr(std::string_view text, int presence, int min, int max, char* out, std::size_t size, bool letters,
           bool digits, bool hexDigits, bool /*flag*/, std::string_view extra) {
  if (presence < 0) return 0;
  if (BaseCgilet::ChkAcptStr(text, min, max, extra, letters, digits, hexDigits) < 0) return -1;
  return camera::copyText(out, size, text) ? 0 : -1;
}

int CmpStr(std::string_view text, const char* const list[], int count, int* index, const char** word,
           bool /*flag*/, bool /*flag*/) {
  const int found = camera::indexOf(text, list, count);
  if (found < 0) return -1;
  *index = found;
  *word = list[found];
  return 0;
}

int CmpStr(std::string_view text, const char* const list[], int count, int* index, bool flag1, bool flag2) {
  const char* word = nullptr;
  return CmpStr(text, list, count, index, &word, flag1, flag2);
}

void CmpInt(int value, int given, std::int32_t* field, bool* changed) {
  if (given >= 0 && camera::setIfDifferent(field, value)) *changed = true;
}

void CmpInt(int value, int given, std::uint8_t* field, bool* changed) {
  if (given >= 0 && camera::setIfDifferent(field, value)) *changed = true;
}
