// The dispatcher's table: CGI names and the handlers behind them.
#pragma once

#include <span>
#include <string_view>

class InfCgilet;

namespace camera {

struct CgiEntry {
  std::string_view name;
  InfCgilet* (*create)();  // a new handler, owned by the caller
};

// Defined for each class of the table where that class is.
template <class Class>
InfCgilet* create();

std::span<const CgiEntry> cgiTable();

// The entry of the name, compared whole and by case; null for a name that is no endpoint.
const CgiEntry* findCgi(std::string_view name);

}  // namespace camera
