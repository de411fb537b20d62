// user_del.cgi: deletes ordinary accounts.
#include "handlers/endpoint.h"
#include "handlers/users/accounts.h"

namespace camera {
namespace {

struct Wanted {
  std::string_view names;
};

constexpr auto kParams =
    paramRows<Wanted>(textParam<&Wanted::names>("name", 1, INT32_MAX, "", kAnyBytes)
                          .saying("names of ordinary accounts, each once, separated by commas")
                          .listedBy(","))
        .ignoringUnknown(1);

void empty(AccountSettings* account, int slot) {
  setText(account->user_name[slot], "");
  setText(account->user_password[slot], "");
}

// Moves the accounts to the first slots, in the same order.
void closeGaps(AccountSettings* account) {
  int free = 1;
  for (int slot = 1; slot <= account->user_count; ++slot) {
    if (*account->user_name[slot] == '\0') continue;
    setText(account->user_name[free], account->user_name[slot]);
    setText(account->user_password[free], account->user_password[slot]);
    if (slot != free) empty(account, slot);
    ++free;
  }
}

}  // namespace

class UserDelEndpoint final : public ParamEndpoint<kParams, Takes::kCommand> {
  int load() override { return read(account_); }

  int apply() override {
    Wanted wanted;
    if (take(&wanted) != 200) return 400;
    if (account_.user_count == 0) return refuse("name", "there are no ordinary accounts");
    names_ = wanted.names;
    AccountSettings changed = account_;
    int deleted = 0;
    for (std::string_view rest = names_; !rest.empty();) {
      const std::string_view name = takeUntil(',', &rest);
      if (name.empty()) continue;
      const int slot = name == account_.admin_name ? -1 : findUser(changed, name);
      if (slot < 0) return refuse("name");
      empty(&changed, slot);
      ++deleted;
    }
    if (deleted > 0) closeGaps(&changed);
    changed.user_count = static_cast<std::uint8_t>(changed.user_count - deleted);
    writeChanged(account_, changed);
    return commit();
  }

  int reply() override {
    list("name", names_);
    return 200;
  }

  AccountSettings account_;
  std::string_view names_;
};

template <>
const Api kApi<UserDelEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kUsers,
     .summary = "Deletes ordinary accounts.",
     .records = "`account`",
     .dependent = "name",
     .params = {{"name", "The accounts; if one of them is not accepted, none is deleted.", nullptr, "ann"}},
     .codes = {{400, "The camera has no ordinary account, or the request has more than one parameter."}}});
template struct EndpointOf<UserDelEndpoint>;

}  // namespace camera
