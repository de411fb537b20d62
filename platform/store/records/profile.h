// The video profiles' settings record; its arrays are indexed by the profile's number, 1 to 4.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

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
static_assert(sizeof(ProfileSettings) == 72 && std::is_trivially_copyable_v<ProfileSettings>);
static_assert(offsetof(ProfileSettings, codec) == 5);
static_assert(offsetof(ProfileSettings, resolution) == 10);
static_assert(offsetof(ProfileSettings, frame_rate) == 15);
static_assert(offsetof(ProfileSettings, quality) == 25);
static_assert(offsetof(ProfileSettings, quality_mode) == 40);
static_assert(offsetof(ProfileSettings, bit_rate) == 48);
static_assert(offsetof(ProfileSettings, display_system) == 68);
static_assert(offsetof(ProfileSettings, display_subtype) == 69);

}  // namespace camera
