// The dispatcher's table: one line per CGI name, with its handler class.
#include "framework/cgi_table.h"

#include "framework/cgilet.h"

#define CAMERA_CGIS(CGI) CGI("httpport.cgi", HttpPortCgilet)

#define CAMERA_DECLARE_CGI(name, Class) InfCgilet* create##Class();
CAMERA_CGIS(CAMERA_DECLARE_CGI)
#undef CAMERA_DECLARE_CGI

namespace camera {
namespace {

#define CAMERA_CGI_ENTRY(name, Class) {name, create##Class},
constexpr CgiEntry kTable[] = {CAMERA_CGIS(CAMERA_CGI_ENTRY)};
#undef CAMERA_CGI_ENTRY

}  // namespace

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
