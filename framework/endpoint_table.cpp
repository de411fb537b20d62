// The dispatcher's table.
#include "framework/endpoint_table.h"

#include "framework/endpoint_list.h"

namespace camera {

// Each entry also declares the class that it names.
#define CAMERA_ENTRY(name, Class) {name, EndpointOf<class Class>::serve},
constexpr EndpointEntry kTable[] = {CAMERA_ENDPOINTS(CAMERA_ENTRY)};
#undef CAMERA_ENTRY

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
