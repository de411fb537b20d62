// io.cgi: reports the digital inputs and outputs, and switches the outputs.
#include <algorithm>

#include "handlers/endpoint.h"
#include "handlers/events/daemon_command.h"
#include "handlers/numbered.h"

namespace camera {
namespace {

// The wanted states of the outputs that the request gives: 1 on, 0 off.
struct Switches {
  std::int32_t out1;
  std::int32_t out2;
  std::int32_t out3;
  std::int32_t out4;
};

constexpr auto kParams = paramRows<Switches>(
    choiceParam<&Switches::out1>("out1", kOffOn), choiceParam<&Switches::out2>("out2", kOffOn),
    choiceParam<&Switches::out3>("out3", kOffOn), choiceParam<&Switches::out4>("out4", kOffOn));
static_assert(kParams.rows.size() == kMostLines);

// Returns how many of the product's lines the daemon has commands for.
int handledLines(std::uint32_t count) {
  return static_cast<int>(std::min<std::uint32_t>(count, kMostLines));
}

}  // namespace

class IoEndpoint final : public ParamEndpoint<kParams> {
  int load() override {
    const ProductInfo* info = product();
    if (info == nullptr) return 500;
    inputs_ = handledLines(info->input_count);
    outputs_ = handledLines(info->output_count);
    return inputs_ + outputs_ > 0 ? 200 : fail(404, "this camera has no digital inputs and outputs");
  }

  // An output that the product does not have is an unknown parameter. Outputs that were switched before a
  // failure stay switched.
  int apply() override {
    for (const ParamRow& row : std::span{kParams.rows}.subspan(static_cast<std::size_t>(outputs_))) {
      if (queries().find(row.name) != queries().end()) return refuse(unknownParam(row.name));
    }
    Switches wanted{};
    if (take(&wanted) != 200) return 400;
    const std::int32_t states[] = {wanted.out1, wanted.out2, wanted.out3, wanted.out4};
    for (std::size_t i = 0; i < kParams.rows.size(); ++i) {
      if (!isGiven(i)) continue;
      const std::int32_t first = states[i] != 0 ? kSwitchOutputOn : kSwitchOutputOff;
      if (command(first + static_cast<std::int32_t>(i)) != 200) return 500;
    }
    return 200;
  }

  // A request that switches outputs gets a reply of the outputs alone.
  int reply() override {
    const struct {
      const char* name;
      std::int32_t readFirst;
      int count;
    } kinds[] = {{"in", kReadInput, queries().empty() ? inputs_ : 0}, {"out", kReadOutput, outputs_}};
    for (int i = 0; i < kMostLines; ++i) {
      for (const auto& [name, readFirst, count] : kinds) {
        if (i < count && report(name, readFirst, i) != 200) return 500;
      }
    }
    return 200;
  }

  int report(const char* kind, std::int32_t readFirst, int index) {
    std::int32_t state = 0;
    const int result = command(readFirst + index, &state);
    pair(numbered(kind, index + 1), kOffOn[state == 1 ? 1 : 0]);
    return result;
  }

  int command(std::int32_t code, std::int32_t* state = nullptr) {
    DaemonAnswer answer;
    if (!askDaemon(daemonClient(), kIoDaemon, code, 0, &answer))
      return fail(500, "the I/O daemon does not answer");
    if (answer.result != 0) return fail(500, "the I/O daemon refuses");
    if (state != nullptr) *state = answer.state;
    return 200;
  }

  int inputs_ = 0;
  int outputs_ = 0;
};

template <>
const Api kApi<IoEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kEvents,
     .summary = "The current states of the digital inputs and outputs, and the switches of the outputs.",
     .params = {{"out1", "Switches the first output; unknown on a camera without it."},
                {"out2", "Switches the second output; unknown on a camera without it."},
                {"out3", "Switches the third output; unknown on a camera without it."},
                {"out4", "Switches the fourth output; unknown on a camera without it."}},
     .reply = {{.name = "in#",
                .type = ApiType::kText,
                .meaning = "Whether the input is on, for each of the first four inputs, before the output of "
                           "that number; missing in the reply to a request with parameters.",
                .words = kOffOn,
                .isOptional = true},
               {"out1"},
               {"out2"},
               {"out3"},
               {"out4"}},
     .codes = {{404, "The camera has no digital inputs and outputs."}},
     .isOffered = [](const ProductInfo& product) { return product.input_count + product.output_count > 0; },
     .schema = [](std::string_view param, const ProductInfo& product) -> std::string {
       return param.back() - '0' > handledLines(product.output_count) ? "-" : "";
     }});
template struct EndpointOf<IoEndpoint>;

}  // namespace camera
