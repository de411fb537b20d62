// user_list.cgi: the accounts and their groups.
#include "handlers/endpoint.h"
#include "handlers/users/accounts.h"

namespace camera {
namespace {

struct Selection {
  std::string_view name;
};

constexpr auto kParams = paramRows<Selection>(textParam<&Selection::name>("name", 1, INT32_MAX, "", kAnyBytes)
                                                  .saying("admin, or the name of an ordinary account"));

}  // namespace

class UserListEndpoint final : public ParamEndpoint<kParams> {
  int load() override { return read(account_); }

  int apply() override {
    Selection selection{};
    if (take(&selection) != 200) return 400;
    if (selection.name == kAdminWord) {
      group_ = kAdministrator;
      return 200;
    }
    group_ = kUsers;
    return findUser(account_, selection.name) > 0 ? 200 : refuse("name");
  }

  int reply() override {
    if (group_ != kNoGroup) {
      pair("group", kGroups[group_]);
      return 200;
    }
    if (!isJson()) pair(kUsersKey, account_.user_count + 1);
    replyUser(account_.admin_name, kAdministrator);
    for (int slot = 1; slot <= account_.user_count; ++slot) {
      if (*account_.user_name[slot] != '\0') replyUser(account_.user_name[slot], kUsers);
    }
    if (isJson()) value(kUsersKey, users_.text());
    return 200;
  }

  void replyUser(std::string_view name, Group group) {
    if (!isJson()) return pair(name, kGroups[group]);
    JsonObject user;
    user.add("name", name);
    user.add("group", kGroups[group]);
    users_.add(user.text());
  }

  AccountSettings account_;
  Group group_ = kNoGroup;  // of the selected account
  JsonArray users_;
};

constexpr ApiKey kUserKeys[] = {{"name", ApiType::kText, "The account's name."},
                                {"group", ApiType::kText, "Its group.", kGroups}};
template <>
const Api kApi<UserListEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kUsers,
     .summary = "The accounts and their groups.",
     .records = "none; reads `account`",
     .dependent = "name",
     .params = {{"name", "Selects an account; `admin` always means the administrator, whatever its name is.",
                 nullptr, kAdminWord}},
     .reply = {{.name = "users",
                .type = ApiType::kObjects,
                .meaning = "The accounts; only without `name`. In text, the number of accounts including the "
                           "administrator, then a line for each with its name as key and its group as value.",
                .members = kUserKeys,
                .isOptional = true},
               {.name = "group",
                .type = ApiType::kText,
                .meaning = "The group of the selected account; only with `name`.",
                .words = kGroups,
                .isOptional = true}}});
template struct EndpointOf<UserListEndpoint>;

}  // namespace camera
