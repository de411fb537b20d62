// Description of the record: the image sensor's settings record.
#include "platform/store/records/image.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr Field kFields[] = {
    CAMERA_RESERVED(ImageSettings, reserved0),
    CAMERA_FIELD(ImageSettings, max_exposure_time),
    CAMERA_BOUNDED(ImageSettings, auto_exposure, 0, 1),
    CAMERA_BOUNDED(ImageSettings, video_in_format, 0, 4),
    CAMERA_BOUNDED(ImageSettings, color, 0, 1),
    CAMERA_BOUNDED(ImageSettings, flicker, 0, 2),
    CAMERA_BOUNDED(ImageSettings, flip, 0, 1),
    CAMERA_BOUNDED(ImageSettings, mirror, 0, 1),
    CAMERA_BOUNDED(ImageSettings, brightness, 0, 100),
    CAMERA_BOUNDED(ImageSettings, contrast, 0, 100),
    CAMERA_BOUNDED(ImageSettings, saturation, 0, 100),
    CAMERA_BOUNDED(ImageSettings, hue, 0, 100),
    CAMERA_BOUNDED(ImageSettings, white_balance, 0, 4),
    CAMERA_BOUNDED(ImageSettings, auto_gain, 0, 2),
    CAMERA_BOUNDED(ImageSettings, backlight, 0, 3),
    CAMERA_BOUNDED(ImageSettings, sharpness, 0, 100),
    CAMERA_BOUNDED(ImageSettings, noise_reduction, 0, 7),
    CAMERA_FIELD(ImageSettings, backlight_level),
    CAMERA_RESERVED(ImageSettings, reserved1),
    CAMERA_BOUNDED(ImageSettings, black_white, 0, 1),
    CAMERA_RESERVED(ImageSettings, reserved2),
};

}  // namespace

constexpr RecordInfo imageRecord = describe::record<ImageSettings>("image", kFields);

}  // namespace camera
