// The base classes of endpoints: three steps, each of which returns a status code, and the settings
// transaction of the request.
#pragma once

#include <cstring>
#include <initializer_list>
#include <string>
#include <string_view>

#include "framework/endpoint_table.h"
#include "framework/params.h"
#include "framework/reply.h"
#include "framework/request.h"
#include "handlers/api.h"
#include "handlers/record_params.h"
#include "platform/product/product_info.h"
#include "platform/store/settings.h"

namespace camera {

// Whether two records differ in any byte.
template <class Record>
bool differ(const Record& left, const Record& right) {
  return std::memcmp(&left, &right, sizeof left) != 0;
}

// What an endpoint does with parameters. A failure of load takes precedence, except with kNothing.
enum class Takes : std::uint8_t {
  kChanges,  // applies them; without any, it reports the state
  kCommand,  // applies them; without any, it rejects the request
  kNothing,  // rejects them with 400, even if load failed
};

// Serves one request: loads, reads the request, applies it if there are parameters, replies. If the store
// refuses a write because another client changed the settings after they were loaded, load and apply run
// again on what is stored now, so that no request fails because another came at the same moment.
class Endpoint {
 public:
  Endpoint(const Endpoint&) = delete;
  Endpoint& operator=(const Endpoint&) = delete;

  static constexpr bool kNeedsParams = false;

  // Reads the request, answers it and writes the reply.
  void serve();

  // Returns 400, with the message "NAME: WHAT": what is accepted, or why the value is not.
  int refuse(std::string_view name, std::string_view what);
  // Returns the code, with that message.
  int fail(int code, std::string_view why);

 protected:
  explicit Endpoint(const ParamList& params, Takes takes = Takes::kChanges)
      : params_(params), takes_(takes) {}
  virtual ~Endpoint() = default;

  // The steps. Each returns 200, or the code that refuse or fail returned. load reads what the endpoint
  // needs. apply checks the parameters and carries them out; load and apply may run several times. reply
  // appends the lines; it may also return 307, a redirect, and carry out what must run only once.
  virtual int load() { return 200; }
  virtual int apply() = 0;
  virtual int reply() = 0;

  const Queries& queries() const { return request_.params; }
  bool isGiven(std::size_t row) const { return (given_ >> row & 1) != 0; }

  // Stores the parameters in the state, which must be of the table's type. Returns 200, or 400 with the state
  // perhaps half written: pass a copy of one that is still needed.
  int takeParams(void* state);
  // Adds a parameter that has no effect to those that the log, and a JSON reply, names after the request.
  void noteIgnored(std::string_view name) { ignored_.emplace_back(name); }
  // Adds what a JSON reply says beside its members, such as a stored port that is not in use.
  void warn(std::string_view text);
  // Warns if the web server listens on none of the stored ports: they may be taken.
  void warnOfPort(std::initializer_list<int> stored);
  // Appends the table's lines for such a state.
  void showParams(const void* state) { params_.reply(reply_, state); }
  // Rejects a request that lacks parameters; names the first required one.
  int refuseMissing();
  // Rejects a value, with the row's description of what it accepts.
  int refuseValue(std::size_t row);
  int refuse(Refusal refusal);
  // Whether the endpoint has a parameter of that name, and the words that it accepts. If "off" and "on", or
  // "no" and "yes", are among them, JSON may give false and true.
  virtual bool knows(std::string_view name) const { return params_.find(name) != nullptr; }
  virtual Words wordsOf(std::string_view name) const;

  void pair(std::string_view key, std::string_view value) { reply_.pair(key, value); }
  void pair(std::string_view key, int value) { reply_.pair(key, value); }
  void list(std::string_view key, std::string_view items, ListOf kind = ListOf::kTexts) {
    reply_.list(key, items, kind);
  }
  void number(std::string_view key, std::string_view digits) { reply_.number(key, digits); }
  void value(std::string_view key, std::string_view json) { reply_.value(key, json); }
  bool isJson() const { return reply_.isJson(); }
  Reply& fullReply() { return reply_; }

  // The product information. Null, with the message set, if it cannot be read.
  const ProductInfo* product();
  // Returns 200 if the camera has the feature, otherwise 404; 500 if the product information cannot be read.
  int require(Feature feature);

  // Fills the records in order, up to the first that cannot be read. Returns 200 or 500.
  template <class... Records>
  int read(Records&... records) {
    return (... && readRecord(kIndexOf<Records>, &records)) ? 200 : 500;
  }

  // The settings transaction. write stores a record, unless an earlier write failed; writeChanged does so
  // only if the record differs from the one read. commit reports what became of the writes: if all succeeded,
  // it runs the action programs of the stored records and returns 200; if the store refused one, it returns
  // the given code; if one failed, 500. Records stored before a failure stay stored.
  template <class Record>
  void write(const Record& record) {
    writeRecord(kIndexOf<Record>, &record);
  }
  template <class Record>
  void writeChanged(const Record& read, const Record& wanted) {
    if (differ(read, wanted)) write(wanted);
  }
  int commit(int refused = 400);

  bool keepsBytes = false;  // values may be invalid UTF-8, as file names may be

 private:
  int answer(const CgiVariables& variables);
  int takeMembers();
  int takeMember(const JsonMember& member);
  int takeBoolean(const JsonMember& member, std::string* text);
  int takeArray(const JsonMember& member, std::string* text);
  int applyUntilStored();
  void reportIgnored();
  bool readRecord(RecordIndex index, void* record);
  void writeRecord(RecordIndex index, const void* record);

  ParamList params_;
  Takes takes_;
  Request request_;
  std::uint64_t given_ = 0;  // a bit for each row of the parameters
  Reply reply_;
  Refusal failure_;
  std::vector<std::string> ignored_;  // names of parameters
  JsonArray warnings_;
  Actions actions_;
  bool isOvertaken_ = false;  // the store refused a write because of another client's change
  StoreResult writeResult_ = StoreResult::kDone;
};

template <class Class>
void EndpointOf<Class>::serve() {
  Class endpoint;
  endpoint.serve();
}

template <class Class>
bool EndpointOf<Class>::needsParams() {
  return Class::kNeedsParams;
}

template <class Class>
const Api& EndpointOf<Class>::api() {
  return kApi<Class>;
}

// Base of the endpoints that only report. They reject every parameter.
class ReadOnlyEndpoint : public Endpoint {
 protected:
  explicit ReadOnlyEndpoint(Takes takes = Takes::kNothing) : Endpoint({}, takes) {}

 private:
  int apply() final;
};

// An endpoint with the parameters of a table.
template <const auto& kParams, Takes kTakes = Takes::kChanges>
class ParamEndpoint : public Endpoint {
 public:
  static constexpr bool kNeedsParams = kTakes == Takes::kCommand;

 protected:
  using State = typename std::remove_cvref_t<decltype(kParams)>::State;
  using Param = ParamOf<kParams>;

  ParamEndpoint() : Endpoint(kParams.list(), kTakes) {}

  bool given(Param param) const { return isGiven(param.row); }

  using Endpoint::refuse;
  int refuse(Param param) { return refuseValue(param.row); }

  void noteIgnored(Param param) {
    if (given(param)) Endpoint::noteIgnored(param.name());
  }

  int take(State* state) { return takeParams(state); }
  void show(const State& state) { showParams(&state); }
};

// Stores the parameters in a copy of its state, checks that copy as a whole, and carries it out.
template <const auto& kParams, Takes kTakes = Takes::kChanges>
class StateEndpoint : public ParamEndpoint<kParams, kTakes> {
 protected:
  using State = typename ParamEndpoint<kParams, kTakes>::State;

  int apply() override {
    State wanted = state;
    int result = this->take(&wanted);
    if (result == 200) result = check(wanted);
    if (result == 200) result = carryOut(wanted);
    if (result == 200) state = wanted;
    return result;
  }

  int reply() override {
    this->show(state);
    return 200;
  }

  // Checks the rules between values; may change values that follow from others. Returns 200, or what refuse
  // or fail returned.
  virtual int check(State& /*wanted*/) { return 200; }
  // Stores the wanted state, or makes the camera act on it.
  virtual int carryOut(State& wanted) = 0;

  State state{};  // as load read it; after a successful apply, the wanted one
};

// An endpoint whose state is one settings record. Returns 404 on cameras that lack kFeature.
template <const auto& kParams, Feature kFeature = nullptr>
class RecordEndpoint : public StateEndpoint<kParams> {
 protected:
  using State = typename StateEndpoint<kParams>::State;

  int load() override {
    const int result = kFeature == nullptr ? 200 : this->require(kFeature);
    return result == 200 ? this->read(this->state) : result;
  }

  int carryOut(State& wanted) override {
    this->writeChanged(this->state, wanted);
    return this->commit();
  }
};

}  // namespace camera
