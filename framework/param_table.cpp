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
  if (given < 0 || *field == value) return;
  *field = value;
  *changed = true;
}

void CmpInt(int value, int given, std::uint8_t* field, bool* changed) {
  if (given < 0 || *field == value) return;
  *field = static_cast<std::uint8_t>(value);
  *changed = true;
}

namespace camera {
namespace {

constexpr int count(std::size_t size) {
  return static_cast<int>(size);
}

ParamSpec textOf(const char* name, int min, int max, CharClass characters, std::string_view extra) {
  ParamSpec spec{.name = name, .kind = kStrParam};
  spec.min = min;
  spec.max = max;
  spec.characters = characters;
  spec.extra = extra;
  return spec;
}

}  // namespace

ParamSpec ParamSpec::required() const {
  ParamSpec spec = *this;
  spec.isRequired = true;
  return spec;
}

ParamSpec ParamSpec::startingAt(int value) const {
  ParamSpec spec = *this;
  spec.initial = value;
  return spec;
}

ParamSpec ParamSpec::also(int (*further)(std::string_view)) const {
  ParamSpec spec = *this;
  spec.check = further;
  return spec;
}

ParamSpec ParamSpec::unhandledIf(bool absent) const {
  ParamSpec spec = *this;
  if (absent) spec.kind = kUnhandledParam;
  return spec;
}

ParamSpec ParamSpec::into(std::uint8_t& field, bool& change) const {
  ParamSpec spec = *this;
  spec.byteField = &field;
  spec.changed = &change;
  return spec;
}

ParamSpec ParamSpec::into(std::int32_t& field, bool& change) const {
  ParamSpec spec = *this;
  spec.integerField = &field;
  spec.changed = &change;
  return spec;
}

ParamSpec ParamSpec::intoText(char* field, std::size_t size, bool& change) const {
  ParamSpec spec = *this;
  spec.textField = field;
  spec.textSize = size;
  spec.changed = &change;
  return spec;
}

ParamSpec integerParam(const char* name, int min, int max) {
  ParamSpec spec{.name = name, .kind = kIntParam};
  spec.min = min;
  spec.max = max;
  return spec;
}

ParamSpec textParam(const char* name, int min, int max, std::string_view extra) {
  return textOf(name, min, max, kAlnum, extra);
}

ParamSpec digitsParam(const char* name, int min, int max, std::string_view extra) {
  return textOf(name, min, max, kDigits, extra);
}

ParamSpec hexParam(const char* name, int min, int max) {
  return textOf(name, min, max, kHexDigits, {});
}

ParamSpec choiceParam(const char* name, Words words) {
  ParamSpec spec{.name = name, .kind = kCStrParam};
  spec.words = words;
  return spec;
}

ParamTable::ParamTable(std::initializer_list<ParamSpec> specs, UnknownNames unknown)
    : specs_{specs}, unknown_{unknown}, params_(specs.size()) {
  std::vector<const char*> names;
  std::vector<std::uint8_t> kinds;
  std::size_t bytes = 0;
  for (const ParamSpec& spec : specs_) {
    names.push_back(spec.name);
    kinds.push_back(spec.kind);
    if (spec.kind == kStrParam) bytes += static_cast<std::size_t>(spec.max) + 1;
  }
  InitParams(count(specs_.size()), params_.data(), names.data(), kinds.data());
  buffers_ = std::make_unique<char[]>(bytes);
  char* buffer = buffers_.get();
  for (std::size_t i = 0; i < specs_.size(); ++i) {
    const ParamSpec& spec = specs_[i];
    if (spec.isRequired) params_[i].optional = 0;
    if (spec.kind == kIntParam) {
      InitIntParam(&ints_.emplace_back(), spec.min, spec.max, spec.initial);
    } else if (spec.kind == kStrParam) {
      const std::size_t size = static_cast<std::size_t>(spec.max) + 1;
      InitStrParam(&strs_.emplace_back(), spec.min, spec.max, size, buffer);
      buffer += size;
    } else if (spec.kind == kCStrParam) {
      InitCStrParam(&choices_.emplace_back(), count(spec.words.size()), spec.initial, spec.words.data(),
                    true);
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
  const ParamSpec& spec = specs_[i];
  if (param.kind == kIntParam) {
    _IntParam& value = ints_[param.index];
    return ChkInt(text, param.presence, value.min, value.max, &value.value, &value.state, 0, "", 0) == 0;
  }
  if (param.kind == kCStrParam) {
    _CStrParam& value = choices_[param.index];
    value.state = 1;
    return CmpStr(text, value.list, value.count, &value.index, value.flag, false) == 0;
  }
  if (param.kind == kStrParam) {
    _StrParam& value = strs_[param.index];
    value.state = count(text.size());
    return ChkStr(text, param.presence, value.min, value.max, value.value, value.size,
                  spec.characters.letters, spec.characters.digits, spec.characters.hexDigits, false,
                  spec.extra) == 0 &&
           (text.empty() || spec.check == nullptr || spec.check(text) == 0);
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
int ParamTable::integer(const char* name) const {
  return ints_.at(params_[find(name)].index).value;
}
int ParamTable::choice(const char* name) const {
  return choices_.at(params_[find(name)].index).index;
}
const char* ParamTable::text(const char* name) const {
  return strs_.at(params_[find(name)].index).value;
}

int ParamTable::number(std::size_t i) const {
  const _Param& param = params_[i];
  if (param.kind == kIntParam) return ints_[param.index].value;
  return param.kind == kCStrParam ? choices_[param.index].index : 0;
}

std::string_view ParamTable::word(std::size_t i, int choice) const {
  const _Param& param = params_[i];
  if (param.kind == kStrParam) return strs_[param.index].value;
  const Words& words = specs_[i].words;
  return choice >= 0 && choice < count(words.size()) ? words[static_cast<std::size_t>(choice)] : "";
}

void ParamTable::merge() const {
  for (std::size_t i = 0; i < specs_.size(); ++i) {
    const ParamSpec& spec = specs_[i];
    const int given = state(i);
    if (spec.byteField != nullptr) CmpInt(number(i), given, spec.byteField, spec.changed);
    if (spec.integerField != nullptr) CmpInt(number(i), given, spec.integerField, spec.changed);
    if (spec.textField == nullptr || given < 0) continue;
    const std::string_view field{spec.textField, strnlen(spec.textField, spec.textSize)};
    const std::string_view text = word(i, number(i));
    if (field != text && copyText(spec.textField, spec.textSize, text)) *spec.changed = true;
  }
}

void ParamTable::reply(InfCgilet& cgilet) const {
  for (std::size_t i = 0; i < specs_.size(); ++i) {
    const ParamSpec& spec = specs_[i];
    int value = number(i);
    if (spec.byteField != nullptr) value = *spec.byteField;
    if (spec.integerField != nullptr) value = *spec.integerField;
    if (spec.kind == kIntParam) {
      cgilet.pair(spec.name, value);
    } else if (spec.kind != kUnhandledParam) {
      cgilet.pair(spec.name, std::string{spec.textField != nullptr ? spec.textField : word(i, value)});
    }
  }
}

}  // namespace camera
