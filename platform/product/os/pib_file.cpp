// Where the product information lies, and what asks it of the file.
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "platform/descriptor.h"
#include "platform/log.h"
#include "platform/product/pib.h"

int PIB::init() {
  static constexpr char kProductFile[] = "/etc/camera/product.conf";
  std::string text;
  const int descriptor = open(kProductFile, O_RDONLY | O_CLOEXEC);
  int error = descriptor < 0 ? errno : 0;
  if (descriptor >= 0) {
    error = camera::readAll(descriptor, &text);
    close(descriptor);
  }
  if (error != 0) {
    dbg_log("%s: %s", kProductFile, std::strerror(error));
    throw PIBError();
  }
  parse(text);
  return 0;
}

int check_extra_modules(const char* name) {
  PIB product;
  product.init();
  return product.hasModule(name) ? 1 : 0;
}
