// The request as the web server hands it over.
#pragma once

#include "framework/form.h"

namespace camera {

struct Request {
  Queries params;               // empty if the request cannot be read
  const char* error = nullptr;  // why it cannot be read, as a refusal says it; null if it can
};

// Reads the query string and the body of a POSTed form, at most 64 KiB each, from the CGI variables and
// standard input. A body that is longer, shorter than its Content-Length or no form is an error; what follows
// a body of the stated length is ignored, because some servers append a line end. With keepsBytes, values may
// be invalid UTF-8, as the names of files are.
Request readRequest(bool keepsBytes);

}  // namespace camera
