// Description of the record: the motion detection's settings record.
#include "platform/store/records/motiond.h"

#include <algorithm>

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr std::size_t kMaskDigits = 300;  // of the whole picture

constexpr _motiond_setting defaults() {
  _motiond_setting setting{};
  setting.sensitivity = 50;
  std::fill_n(setting.mbmask, kMaskDigits, '0');
  setting.pir_sensitivity = 50;
  return setting;
}
constexpr _motiond_setting kDefaults = defaults();

constexpr Field kFields[] = {
    CAMERA_BOUNDED(_motiond_setting, enable, 0, 1), CAMERA_BOUNDED(_motiond_setting, sensitivity, 0, 100),
    CAMERA_BOUNDED(_motiond_setting, push, 0, 1),   CAMERA_BOUNDED(_motiond_setting, mbmask, 0, 511),
    CAMERA_RESERVED(_motiond_setting, reserved),    CAMERA_BOUNDED(_motiond_setting, pir_sensitivity, 0, 100),
};

}  // namespace

// Motion is not detected in every display system, so neither may change while the other is decided.
constexpr RecordInfo motiondRecord =
    describe::record("motiond", kDefaults, kFields, {.dependsOn = recordBit(RecordIndex::profile)});

}  // namespace camera
