// Derives the description from the endpoints' rows and constants.
#include "api/openapi.h"

#include <algorithm>

#include "framework/checks.h"
#include "framework/json.h"
#include "framework/reply.h"
#include "platform/text.h"

namespace camera::api {
namespace {

constexpr const char* kSubsystems[] = {"Device", "Network", "Picture and sound", "Events", "Pan and tilt",
                                       "Users",  "SD card"};
constexpr const char* kSubsystemSentences[] = {
    "What the camera is, its clock, and its restart.",
    "Addresses, ports, and the clients of network services.",
    "The image sensor, the video and audio profiles, and what belongs to them.",
    "What the camera detects, and what it does then.",
    "The pan/tilt head: movements, presets and patrols.",
    "The accounts and their groups.",
    "The SD card and the recordings on it.",
};

constexpr char kAnySchema[] = "{}";
constexpr char kTextSchema[] = R"("type":"string")";
constexpr char kNumberSchema[] = R"("type":"integer")";

std::string braced(std::string_view members) {
  return joined({"{", members, "}"});
}

std::string enumOf(Words words) {
  const bool numbers = areNumbers(words);
  JsonArray values;
  for (const char* const& word : words) {
    const bool isGap = *word == '\0' && &word != words.data();
    if (!isGap) values.add(numbers ? word : jsonString(word));
  }
  return joined({numbers ? kNumberSchema : kTextSchema, ",\"enum\":", values.text()});
}

// A regular expression for the characters of a text; empty if it may hold any.
std::string patternOf(const ParamRow& row) {
  if (row.characters.any) return {};
  std::string set;
  if (row.characters.letters) set += "A-Za-z";
  if (row.characters.digits) set += "0-9";
  if (row.characters.hexDigits) set += "0-9A-Fa-f";
  for (const char c : std::string_view{row.extra}) {
    if (std::string_view{"\\]^-["}.find(c) != std::string_view::npos) set += '\\';
    set += c;
  }
  return "^[" + set + "]*$";
}

bool hasWord(std::string_view words, std::string_view word) {
  while (!words.empty()) {
    if (takeUntil(' ', &words) == word) return true;
  }
  return false;
}

std::string rowSchema(const ParamRow& row, const void* state) {
  const Bounds bounds = boundsOf(row, state);
  const Decimal min(bounds.min);
  const Decimal max(bounds.max);
  switch (row.kind) {
    case ParamKind::kInteger:
      return joined({kNumberSchema, ",\"minimum\":", min.text(), ",\"maximum\":", max.text()});
    case ParamKind::kChoice:
      return enumOf(wordsOf(row, state));
    case ParamKind::kText: {
      const bool isKnown = state != nullptr || row.boundsOf == nullptr;
      std::string schema = kTextSchema;
      if (isKnown && bounds.min > 0) schema += joined({",\"minLength\":", min.text()});
      if (isKnown && bounds.max < INT32_MAX) schema += joined({",\"maxLength\":", max.text()});
      if (const std::string pattern = patternOf(row); !pattern.empty())
        schema += ",\"pattern\":" + jsonString(pattern);
      return schema;
    }
    default:
      return kTextSchema;
  }
}

// The value of the row's field in the state, as JSON; empty without a field or a state.
std::string valueOf(const ParamRow& row, const void* state) {
  if (row.field == nullptr || state == nullptr) return {};
  Reply reply;
  reply.useJson();
  ParamList{.rows = {&row, 1}}.reply(reply, state);
  const std::string json = reply.json();
  const std::size_t start = json.find(':');
  return start == json.npos ? "" : json.substr(start + 1, json.size() - start - 2);
}

std::string response(std::string_view when, std::string_view schema) {
  JsonObject json;
  json.addValue("schema", schema);
  JsonObject text;
  text.addValue("schema", braced(kTextSchema));
  JsonObject types;
  if (!schema.empty()) types.addValue("application/json", json.text());
  types.addValue("text/plain", text.text());
  JsonObject response;
  response.add("description", when);
  response.addValue("content", types.text());
  return response.text();
}

std::string referenceTo(std::string_view kind, std::string_view name) {
  return joined({R"({"$ref":"#/components/)", kind, "/", name, "\"}"});
}

// The codes that are described once for all endpoints.
struct Failure {
  int code;
  bool isText;  // the web server answers
  const char* when;
};
constexpr Failure kFailures[] = {
    {307, false, "The file is at the Location header."},
    {400, false, "A parameter is unknown, missing or not accepted."},
    {401, true, "The name and password of an account are missing or wrong."},
    {403, true, "The account may not make this request."},
    {404, false, "The camera does not have the feature."},
    {409, false, "The state of the camera does not allow the request now."},
    {500, false, "Settings cannot be read or stored, or a part of the camera does not answer."},
};

constexpr char kRefusalSchema[] =
    R"({"type":"object","description":"Why the request was rejected.","properties":{)"
    R"("error":{"type":"integer","description":"The status code."},)"
    R"("parameter":{"type":"string","description":"The parameter at fault, if one is."},)"
    R"("message":{"type":"string","description":"What is accepted, or why the request is not, for people."}},)"
    R"("required":["error"],"additionalProperties":false})";
constexpr char kLogin[] =
    R"({"login":{"type":"http","scheme":"digest","description":"Needed once the administrator has a password."}})";

const void* stateOf(const Api& api, const ProductInfo& product) {
  return api.state == nullptr ? nullptr : api.state(product);
}

bool isSwitch(std::string_view schema) {
  return schema.ends_with(R"("enum":["off","on"])") || schema.ends_with(R"("enum":["no","yes"])");
}

// The description of one endpoint for one product: its GET and POST, and its JSON reply.
class Operation {
 public:
  Operation(const Described& described, const ProductInfo& product)
      : described_(described), product_(product) {
    for (const ApiParam& param : api().params) {
      const std::string schema = schemaOf(param, api(), product_);
      if (!schema.empty()) addParam(param, schema);
    }
  }

  std::string id() const { return std::string{described_.name.substr(0, described_.name.find('.'))}; }

  std::string replySchema() const {
    if (!api().reply.empty()) return objectSchema({api().reply.begin(), api().reply.end()}, true);
    std::vector<ApiKey> keys;
    for (const ParamRow& row : api().rows.rows) {
      if (row.field != nullptr) keys.push_back({.name = row.name});
    }
    return objectSchema(keys, true);
  }

  std::string path() const {
    JsonObject path;
    path.addValue("get", operation(false));
    if (!properties_.empty()) path.addValue("post", operation(true));
    return path.text();
  }

 private:
  struct Property {
    std::string name;
    std::string schema;  // members
    std::string extras;  // further members, each after a comma
    std::string meaning;
    std::string example;
    bool isRequired;
  };

  const Api& api() const { return *described_.api; }
  bool takesParams() const { return !properties_.empty() || api().rows.unknown == UnknownNames::kIgnore; }

  // A schema of the endpoint's own may end with what it adds to the description.
  void addParam(const ApiParam& param, std::string schema) {
    const void* state = stateOf(api(), product_);
    const ParamRow* row = api().rows.find(param.name);
    const std::size_t end = std::min(schema.find(",\"x-"), schema.size());
    std::string extras = schema.substr(end);
    schema.resize(end);
    if (const std::string value = row == nullptr ? "" : valueOf(*row, state); !value.empty())
      extras += ",\"x-factory\":" + value;
    if (param.unit != nullptr) extras += ",\"x-unit\":" + jsonString(param.unit);
    if (row != nullptr && row->accepted != nullptr)
      extras += ",\"x-accepted\":" + jsonString(acceptedBy(*row, state));
    if (hasWord(api().dependent, param.name)) extras += ",\"x-depends\":true";
    if (hasWord(api().lenient, param.name)) extras += ",\"x-lenient\":true";
    const std::string example = param.example == nullptr            ? ""
                                : schema.starts_with(kNumberSchema) ? param.example
                                                                    : jsonString(param.example);
    const bool isRequired = described_.needsParams && row != nullptr && row->isRequired;
    properties_.push_back({param.name, schema, extras, meaningOf(param, described_), example, isRequired});
  }

  std::string operation(bool isPost) const {
    JsonObject operation;
    operation.add("operationId", (isPost ? "post_" : "get_") + id());
    operation.add("summary", api().summary);
    JsonArray tags;
    tags.add(jsonString(nameOf(api().subsystem)));
    operation.addValue("tags", tags.text());
    operation.add("x-privilege", described_.privilege);
    operation.add("x-records", api().records);
    if (isPost)
      operation.addValue("requestBody", body());
    else if (!properties_.empty())
      operation.addValue("parameters", parameters());
    operation.addValue("responses", responses());
    return operation.text();
  }

  std::string parameters() const {
    JsonArray list;
    for (const Property& property : properties_) {
      JsonObject param;
      param.add("name", property.name);
      param.add("in", "query");
      if (property.isRequired) param.addValue("required", "true");
      param.add("description", property.meaning);
      param.addValue("schema", braced(property.schema + property.extras));
      if (!property.example.empty()) param.addValue("example", property.example);
      list.add(param.text());
    }
    return list.text();
  }

  std::string body() const {
    JsonObject types;
    for (const bool isJson : {false, true}) {
      JsonObject media;
      media.addValue("schema", bodySchema(isJson));
      types.addValue(isJson ? "application/json" : "application/x-www-form-urlencoded", media.text());
    }
    JsonObject body;
    body.addValue("content", types.text());
    return body.text();
  }

  // JSON may also have true and false for a switch, and an array for a list.
  std::string bodySchema(bool isJson) const {
    JsonObject properties;
    JsonArray required;
    for (const Property& property : properties_) {
      const ParamRow* row = api().rows.find(property.name);
      const bool isList = isJson && row != nullptr && *row->separators != '\0';
      const std::string other = isJson && isSwitch(property.schema) ? R"({"type":"boolean"})"
                                : isList ? R"({"type":"array","items":{"type":"string"}})"
                                         : "";
      const std::string meaning = property.extras + ",\"description\":" + jsonString(property.meaning);
      properties.addValue(property.name, other.empty() ? braced(property.schema + meaning)
                                                       : joined({"{\"anyOf\":[{", property.schema, "},",
                                                                 other, "]", meaning, "}"}));
      if (property.isRequired) required.add(jsonString(property.name));
    }
    JsonObject schema;
    schema.add("type", "object");
    schema.addValue("properties", properties.text());
    if (!required.empty()) schema.addValue("required", required.text());
    return schema.text();
  }

  // The type alone: what is stored may be more than a request may give.
  std::string parameterType(std::string_view name) const {
    const auto property = std::find_if(properties_.begin(), properties_.end(),
                                       [name](const Property& p) { return p.name == name; });
    if (property == properties_.end()) return {};
    const ParamRow* row = api().rows.find(name);
    if (row != nullptr && *row->separators != '\0') return R"("type":"array","items":{"type":"string"})";
    std::string schema = property->schema;
    if (schema.find("\"enum\":") == schema.npos) return schema.substr(0, schema.find(','));
    return schema;
  }

  std::string keySchema(const ApiKey& key) const {
    switch (key.type) {
      case ApiType::kLikeParameter:
        return parameterType(key.name);
      case ApiType::kNumber:
        return kNumberSchema;
      case ApiType::kText:
        return key.words.empty() ? kTextSchema : enumOf(key.words);
      case ApiType::kNumbers:
      case ApiType::kTexts:
        return joined({R"("type":"array","items":{)",
                       key.type == ApiType::kNumbers ? kNumberSchema : kTextSchema, "}"});
      case ApiType::kObjects:
        return R"("type":"array","items":)" + objectSchema(key.members, false);
      default:
        return {};
    }
  }

  std::string meaningOfKey(const ApiKey& key) const {
    if (key.meaning != nullptr) return key.meaning;
    for (const Property& property : properties_) {
      if (property.name == key.name) return property.meaning;
    }
    return {};
  }

  std::string objectSchema(std::span<const ApiKey> keys, bool isReply) const {
    JsonObject properties;
    JsonObject patterns;
    JsonArray required;
    for (const ApiKey& key : keys) {
      std::string members = keySchema(key);
      const bool isLacking = members.empty() && (key.type != ApiType::kAny || meaningOfKey(key).empty());
      if (isLacking) continue;  // a parameter that this camera does not have
      members += joined({members.empty() ? "" : ",", "\"description\":", jsonString(meaningOfKey(key))});
      std::string name = key.name;
      const std::size_t number = name.find('#');
      if (number != name.npos) {
        patterns.addValue("^" + name.replace(number, 1, "[0-9]+") + "$", braced(members));
        continue;
      }
      properties.addValue(name, braced(members));
      if (!key.isOptional) required.add(jsonString(name));
    }
    if (isReply && takesParams()) {
      properties.addValue(
          "ignored",
          R"({"type":"array","items":{"type":"string"},"description":"The parameters that had no effect."})");
      if (api().rows.find("httpport") != nullptr)
        properties.addValue(
            "warnings",
            R"({"type":"array","items":{"type":"string"},"description":"What is stored but not in effect."})");
    }
    JsonObject schema;
    schema.add("type", "object");
    schema.addValue("properties", properties.text());
    if (patterns.text() != kAnySchema) schema.addValue("patternProperties", patterns.text());
    if (!required.empty()) schema.addValue("required", required.text());
    schema.addValue("additionalProperties", "false");
    return schema.text();
  }

  // What the endpoint's own constants say of a code.
  std::string ownReason(int code) const {
    for (const ApiCode& own : api().codes) {
      if (own.code == code) return own.when;
    }
    return {};
  }

  bool canAnswer(const Failure& failure) const {
    if (failure.code == 404) return api().feature != nullptr;
    return failure.code != 307 && failure.code != 409;
  }

  std::string responses() const {
    JsonObject responses;
    const std::string done = joined({"Done: the state after the request. ", ownReason(200)});
    responses.addValue("200", response(done, referenceTo("schemas", id())));
    for (const Failure& failure : kFailures) {
      const std::string reason = ownReason(failure.code);
      const Decimal code(failure.code);
      if (!reason.empty()) {
        responses.addValue(code.text(),
                           response(joined({failure.when, " ", reason}), referenceTo("schemas", "Refusal")));
      } else if (canAnswer(failure)) {
        responses.addValue(code.text(), referenceTo("responses", code.text()));
      }
    }
    return responses.text();
  }

  const Described& described_;
  const ProductInfo& product_;
  std::vector<Property> properties_;
};

}  // namespace

const char* nameOf(Subsystem subsystem) {
  return kSubsystems[static_cast<std::size_t>(subsystem)];
}

std::map<std::string, std::string, std::less<>> parseAccess(std::string_view text) {
  std::map<std::string, std::string, std::less<>> privileges;
  while (!text.empty()) {
    std::string_view line = takeUntil('\n', &text);
    const std::string_view name = takeUntil(' ', &line);
    const std::size_t start = line.find_first_not_of(' ');
    if (name.ends_with(".cgi") && start != line.npos) privileges.emplace(name, line.substr(start));
  }
  return privileges;
}

std::string meaningOf(const ApiParam& param, const Described& described) {
  const ParamRow* row = described.api->rows.find(param.name);
  const bool isOnly = described.api->params.count == 1;
  const bool isNeeded = row != nullptr && row->isRequired && !described.needsParams && !isOnly;
  return joined({param.meaning, isNeeded ? " Required if another parameter is given." : ""});
}

std::string schemaOf(const ApiParam& param, const Api& api, const ProductInfo& product) {
  const std::string own = api.schema == nullptr ? "" : api.schema(param.name, product);
  if (!own.empty()) return own == "-" ? "" : own;
  const ParamRow* row = api.rows.find(param.name);
  const void* state = stateOf(api, product);
  if (row == nullptr || (state != nullptr && !isHandled(*row, state))) return {};
  return rowSchema(*row, state);
}

bool isOffered(const Api& api, const ProductInfo& product) {
  if (api.feature != nullptr && !(product.*api.feature)) return false;
  return api.isOffered == nullptr || api.isOffered(product);
}

std::string openApi(std::span<const Described> endpoints, const ProductInfo& product,
                    std::string_view version) {
  JsonObject info;
  info.add("title", "camera-cgi");
  info.add("version", version);
  info.add("description", "The HTTP interface of a network camera, for the product that is on.");
  info.addValue("license", R"({"name":"The license of the project","identifier":"LicenseRef-camera-cgi"})");
  JsonArray tags;
  for (std::size_t i = 0; i < std::size(kSubsystems); ++i) {
    JsonObject tag;
    tag.add("name", kSubsystems[i]);
    tag.add("description", kSubsystemSentences[i]);
    tags.add(tag.text());
  }
  JsonObject paths;
  JsonObject schemas;
  schemas.addValue("Refusal", kRefusalSchema);
  for (const Described& described : endpoints) {
    if (!isOffered(*described.api, product)) continue;
    const Operation operation(described, product);
    paths.addValue(joined({"/cgi-bin/", described.name}), operation.path());
    schemas.addValue(operation.id(), operation.replySchema());
  }
  JsonObject responses;
  for (const Failure& failure : kFailures) {
    if (failure.code == 307 || failure.code == 409) continue;  // always described with their own reason
    const std::string schema = failure.isText ? "" : referenceTo("schemas", "Refusal");
    responses.addValue(Decimal(failure.code).text(), response(failure.when, schema));
  }
  JsonObject components;
  components.addValue("securitySchemes", kLogin);
  components.addValue("schemas", schemas.text());
  components.addValue("responses", responses.text());
  JsonObject document;
  document.add("openapi", "3.1.0");
  document.addValue("info", info.text());
  document.addValue("servers", R"([{"url":"/"}])");
  document.addValue("security", R"([{"login":[]},{}])");
  document.addValue("tags", tags.text());
  document.addValue("paths", paths.text());
  document.addValue("components", components.text());
  return document.text();
}

std::string indented(std::string_view json) {
  std::string text;
  std::size_t depth = 0;
  bool isInString = false;
  bool isEscaped = false;
  const auto breakLine = [&] { text.append("\n").append(depth, ' '); };
  for (std::size_t i = 0; i < json.size(); ++i) {
    const char c = json[i];
    if (c == '"' && !isEscaped) isInString = !isInString;
    isEscaped = c == '\\' && !isEscaped;
    const bool closes = !isInString && (c == '}' || c == ']');
    const bool opens = !isInString && (c == '{' || c == '[');
    const bool isEmpty = closes && (json[i - 1] == '{' || json[i - 1] == '[');
    if (closes) --depth;
    if (closes && !isEmpty) breakLine();
    text += c;
    if (opens) ++depth;
    const bool closesNext = opens && i + 1 < json.size() && (json[i + 1] == '}' || json[i + 1] == ']');
    if ((opens && !closesNext) || (!isInString && c == ',')) breakLine();
    if (!isInString && c == ':') text += ' ';
  }
  return text + "\n";
}

}  // namespace camera::api
