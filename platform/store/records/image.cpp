// Description of the record: the image sensor's settings record.
#include "platform/store/records/image.h"

#include "platform/store/record.h"

namespace camera {
namespace {

constexpr _image_setting kDefaults{.reserved0 = {},
                                   .max_exposure_time = 0,
                                   .auto_exposure = 1,
                                   .video_in_format = 0,
                                   .color = 1,
                                   .flicker = 1,
                                   .flip = 0,
                                   .mirror = 0,
                                   .brightness = 50,
                                   .contrast = 50,
                                   .saturation = 50,
                                   .hue = 50,
                                   .white_balance = 1,
                                   .auto_gain = 1,
                                   .backlight = 0,
                                   .sharpness = 60,
                                   .noise_reduction = 1,
                                   .backlight_level = 0,
                                   .reserved1 = 0,
                                   .black_white = 0,
                                   .reserved2 = 0};

constexpr Field kFields[] = {
    CAMERA_RESERVED(_image_setting, reserved0),
    CAMERA_FIELD(_image_setting, max_exposure_time),
    CAMERA_BOUNDED(_image_setting, auto_exposure, 0, 1),
    CAMERA_BOUNDED(_image_setting, video_in_format, 0, 4),
    CAMERA_BOUNDED(_image_setting, color, 0, 1),
    CAMERA_BOUNDED(_image_setting, flicker, 0, 2),
    CAMERA_BOUNDED(_image_setting, flip, 0, 1),
    CAMERA_BOUNDED(_image_setting, mirror, 0, 1),
    CAMERA_BOUNDED(_image_setting, brightness, 0, 100),
    CAMERA_BOUNDED(_image_setting, contrast, 0, 100),
    CAMERA_BOUNDED(_image_setting, saturation, 0, 100),
    CAMERA_BOUNDED(_image_setting, hue, 0, 100),
    CAMERA_BOUNDED(_image_setting, white_balance, 0, 4),
    CAMERA_BOUNDED(_image_setting, auto_gain, 0, 2),
    CAMERA_BOUNDED(_image_setting, backlight, 0, 3),
    CAMERA_BOUNDED(_image_setting, sharpness, 0, 100),
    CAMERA_BOUNDED(_image_setting, noise_reduction, 0, 7),
    CAMERA_FIELD(_image_setting, backlight_level),
    CAMERA_RESERVED(_image_setting, reserved1),
    CAMERA_BOUNDED(_image_setting, black_white, 0, 1),
    CAMERA_RESERVED(_image_setting, reserved2),
};

}  // namespace

constexpr RecordInfo imageRecord = describe::record("image", kDefaults, kFields);

}  // namespace camera
