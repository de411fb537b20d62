// The product information, for endpoints that answer 500 where it cannot be read.
#pragma once

#include "platform/product/pib.h"

namespace camera {

// False when the product information cannot be read.
inline bool readProduct(PIB& product) {
  try {
    product.init();
  } catch (const PIBError&) {
    return false;
  }
  return true;
}

}  // namespace camera
