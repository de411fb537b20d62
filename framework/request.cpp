// BaseCgilet: reading the request and checking its parameters.
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <limits>

#include "framework/cgilet.h"

namespace {

constexpr int kMostBytes = 64 * 1024;  // of a query, and of a body
constexpr std::string_view kFormType = "application/x-www-form-urlencoded";

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? std::string{} : std::string{value};
}

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// True when the content type, without its parameters, is the form's.
bool isForm(std::string_view contentType) {
  std::string_view type = contentType.substr(0, contentType.find(';'));
  while (type.ends_with(' ') || type.ends_with('\t')) type.remove_suffix(1);
  while (type.starts_with(' ') || type.starts_with('\t')) type.remove_prefix(1);
  if (type.size() != kFormType.size()) return false;
  for (std::size_t i = 0; i < type.size(); ++i) {
    if (lower(type[i]) != kFormType[i]) return false;
  }
  return true;
}

// Reads up to size bytes of standard input; returns how many came before its end.
std::size_t readInput(char* buffer, std::size_t size) {
  std::size_t filled = 0;
  while (filled < size) {
    const ssize_t count = read(STDIN_FILENO, buffer + filled, size - filled);
    if (count > 0) {
      filled += static_cast<std::size_t>(count);
    } else if (count == 0 || errno != EINTR) {
      break;
    }
  }
  return filled;
}

}  // namespace

BaseCgilet::BaseCgilet() : malformed_{0} {}
BaseCgilet::~BaseCgilet() = default;
void BaseCgilet::SetSSL(void* /*ssl*/) {}
void BaseCgilet::SetOnEngine(int /*on*/) {}

bool BaseCgilet::parseHttp() {
  method_ = environment("REQUEST_METHOD");
  queryString_ = environment("QUERY_STRING");
  contentType_ = environment("CONTENT_TYPE");
  contentLength_ = environment("CONTENT_LENGTH");
  camera::parseForm(queryString_, queries, keepsBytes);
  const char* wrong = queryString_.size() > kMostBytes ? "query: at most 65536 bytes" : readBody();
  if (wrong != nullptr) {
    malformed_ = 1;
    if (refusal.empty()) refusal = wrong;  // a load that failed has said why
    queries.clear();
  }
  return !queries.empty();
}

// Returns what is wrong with the body, null when nothing.
const char* BaseCgilet::readBody() {
  int length = 0;
  if (!contentLength_.empty() && !camera::parseInteger(contentLength_, 0, kMostBytes, &length))
    return "body: at most 65536 bytes";
  if (length == 0) return nullptr;
  if (method_ != "POST" || !isForm(contentType_))
    return "body: a POST of type application/x-www-form-urlencoded";
  buffer_.resize(static_cast<std::size_t>(length));
  if (readInput(buffer_.data(), buffer_.size()) != buffer_.size())
    return "body: shorter than its Content-Length";
  form_.assign(buffer_.begin(), buffer_.end());
  camera::parseForm(form_, queries, keepsBytes);
  return nullptr;
}

void BaseCgilet::cleanUp() {
  for (std::string* text : {&method_, &queryString_, &contentType_, &contentLength_, &form_})
    std::string{}.swap(*text);
  std::vector<char>{}.swap(buffer_);
}

unsigned BaseCgilet::getQueriesSize() const {
  return static_cast<unsigned>(queries.size());
}

int BaseCgilet::getIter(const char* name, Queries::iterator& position, unsigned* counter) {
  const auto found = queries.find(name);
  if (found == queries.end()) return -1;
  position = found;
  ++*counter;
  return 1;
}

bool BaseCgilet::CheckRange(std::string_view text, int min, int max, int* value) {
  return camera::parseInteger(text, min, max, value);
}

bool BaseCgilet::CheckRange(std::string_view text, int min, int max) {
  return camera::parseInteger(text, min, max, nullptr);
}

bool BaseCgilet::checkLength(std::string_view text, int min, int max) {
  return camera::lengthWithin(text, min, max) >= 0;
}

int BaseCgilet::checkLen(std::string_view text, int min, int max) {
  return camera::lengthWithin(text, min, max);
}

int BaseCgilet::checkLen(int length, int min, int max) {
  return length >= min && length <= max ? length : -1;
}

int BaseCgilet::isValidStr(std::string_view text, const std::string table[], int count) {
  return CommonAPI::isValidStr(text, table, count);
}

int BaseCgilet::isValidStr(std::string_view text, std::string table[], int count) {
  return CommonAPI::isValidStr(text, table, count);
}

int BaseCgilet::isValidStr(std::string_view text, const std::vector<std::string>& table, int count) {
  const int size = static_cast<int>(table.size());
  return CommonAPI::isValidStr(text, table.data(), count < size ? count : size);
}

int BaseCgilet::isValidStr(std::string_view text, const char* const table[], int count, bool variants) {
  return camera::indexOf(text, table, count, variants);
}

int BaseCgilet::ChkAcptStr(std::string_view text, int min, int max, std::string_view extra, bool letters,
                           bool digits, bool hexDigits) {
  const camera::CharClass accepted{.letters = letters, .digits = digits, .hexDigits = hexDigits};
  return camera::consistsOf(text, accepted, extra) ? camera::lengthWithin(text, min, max) : -1;
}

int BaseCgilet::isDigit(std::string_view text, std::string_view extra) {
  return ChkAcptStr(text, 1, std::numeric_limits<int>::max(), extra, false, true, false);
}

int BaseCgilet::checkHex(std::string_view text, int length, int /*flag*/) {
  return ChkAcptStr(text, length, length, {}, false, false, true);
}

bool BaseCgilet::checkDate(int year, int month, int day) {
  return camera::isCalendarDate(year, month, day);
}

bool BaseCgilet::checkTimeRange(const std::vector<std::string>& fields, int count) {
  static constexpr int kMax[] = {23, 59, 59};
  if (count < 2 || count > 3 || static_cast<std::size_t>(count) != fields.size()) return false;
  for (std::size_t i = 0; i < std::size(kMax) && i < fields.size(); ++i) {
    if (!CheckRange(fields[i], 0, kMax[i])) return false;
  }
  return true;
}

int BaseCgilet::StrtoVector(std::string_view text, std::string_view separator,
                            std::vector<std::string>& pieces) {
  return camera::split(text, separator, pieces);
}

int BaseCgilet::DTFormat(std::string_view text, std::vector<std::string>& fields, std::string_view separators,
                         int count, int width1, int width2, int width3, bool checkWidths,
                         const char* /*joiner*/, bool /*flag*/) {
  const std::size_t widths[] = {static_cast<std::size_t>(width1), static_cast<std::size_t>(width2),
                                static_cast<std::size_t>(width3)};
  fields.clear();
  const bool signedText = separators.size() > 1 && (text.starts_with('-') || text.starts_with('+')) &&
                          separators.find(text.front()) != separators.npos;
  if (signedText) text.remove_prefix(1);
  for (bool last = false; !last;) {
    const std::size_t end = text.find_first_of(separators);
    last = end == text.npos;
    const std::string_view field = text.substr(0, end);
    if (isDigit(field, {}) < 0) return -1;
    if (checkWidths && (fields.size() >= std::size(widths) || field.size() > widths[fields.size()]))
      return -1;
    fields.emplace_back(field);
    if (!last) text.remove_prefix(end + 1);
  }
  const int found = static_cast<int>(fields.size());
  return count == 0 || found == count ? found : -1;
}

bool BaseCgilet::applyInt(std::int32_t* field, const char* name) const {
  const auto found = queries.find(name);
  if (found == queries.end()) return false;
  return camera::setIfDifferent(field, camera::leadingInteger(found->second));
}

bool BaseCgilet::changeUnsignedChar(std::uint8_t* field, int value) {
  unsigned changes = 0;
  CommonAPI::isParamChanged(value, field, &changes);
  return changes != 0;
}

int BaseCgilet::getValBySep(const char** cursor, const char* separator, const char* inner, char* first,
                            std::size_t firstSize, char* second, std::size_t secondSize) {
  return camera::nextField(cursor, separator, inner, first, firstSize, second, secondSize);
}

void BaseCgilet::InitArray(bool* flags, int count) {
  for (int i = 0; i < count; ++i) flags[i] = false;
}
