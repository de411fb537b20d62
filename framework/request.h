// The request from the web server.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "framework/form.h"
#include "framework/json.h"

namespace camera {

struct Request {
  Queries params;                   // empty if the request cannot be read
  std::vector<JsonMember> members;  // the booleans and arrays of a JSON body; the rest is in params
  std::string error;                // the message if the request cannot be read, otherwise empty
};

// The CGI variables that describe a request; empty if they are not set. The views point into the environment.
struct CgiVariables {
  std::string_view accept;  // the header
  std::string_view contentLength;
  std::string_view contentType;
  std::string_view method;
  std::string_view query;
};
CgiVariables cgiVariables();

// Reads the query string and the body of a POST, at most 64 KiB each, from the CGI variables and standard
// input. The body is a form or a JSON object. Rejects a longer query or body, a body shorter than its
// Content-Length, and any other body. Input after the Content-Length is ignored, because some servers append
// a line end. With keepsBytes, values of a form may be invalid UTF-8, as file names may be. The request must
// be new.
void readRequest(const CgiVariables& variables, bool keepsBytes, Request* request);

// True if an Accept header prefers application/json to text/plain, by its quality values.
bool prefersJson(std::string_view accept);

}  // namespace camera
