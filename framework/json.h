// JSON: the values of replies, and the object in the body of a request.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace camera {

// Returns the text as a JSON string. U+FFFD replaces broken UTF-8.
std::string jsonString(std::string_view text);

// True for a decimal integer as JSON writes it: without a plus sign and leading zeros.
bool isJsonInteger(std::string_view text);

// A JSON object under construction. The members keep the order in which their keys first came. A key that
// comes more than once has an array of its values.
class JsonObject {
 public:
  void add(std::string_view key, std::string_view text);
  void add(std::string_view key, std::int64_t number);
  void addValue(std::string_view key, std::string_view json);  // the value is JSON already
  std::string text() const;

 private:
  struct Member {
    std::string key;
    std::string value;
    bool isRepeated = false;  // the value is the items of an array, without its brackets
  };
  std::vector<Member> members_;
};

// A JSON array under construction.
class JsonArray {
 public:
  void add(std::string_view json);  // the item is JSON already
  bool empty() const { return items_.empty(); }
  std::string text() const { return "[" + items_ + "]"; }

 private:
  std::string items_;
};

enum class ListOf : std::uint8_t { kTexts, kNumbers };

// Returns a list that has commas between its items as a JSON array, without empty items. An item
// that is no integer is a string in any case.
std::string jsonList(std::string_view items, ListOf kind = ListOf::kTexts);

// A member of the object in a request's body.
struct JsonMember {
  enum Kind : std::uint8_t { kText, kNumber, kBoolean, kArray };
  std::string name;
  Kind kind = kText;
  std::vector<std::string> texts;  // the value; of an array, its items: texts and numbers
};

// Appends the members of the object that the text is. Returns an empty text, or what is wrong and at which
// byte, counted from 1.
std::string parseJson(std::string_view text, std::vector<JsonMember>* members);

}  // namespace camera
