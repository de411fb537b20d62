// The accounts' settings record.
#pragma once

#include "platform/store/record.h"

namespace camera {

struct AccountSettings {
  std::uint8_t reserved0;
  char admin_name[32] = "admin";  // the administrator
  char admin_password[32];
  std::uint8_t max_users = 20;  // how many ordinary accounts there may be
  std::uint8_t user_count;      // how many there are: slots 1 to user_count, without gaps
  char user_name[21][32];       // by slot; slot 0 is not used
  char user_password[21][32];
  std::uint8_t reserved1[389];
};

template <>
struct Description<AccountSettings> : Describes<AccountSettings, 1800> {
  static constexpr Field kFields[] = {
      CAMERA_FIELD(0, reserved0),
      CAMERA_FIELD(1, admin_name, 1, 30),
      CAMERA_FIELD(33, admin_password, 0, 30),
      CAMERA_FIELD(65, max_users, 0, 20),
      CAMERA_FIELD(66, user_count, 0, 20),
      CAMERA_FIELD(67, user_name, 0, 30),
      CAMERA_FIELD(739, user_password, 0, 30),
      CAMERA_FIELD(1411, reserved1),
  };
  static constexpr Exceptions kExceptions{.indivisible = true};
};

}  // namespace camera
