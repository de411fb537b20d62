// What every endpoint is: three steps that give a result code each, and the settings transaction of the
// request.
#pragma once

#include <cstring>
#include <optional>
#include <span>
#include <string>

#include "framework/cgilet.h"
#include "framework/params.h"
#include "platform/product/product_info.h"
#include "platform/store/settings.h"

namespace camera {

// A field of the product information that is 1 where the camera has the part.
using Feature = std::uint8_t ProductInfo::*;

// Whether two records differ in any byte.
template <class Record>
bool differ(const Record& left, const Record& right) {
  return std::memcmp(&left, &right, sizeof left) != 0;
}

// What the parameters of a request are to an endpoint.
enum class Takes : std::uint8_t {
  kChanges,          // applied when load gave 200; without any, the state is answered
  kCommand,          // applied when load gave 200; without any, the request is bad
  kNothing,          // any makes the request bad, whatever load gave
  kNothingIfLoaded,  // any makes the request bad, unless load failed with a code of its own
};

// When a write is refused because another client changed the settings after they were read, load and apply
// are done again on what is stored now: no request fails because another came at the same moment.
class Endpoint : public InfCgilet {
 public:
  void onLoad() final;
  void onApply() final;
  void onReply() final;
  std::span<const ParamRow> parameters() const final { return params_.rows; }

  // Whether the request gave the parameter, which must be one of the table.
  bool given(std::string_view name) const { return given_.has(name); }

  // Gives 400 and says what would be accepted, by default what the parameter's row says.
  int refuse(std::string_view name, std::string_view accepted);
  int refuse(std::string_view name);
  // Gives the code, and says why.
  int fail(int code, std::string_view why);

 protected:
  explicit Endpoint(const ParamList& params, Takes takes = Takes::kChanges)
      : params_(params), takes_(takes), given_(params.rows) {}

  // The steps. Each gives 200, or the code of a failure of which it has said why with refuse or fail. load
  // reads what the request needs, also a second time; apply checks the parameters and carries them out; reply
  // appends the lines.
  virtual int load() { return 200; }
  virtual int apply() = 0;
  virtual int reply() = 0;

  // The product information, read at the first call; null, with the failure said, when it cannot be read.
  const ProductInfo* product();
  // 200 where the camera has the part, otherwise 404; 500 where the product information cannot be read.
  int require(Feature feature);

  // Fills the records in order, up to the first that cannot be read. 200 or 500.
  template <class... Records>
  int read(Records&... records) {
    return (... && readRecord(kIndexOf<Records>, &records)) ? 200 : 500;
  }

  // Takes the request's parameters into the state, a copy and of the type that the table is for. 200 or 400.
  int take(void* state);
  // Appends the table's lines of such a state.
  void show(const void* state);

  // The settings transaction. write stores a record, unless a write before it failed; writeChanged only one
  // that differs from the one read. commit runs the actions of all that was written and gives 200; 400 after
  // a refused write, or what a refusal is instead; 500 after a failed one. What was written before a failure
  // stays.
  template <class Record>
  void write(const Record& record) {
    writeRecord(kIndexOf<Record>, &record);
  }
  template <class Record>
  void writeChanged(const Record& read, const Record& wanted) {
    if (differ(read, wanted)) write(wanted);
  }
  int commit(int refused = 400);

 private:
  bool readRecord(RecordIndex index, void* record);
  void writeRecord(RecordIndex index, const void* record);
  int applyAgain();
  std::string missingParam() const;

  ParamList params_;
  Takes takes_;
  GivenParams given_;
  std::optional<ProductInfo> product_;
  Actions actions_;
  bool isOvertaken_ = false;  // another client's change is why a write was refused
  StoreResult writeResult_ = StoreResult::kDone;
};

// Reads and answers; takes no parameter.
class ReadOnlyEndpoint : public Endpoint {
 protected:
  explicit ReadOnlyEndpoint(Takes takes = Takes::kNothing) : Endpoint({}, takes) {}

 private:
  int apply() final;
};

// Takes its parameters into a copy of its state, checks that copy as a whole, and stores it or carries it
// out.
template <class State>
class StateEndpoint : public Endpoint {
 protected:
  explicit StateEndpoint(const ParamTable<State>& params, Takes takes = Takes::kChanges)
      : Endpoint(params, takes) {}

  int apply() override {
    State wanted = state;
    int result = take(&wanted);
    if (result == 200) result = check(wanted);
    if (result == 200) result = carryOut(wanted);
    if (result == 200) state = wanted;
    return result;
  }

  int reply() override {
    show(&state);
    return 200;
  }

  // The rules between values; may change what follows from them. 200 or the code of a refusal.
  virtual int check(State& /*wanted*/) { return 200; }
  // Makes the wanted state the camera's.
  virtual int carryOut(State& wanted) = 0;

  State state{};  // as load read it; after apply, as it is then
};

// One settings record that a table describes, maybe of a part that not every camera has.
template <class Record>
class RecordEndpoint : public StateEndpoint<Record> {
 protected:
  explicit RecordEndpoint(const ParamTable<Record>& params, Feature feature = nullptr)
      : StateEndpoint<Record>(params), feature_(feature) {}

  int load() override {
    const int result = feature_ == nullptr ? 200 : this->require(feature_);
    return result == 200 ? this->read(this->state) : result;
  }

  int carryOut(Record& wanted) override {
    this->writeChanged(this->state, wanted);
    return this->commit();
  }

 private:
  Feature feature_;
};

}  // namespace camera
