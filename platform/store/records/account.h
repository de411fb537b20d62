// The accounts' settings record.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

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
static_assert(sizeof(AccountSettings) == 1800 && std::is_trivially_copyable_v<AccountSettings>);
static_assert(offsetof(AccountSettings, admin_name) == 1);
static_assert(offsetof(AccountSettings, admin_password) == 33);
static_assert(offsetof(AccountSettings, max_users) == 65);
static_assert(offsetof(AccountSettings, user_count) == 66);
static_assert(offsetof(AccountSettings, user_name) == 67);
static_assert(offsetof(AccountSettings, user_password) == 739);

}  // namespace camera
