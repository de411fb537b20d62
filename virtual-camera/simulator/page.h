// /simulator of the web server: the commands of `./run sim`, for the console.
#pragma once

namespace camera::simulator {

// Serves one CGI request. A GET lists the commands that the product has; a POST with the parameter "command"
// carries one out. Only a client on this machine may do either.
void serveRequest();

}  // namespace camera::simulator
