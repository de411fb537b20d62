// The dispatcher's table.
#include "framework/endpoint_table.h"

#include "framework/endpoint_list.h"

namespace camera {
namespace {

template <class Class>
struct ServeOf {
  static constexpr auto kValue = EndpointOf<Class>::serve;
};

constexpr const auto& kTable = kEndpoints<EndpointEntry, ServeOf>;

}  // namespace

std::span<const EndpointEntry> endpointTable() {
  return kTable;
}

const EndpointEntry* findEndpoint(std::string_view name) {
  for (const EndpointEntry& entry : kTable) {
    if (entry.name == name) return &entry;
  }
  return nullptr;
}

}  // namespace camera
