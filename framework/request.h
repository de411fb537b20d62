// The request from the web server.
#pragma once

#include "framework/form.h"

namespace camera {

struct Request {
  Queries params;               // empty if the request cannot be read
  const char* error = nullptr;  // the message if the request cannot be read, otherwise null
};

// Reads the query string and the body of a POSTed form, at most 64 KiB each, from the CGI variables and
// standard input. Rejects a longer query or body, a body shorter than its Content-Length, and a body that is
// not a POSTed form. Input after the Content-Length is ignored, because some servers append a line end. With
// keepsBytes, values may be invalid UTF-8, as file names may be.
Request readRequest(bool keepsBytes);

}  // namespace camera
