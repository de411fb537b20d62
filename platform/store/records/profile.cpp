// Description of the record: the video profiles' settings record; its arrays are indexed by the profile's
// number, 1 to 4.
#include "platform/store/records/profile.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_RESERVED(ProfileSettings, reserved0),
    CAMERA_BOUNDED(ProfileSettings, codec, 0, 2),
    CAMERA_BOUNDED(ProfileSettings, resolution, 0, 3),
    CAMERA_BOUNDED(ProfileSettings, frame_rate, 0, 30),
    CAMERA_RESERVED(ProfileSettings, reserved1),
    CAMERA_BOUNDED(ProfileSettings, quality, 0, 4),
    CAMERA_RESERVED(ProfileSettings, reserved2),
    CAMERA_BOUNDED(ProfileSettings, quality_mode, 0, 1),
    CAMERA_RESERVED(ProfileSettings, reserved3),
    CAMERA_BOUNDED(ProfileSettings, bit_rate, 0, 4096),
    CAMERA_BOUNDED(ProfileSettings, display_system, 0, 10),
    CAMERA_FIELD(ProfileSettings, display_subtype),
    CAMERA_RESERVED(ProfileSettings, reserved4),
};

}  // namespace

// What a profile may be follows from the display system and from its other fields, and motion is not detected
// in every display system.
constexpr RecordInfo profileRecord = describe::record<ProfileSettings>(
    "profile", kFields, {.indivisible = true, .dependsOn = recordBit(RecordIndex::motiond)});

}  // namespace camera
