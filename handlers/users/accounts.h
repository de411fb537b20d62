// The groups and the ordinary accounts, for the endpoints of this folder.
#pragma once

#include <string_view>

#include "framework/value_tables.h"
#include "platform/store/records/account.h"

namespace camera {

enum Group : int { kNoGroup = -1, kAdministrator = 0, kUsers = 1 };
inline constexpr const char* kGroups[] = {"Administrator", "Users"};

// Stands for the administrator in replies of group_list.cgi and in requests to user_list.cgi, whatever the
// account's name is.
inline constexpr char kAdminWord[] = "admin";
inline constexpr char kUsersKey[] = "users";  // of user_list.cgi

// No new account gets such a name: user_list.cgi has a key "users", and "admin" stands for the administrator.
inline bool isReserved(std::string_view name) {
  return name == kAdminWord || name == kUsersKey;
}
inline constexpr char kReservedText[] = "not users, and admin only for the administrator";

// Returns the slot of the ordinary account of that name; -1 if there is none.
inline int findUser(const AccountSettings& account, std::string_view name) {
  for (int slot = 1; slot <= account.user_count; ++slot) {
    if (name == account.user_name[slot]) return slot;
  }
  return -1;
}

}  // namespace camera
