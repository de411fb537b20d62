// Declared parameters: their checks and the driver of the tables that endpoints declare.
#include "framework/param_table.h"

#include <cstdlib>
#include <cstring>
#include <limits>

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

namespace camera {
namespace {

constexpr int count(std::size_t size) {
  return static_cast<int>(size);
}

ParamRow textOf(const char* name, int min, int max, CharClass characters, std::string_view extra) {
  ParamRow row{.name = name, .kind = kStrParam};
  row.min = min;
  row.max = max;
  row.characters = characters;
  row.extra = extra;
  return row;
}

std::string_view fieldText(const ParamRow& row) {
  return {row.textField, strnlen(row.textField, row.textSize)};
}

}  // namespace

ParamRow ParamRow::required() const {
  ParamRow row = *this;
  row.isRequired = true;
  return row;
}

ParamRow ParamRow::startingAt(int value) const {
  ParamRow row = *this;
  row.initial = value;
  return row;
}

ParamRow ParamRow::showing(const char* text) const {
  ParamRow row = *this;
  row.shown = text;
  return row;
}

ParamRow ParamRow::also(int (*further)(std::string_view)) const {
  ParamRow row = *this;
  row.check = further;
  return row;
}

ParamRow ParamRow::unhandledIf(bool absent) const {
  ParamRow row = *this;
  if (absent) row.kind = kUnhandledParam;
  return row;
}

ParamRow ParamRow::into(std::uint8_t& field, bool& change) const {
  ParamRow row = *this;
  row.byteField = &field;
  row.changed = &change;
  return row;
}

ParamRow ParamRow::into(std::int32_t& field, bool& change) const {
  ParamRow row = *this;
  row.integerField = &field;
  row.changed = &change;
  return row;
}

ParamRow ParamRow::intoText(char* field, std::size_t size, bool& change) const {
  ParamRow row = *this;
  row.textField = field;
  row.textSize = size;
  row.changed = &change;
  return row;
}

ParamRow integerParam(const char* name, int min, int max) {
  ParamRow row{.name = name, .kind = kIntParam};
  row.min = min;
  row.max = max;
  return row;
}

ParamRow textParam(const char* name, int min, int max, std::string_view extra) {
  return textOf(name, min, max, kAlnum, extra);
}

ParamRow digitsParam(const char* name, int min, int max, std::string_view extra) {
  return textOf(name, min, max, kDigits, extra);
}

ParamRow hexParam(const char* name, int min, int max) {
  return textOf(name, min, max, kHexDigits, {});
}

ParamRow choiceParam(const char* name, Words words) {
  ParamRow row{.name = name, .kind = kCStrParam};
  row.words = words;
  return row;
}

ParamTable::ParamTable(std::initializer_list<ParamRow> rows, UnknownNames unknown)
    : rows_{rows}, unknown_{unknown}, params_(rows.size()) {
  std::vector<const char*> names;
  std::vector<std::uint8_t> kinds;
  std::size_t bytes = 0;
  for (const ParamRow& row : rows_) {
    names.push_back(row.name);
    kinds.push_back(row.kind);
    if (row.kind == kStrParam) bytes += static_cast<std::size_t>(row.max) + 1;
  }
  InitParams(count(rows_.size()), params_.data(), names.data(), kinds.data());
  buffers_ = std::make_unique<char[]>(bytes);
  char* buffer = buffers_.get();
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const ParamRow& row = rows_[i];
    if (row.isRequired) params_[i].optional = 0;
    if (row.kind == kIntParam) {
      InitIntParam(&ints_.emplace_back(), row.min, row.max, row.initial);
    } else if (row.kind == kStrParam) {
      const std::size_t size = static_cast<std::size_t>(row.max) + 1;
      InitStrParam(&strs_.emplace_back(), row.min, row.max, size, buffer);
      buffer += size;
    } else if (row.kind == kCStrParam) {
      InitCStrParam(&choices_.emplace_back(), count(row.words.size()), row.initial, row.words.data(), true);
    }
  }
}

bool ParamTable::check(BaseCgilet& request) {
  const bool refuse = unknown_ == UnknownNames::kRefuse;
  if (refuse && request.getQueriesSize() > params_.size()) return false;
  unsigned found = 0;
  for (std::size_t i = 0; i < params_.size(); ++i) {
    BaseCgilet::Queries::iterator position;
    params_[i].presence = request.getIter(params_[i].name, position, &found);
    if (params_[i].presence >= 0 ? !checkOne(i, position->second) : params_[i].optional != 1) return false;
  }
  return !refuse || found == request.getQueriesSize();
}

bool ParamTable::checkOne(std::size_t i, std::string_view text) {
  const _Param& param = params_[i];
  const ParamRow& row = rows_[i];
  if (param.kind == kIntParam) {
    _IntParam& value = ints_[param.index];
    return ChkInt(text, param.presence, value.min, value.max, &value.value, &value.state, 0, "", 0) == 0;
  }
  if (param.kind == kCStrParam) {
    _CStrParam& value = choices_[param.index];
    if (CmpStr(text, value.list, value.count, &value.index, value.flag, false) != 0) return false;
    value.state = 1;
  } else if (param.kind == kStrParam) {
    _StrParam& value = strs_[param.index];
    const CharClass& accepted = row.characters;
    if (ChkStr(text, param.presence, value.min, value.max, value.value, value.size, accepted.letters,
               accepted.digits, accepted.hexDigits, false, row.extra) != 0) {
      return false;
    }
    if (!text.empty() && row.check != nullptr && row.check(text) != 0) return false;
    value.state = count(text.size());
  }
  return true;
}

std::size_t ParamTable::find(const char* name) const {
  for (std::size_t i = 0; i < params_.size(); ++i) {
    if (std::strcmp(params_[i].name, name) == 0) return i;
  }
  std::abort();  // an endpoint asked for a parameter that its own table does not declare
}

int ParamTable::state(std::size_t i) const {
  const _Param& param = params_[i];
  if (param.kind == kIntParam) return ints_[param.index].state;
  if (param.kind == kStrParam) return strs_[param.index].state;
  if (param.kind == kCStrParam) return choices_[param.index].state;
  return -1;
}

bool ParamTable::given(const char* name) const {
  return state(find(name)) >= 0;
}
bool ParamTable::givenEmpty(const char* name) const {
  return state(find(name)) == 0;
}

std::size_t ParamTable::findKind(const char* name, std::uint8_t kind) const {
  const std::size_t i = find(name);
  if (params_[i].kind != kind && params_[i].kind != kUnhandledParam) std::abort();
  return i;
}

int ParamTable::integer(const char* name) const {
  return number(findKind(name, kIntParam));
}
int ParamTable::choice(const char* name) const {
  return number(findKind(name, kCStrParam));
}
const char* ParamTable::text(const char* name) const {
  const _Param& param = params_[findKind(name, kStrParam)];
  return param.kind == kStrParam ? strs_[param.index].value : "";
}

int ParamTable::number(std::size_t i) const {
  const _Param& param = params_[i];
  if (param.kind == kIntParam) return ints_[param.index].value;
  return param.kind == kCStrParam ? choices_[param.index].index : rows_[i].initial;
}

std::string_view ParamTable::word(std::size_t i, int choice) const {
  const _Param& param = params_[i];
  if (param.kind == kStrParam) return strs_[param.index].value;
  const Words& words = rows_[i].words;
  return choice >= 0 && choice < count(words.size()) ? words[static_cast<std::size_t>(choice)] : "";
}

void ParamTable::merge() const {
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const ParamRow& row = rows_[i];
    const int given = state(i);
    if (row.byteField != nullptr) CmpInt(number(i), given, row.byteField, row.changed);
    if (row.integerField != nullptr) CmpInt(number(i), given, row.integerField, row.changed);
    if (row.textField == nullptr || given < 0) continue;
    const std::string_view text = word(i, number(i));
    if (fieldText(row) != text && copyText(row.textField, row.textSize, text)) *row.changed = true;
  }
}

void ParamTable::reply(InfCgilet& cgilet) const {
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const ParamRow& row = rows_[i];
    int value = number(i);
    if (row.byteField != nullptr) value = *row.byteField;
    if (row.integerField != nullptr) value = *row.integerField;
    if (row.kind == kIntParam) {
      cgilet.pair(row.name, value);
    } else if (row.kind != kUnhandledParam) {
      cgilet.pair(row.name, std::string{row.shown != nullptr       ? row.shown
                                        : row.textField != nullptr ? fieldText(row)
                                                                   : word(i, value)});
    }
  }
}

}  // namespace camera
