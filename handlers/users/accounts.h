// The two groups, and the ordinary accounts in their slots, as the user endpoints share them.
#pragma once

#include <string_view>

#include "framework/value_tables.h"
#include "platform/store/records/account.h"

namespace camera {

enum Group : int { kNoGroup = -1, kAdministrator = 0, kUsers = 1 };
inline constexpr const char* kGroups[] = {"Administrator", "Users"};

// What clients call the administrator, whatever the account's name is.
inline constexpr char kAdminWord[] = "admin";

inline constexpr char kAccountName[] = "1 to 30 letters, digits, _ - .";

// The slot of the ordinary account of that name, -1 when there is none.
inline int findUser(const AccountSettings& account, std::string_view name) {
  for (int slot = 1; slot <= account.user_count; ++slot) {
    if (name == account.user_name[slot]) return slot;
  }
  return -1;
}

}  // namespace camera
