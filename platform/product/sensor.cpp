// The image sensor, as the stored profiles and the product information tell of it.
#include "platform/product/sensor.h"

#include "platform/product/product_info.h"
#include "platform/store/records/profile.h"
#include "platform/store/settings.h"

namespace {

// False when the product information cannot be read.
bool readProduct(ProductInfo* product) {
  try {
    product->init();
    return true;
  } catch (const ProductInfoError&) {
    return false;
  }
}

}  // namespace

int GetDS() {
  camera::ProfileSettings profile;
  return camera::loadRecord(&profile) == camera::StoreResult::kDone ? profile.display_system : -1;
}

bool sensor_get_status(int& displaySystem, int& reserved) {
  const int index = GetDS();
  if (index < 0) return false;
  displaySystem = index;
  reserved = 0;
  return true;
}

std::string sensor_get_all_ds() {
  ProductInfo product;
  if (!readProduct(&product)) return {};
  if (!product.displaySystems().empty()) return product.displaySystems();
  const int inUse = GetDS();
  return inUse < 0 ? std::string{} : DisplaySystem[inUse];
}

std::string sensor_get_all_max_exposure_time() {
  ProductInfo product;
  return readProduct(&product) ? product.maxExposureTimes() : std::string{};
}
