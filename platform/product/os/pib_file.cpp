// Where the product information lies, and what asks it of the file.
#include "platform/file.h"
#include "platform/product/pib.h"

int PIB::init() {
  static constexpr char kProductFile[] = "/etc/camera/product.conf";
  std::string text;
  if (camera::readFile(kProductFile, &text) != 0) throw PIBError();
  parse(text);
  return 0;
}

int check_extra_modules(const char* name) {
  PIB product;
  product.init();
  return product.hasModule(name) ? 1 : 0;
}
