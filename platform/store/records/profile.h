// The video profiles' settings record; its arrays are indexed by the profile's number, 1 to 4.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct ProfileSettings {
  std::uint8_t reserved0[5];
  std::uint8_t codec[5] = {0, 1, 1, 0, 1};          // 0 MJPEG, 1 MPEG4, 2 H264
  std::uint8_t resolution[5] = {0, 0, 1, 1, 1};     // position in the display system's list; 0 is the largest
  std::uint8_t frame_rate[5] = {0, 15, 15, 5, 15};  // frames per second
  std::uint8_t reserved1[5];
  std::uint8_t quality[5] = {0, 2, 2, 2, 2};  // a level
  std::uint8_t reserved2[10];
  std::uint8_t quality_mode[5] = {0, 0, 0, 1, 0};  // 0 constant bit rate, 1 fixed quality
  std::uint8_t reserved3[3];
  std::int32_t bit_rate[5] = {0, 1024, 512, 512, 256};  // kilobits per second
  std::uint8_t display_system;                          // the one in use
  std::uint8_t display_subtype = 2;
  std::uint8_t reserved4[2];
};

template <>
struct Description<ProfileSettings> : Describes<ProfileSettings, 72> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, reserved0),
      CAMERA_FIELD(5, codec, 0, 2),
      CAMERA_FIELD(10, resolution, 0, 3),
      CAMERA_FIELD(15, frame_rate, 0, 30),
      CAMERA_FIELD(20, reserved1),
      CAMERA_FIELD(25, quality, 0, 4),
      CAMERA_FIELD(30, reserved2),
      CAMERA_FIELD(40, quality_mode, 0, 1),
      CAMERA_FIELD(45, reserved3),
      CAMERA_FIELD(48, bit_rate, 0, 4096),
      CAMERA_FIELD(68, display_system, 0, 10),
      CAMERA_FIELD(69, display_subtype),
      CAMERA_FIELD(70, reserved4),
  };
  // The fields of a profile depend on one another and on the display system. Motion cannot be detected in
  // some display systems.
  static constexpr Exceptions kExceptions{.indivisible = true, .dependsOn = recordBit(RecordIndex::motiond)};
};

}  // namespace camera
