// The dispatcher's table: one line per CGI name, with its handler class.
#include "framework/cgi_table.h"

// At global scope, where the handler classes are: naming one here declares it.
constexpr camera::CgiEntry kTable[] = {
    {"httpport.cgi", camera::create<class HttpPortCgilet>},
};

namespace camera {

std::span<const CgiEntry> cgiTable() {
  return kTable;
}

const CgiEntry* findCgi(std::string_view name) {
  for (const CgiEntry& entry : kTable) {
    if (name == entry.name) return &entry;
  }
  return nullptr;
}

}  // namespace camera
