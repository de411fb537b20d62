// The read of httpport.cgi as it would be written with streams.
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

int main(int, char** argv) {
  const std::string self = argv[0];
  std::ifstream file(self.substr(0, self.rfind('/') + 1) + "settings");
  std::string port;
  std::getline(file, port, '=');
  std::getline(file, port);
  std::ostringstream reply;
  reply << "httpport=" << port << '\n';
  std::cout << "Status: 200 OK\r\nContent-Type: text/plain; charset=utf-8\r\nContent-Length: "
            << reply.str().size() << "\r\n\r\n"
            << reply.str();
  return 0;
}
