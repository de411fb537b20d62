// The image sensor, as the stored profiles and the product information tell of it.
#include "platform/product/sensor.h"

#include "platform/product/pib.h"
#include "platform/store/cam.h"
#include "platform/store/records/profile.h"

namespace {

// False when the product information cannot be read.
bool readProduct(PIB* product) {
  try {
    product->init();
    return true;
  } catch (const PIBError&) {
    return false;
  }
}

}  // namespace

int GetDS() {
  _profile_setting profile;
  return cam_get_profile(&profile) == 0 ? profile.display_system : -1;
}

bool sensor_get_status(int& displaySystem, int& reserved) {
  const int index = GetDS();
  if (index < 0) return false;
  displaySystem = index;
  reserved = 0;
  return true;
}

std::string sensor_get_all_ds() {
  PIB product;
  if (!readProduct(&product)) return {};
  if (!product.displaySystems().empty()) return product.displaySystems();
  const int inUse = GetDS();
  return inUse < 0 ? std::string{} : DisplaySystem[inUse];
}

std::string sensor_get_all_max_exposure_time() {
  PIB product;
  return readProduct(&product) ? product.maxExposureTimes() : std::string{};
}
