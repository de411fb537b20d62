// What a description of the HTTP interface says about an endpoint beyond its parameter rows. The constants
// stand beside the rows in the endpoint's own file. camera-api prints them; camera-cgi does not link them.
#pragma once

#include <array>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "framework/params.h"
#include "platform/product/product_info.h"

namespace camera {

// A field of the product information: whether the camera has the feature.
using Feature = bool ProductInfo::*;

// A constant list of at most N items.
template <class Item, std::size_t N>
struct ApiList {
  std::array<Item, N> items{};
  std::size_t count = 0;

  constexpr ApiList(std::initializer_list<Item> given) {
    for (const Item& item : given) items[count++] = item;
  }
  constexpr const Item* begin() const { return items.data(); }
  constexpr const Item* end() const { return items.data() + count; }
  constexpr bool empty() const { return count == 0; }
};

// A parameter, in the order of the rows. Ignored rows need none.
struct ApiParam {
  const char* name = nullptr;
  const char* meaning = nullptr;  // a sentence
  const char* unit = nullptr;
  const char* example = nullptr;  // a value, where the schema does not lead to one that is accepted
  const char* values = nullptr;   // for readers, where the row's own text says too little
};

enum class ApiType : std::size_t { kLikeParameter, kNumber, kText, kNumbers, kTexts, kObjects, kAny };

// A key of the reply. "#" in a name stands for a number: "input#" for "input1", "input2" and so on.
struct ApiKey {
  const char* name = nullptr;
  ApiType type = ApiType::kLikeParameter;
  const char* meaning = nullptr;      // a sentence; of a parameter's key, that of the parameter
  Words words{};                      // of a text: all that it can be
  std::span<const ApiKey> members{};  // of objects
  bool isOptional = false;            // some replies leave it out
};

struct ApiCode {
  int code = 0;
  const char* when = nullptr;  // a sentence
};

enum class Subsystem : std::uint8_t { kDevice, kNetwork, kPicture, kEvents, kPanTilt, kUsers, kCard };

struct Api {
  Subsystem subsystem;
  const char* summary;  // a sentence
  const char* records =
      "none";  // the settings records that a change writes, then what else it reads, as api.md has it
  Feature feature = nullptr;  // a camera without it answers 404
  // Names of parameters, separated by spaces: those that other settings or the camera's state can make it
  // reject, and those that accept more than their schema says.
  std::string_view dependent{};
  std::string_view lenient{};
  ApiList<ApiParam, 24> params{};
  ApiList<ApiKey, 48> reply{};  // empty: the rows that have a field
  ApiList<ApiCode, 4> codes{};  // besides 200, and 400 for what a parameter does not accept
  ParamList rows{};             // filled by describes()
  bool (*isOffered)(const ProductInfo& product) = nullptr;  // for what no single feature decides
  // A state with the factory settings of such a camera; null: the rows need none. The rows take bounds and
  // words of it, and the description shows its values.
  const void* (*state)(const ProductInfo& product) = nullptr;
  // The members of a parameter's JSON schema on such a camera, without braces: "\"type\":\"integer\"". Null,
  // or an empty text: those of the row. "-": this camera has no such parameter.
  std::string (*schema)(std::string_view param, const ProductInfo& product) = nullptr;
};

// Adds the rows of a table. Each row that is not ignored must have a sentence, in the same order; otherwise
// this does not compile.
template <const auto& kParams>
consteval Api describes(Api api) {
  std::size_t next = 0;
  for (const ParamRow& row : kParams.rows) {
    if (row.kind == ParamKind::kIgnored) continue;
    if (next == api.params.count || std::string_view{api.params.items[next].name} != row.name)
      failToCompile("a parameter has no sentence, or not at its place");
    ++next;
  }
  if (next != api.params.count) failToCompile("a sentence has no parameter");
  api.rows = kParams.list();
  return api;
}

// A state whose members begin with their factory values.
template <class State>
const void* factoryState(const ProductInfo& /*product*/) {
  static const State kState{};
  return &kState;
}

// The description of an endpoint, by its class. Specialized in the endpoint's own file.
template <class Class>
extern const Api kApi;

}  // namespace camera
