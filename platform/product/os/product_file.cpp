// Where the product information lies, and what asks it of the file.
#include "platform/file.h"
#include "platform/product/product_info.h"

int ProductInfo::init() {
  static constexpr char kProductFile[] = "/etc/camera/product.conf";
  enum class State : char { kUnread, kRead, kUnreadable };
  static State state = State::kUnread;
  static ProductInfo product;
  if (state == State::kUnread) {
    state = State::kUnreadable;
    std::string text;
    if (camera::readFile(kProductFile, &text) != 0) throw ProductInfoError();
    product.parse(std::move(text));
    state = State::kRead;
  }
  if (state != State::kRead) throw ProductInfoError();
  *this = product;
  return 0;
}

int check_extra_modules(const char* name) {
  ProductInfo product;
  product.init();
  return product.hasModule(name) ? 1 : 0;
}
