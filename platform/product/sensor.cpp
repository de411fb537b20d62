// The image sensor, by the stored profiles and the product information.
#include "platform/product/sensor.h"

#include "platform/product/product_info.h"
#include "platform/store/records/profile.h"
#include "platform/store/settings.h"

namespace camera {

int displaySystemInUse() {
  ProfileSettings profile;
  return loadRecord(&profile) == StoreResult::kDone ? profile.display_system : -1;
}

std::string supportedDisplaySystems() {
  const ProductInfo* product = productInfo();
  if (product == nullptr) return {};
  std::string supported = product->display_systems.spaced(kMostDisplaySystems);
  if (!supported.empty()) return supported;
  const int inUse = displaySystemInUse();
  return inUse < 0 ? std::string{} : kDisplaySystems[inUse];
}

std::string exposureTimes() {
  const ProductInfo* product = productInfo();
  return product == nullptr ? std::string{} : product->max_exposure_times.spaced();
}

}  // namespace camera
