// Description of the record: the video profiles' settings record; its arrays are indexed by the profile's
// number, 1 to 4.
#include "platform/store/records/profile.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _profile_setting kDefaults{.reserved0 = {},
                                     .codec = {0, 1, 1, 0, 1},
                                     .resolution = {0, 0, 1, 1, 1},
                                     .frame_rate = {0, 15, 15, 5, 15},
                                     .reserved1 = {},
                                     .quality = {0, 2, 2, 2, 2},
                                     .reserved2 = {},
                                     .quality_mode = {0, 0, 0, 1, 0},
                                     .reserved3 = {},
                                     .bit_rate = {0, 1024, 512, 512, 256},
                                     .display_system = 0,
                                     .display_subtype = 2,
                                     .reserved4 = {}};

constexpr Field kFields[] = {
    CAMERA_RESERVED(_profile_setting, reserved0),
    CAMERA_BOUNDED(_profile_setting, codec, 0, 2),
    CAMERA_BOUNDED(_profile_setting, resolution, 0, 3),
    CAMERA_BOUNDED(_profile_setting, frame_rate, 0, 30),
    CAMERA_RESERVED(_profile_setting, reserved1),
    CAMERA_BOUNDED(_profile_setting, quality, 0, 4),
    CAMERA_RESERVED(_profile_setting, reserved2),
    CAMERA_BOUNDED(_profile_setting, quality_mode, 0, 1),
    CAMERA_RESERVED(_profile_setting, reserved3),
    CAMERA_BOUNDED(_profile_setting, bit_rate, 0, 4096),
    CAMERA_BOUNDED(_profile_setting, display_system, 0, 10),
    CAMERA_FIELD(_profile_setting, display_subtype),
    CAMERA_RESERVED(_profile_setting, reserved4),
};

}  // namespace

// What a profile may be follows from the display system and from its other fields, and motion is not detected
// in every display system.
constexpr RecordInfo profileRecord = describe::record(
    "profile", kDefaults, kFields, {.indivisible = true, .dependsOn = recordBit(RecordIndex::motiond)});

}  // namespace camera
