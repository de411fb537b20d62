// user_mod.cgi: creates an ordinary account, renames an account, or changes a password.
#include "handlers/encoded_password.h"
#include "handlers/endpoint.h"
#include "handlers/users/accounts.h"
#include "platform/store/records/system.h"

namespace camera {
namespace {

constexpr std::string_view kVelkor = "Velkor";      // a brand whose accounts cannot be renamed
constexpr std::string_view kLarkmoor = "Larkmoor";  // a brand whose passwords have further rules
constexpr char kLarkmoorText[] = "!#$%@";
constexpr char kLongPasswordModule[] = "device1_2";

// White space in the base64 text is ignored.
std::string withoutSpace(std::string_view encoded) {
  std::string compact{encoded};
  std::erase_if(compact, [](char c) { return consistsOf({&c, 1}, {}, " \t\r\n"); });
  return compact;
}

std::optional<std::string> decode(std::string_view encoded) {
  return decodePassword(withoutSpace(encoded));
}

bool isEncoded(std::string_view encoded) {
  return decode(encoded).has_value();
}

const char* faultOf(std::string_view encoded) {
  return encodingFault(withoutSpace(encoded));
}

struct Wanted {
  std::string_view name;
  std::string_view newName;
  std::string_view encoded;
  std::int32_t group = kNoGroup;
};

constexpr auto kParams = paramRows<Wanted>(
    textParam<&Wanted::name>("name", 1, 30, kNameText).required(),
    textParam<&Wanted::newName>("newname", 1, 30, kNameText),
    textParam<&Wanted::encoded>("password", 0, 64, "", kAnyBytes)
        .also(isEncoded, "0 to 30 letters, digits, punctuation, in at most 64 characters of base64")
        .naming(faultOf)
        .secret(),
    choiceParam<&Wanted::group>("group", kGroups));

}  // namespace

class UserModEndpoint final : public ParamEndpoint<kParams, Takes::kCommand> {
  int load() override { return read(account_, system_); }

  int apply() override {
    Wanted wanted;
    if (take(&wanted) != 200) return 400;
    if (given("newname") && brand() == kVelkor)
      return refuse("newname", "this camera's accounts keep their names");
    isAdmin_ = wanted.name == account_.admin_name;
    if (wanted.group == (isAdmin_ ? kUsers : kAdministrator))
      return refuse("group", "only the account's own");
    const std::string password = decode(wanted.encoded).value_or("");
    AccountSettings changed = account_;
    slot_ = isAdmin_ ? 0 : findUser(account_, wanted.name);
    int result = brand() == kLarkmoor && given("password") ? checkPassword(password) : 200;
    if (result == 200 && slot_ < 0) result = addUser(wanted.name, &changed);
    if (result == 200 && given("newname")) result = rename(wanted.newName, &changed);
    if (result != 200) return result;
    if (given("password"))
      setText(isAdmin_ ? changed.admin_password : changed.user_password[slot_], password);
    writeChanged(account_, changed);
    account_ = changed;
    return commit();
  }

  std::string_view brand() const { return system_.brand; }

  int checkPassword(std::string_view password) {
    if (isAdmin_) {
      const ProductInfo* known = product();
      if (known == nullptr) return 500;
      if (known->hasModule(kLongPasswordModule) && !hasLength(password, 8, 16))
        return refuse("password", "8 to 16 letters, digits, ! # $ % @, in base64");
    }
    return consistsOf(password, kAlnum, kLarkmoorText)
               ? 200
               : refuse("password", "0 to 30 letters, digits, ! # $ % @, in base64");
  }

  int addUser(std::string_view name, AccountSettings* changed) {
    if (given("newname")) return refuse("name", "no such account to rename");
    if (isReserved(name)) return refuse("name", kReservedText);
    if (account_.user_count >= account_.max_users)
      return refuse("name", "there is no room for another account");
    slot_ = ++changed->user_count;
    setText(changed->user_name[slot_], name);
    setText(changed->user_password[slot_], "");
    return 200;
  }

  int rename(std::string_view name, AccountSettings* changed) {
    const int owner = findUser(account_, name);
    if ((owner > 0 && owner != slot_) || (!isAdmin_ && name == account_.admin_name))
      return refuse("newname", "taken by another account");
    const char* const old = isAdmin_ ? account_.admin_name : account_.user_name[slot_];
    if (name != old && isReserved(name) && !(isAdmin_ && name == kAdminWord))
      return refuse("newname", kReservedText);
    setText(isAdmin_ ? changed->admin_name : changed->user_name[slot_], name);
    return 200;
  }

  int reply() override {
    pair("name", isAdmin_ ? account_.admin_name : account_.user_name[slot_]);
    pair("password", encodeBase64(isAdmin_ ? account_.admin_password : account_.user_password[slot_]));
    pair("group", kGroups[isAdmin_ ? kAdministrator : kUsers]);
    return 200;
  }

  AccountSettings account_;
  SystemSettings system_;
  bool isAdmin_ = false;
  int slot_ = 0;  // of an ordinary account; 0 for the administrator
};

template <>
const Api kApi<UserModEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kUsers,
     .summary = "Creates an ordinary account, renames an account, or changes a password.",
     .records = "`account`; reads `system`",
     .dependent = "name newname password group",
     .params =
         {{"name", "The account, the administrator by its current name; it is created if it does not exist.",
           nullptr, "ann"},
          {"newname",
           "The new name of an existing account, which no other account may have; not on cameras of the "
           "brand Velkor.",
           nullptr, "bob"},
          {"password",
           "The new password, empty for none; white space in the base64 text is ignored, and cameras of the "
           "brand Larkmoor accept fewer passwords.",
           nullptr, "c2VjcmV0"},
          {"group", "Must be the account's own: only the administrator is in `Administrator`.", nullptr,
           kGroups[kUsers]}},
     .reply = {{"name", ApiType::kText, "The account's name, the new one if it was renamed."},
               {"password", ApiType::kText, "Its password in base64."},
               {"group", ApiType::kText, "Its group.", kGroups}},
     .codes = {{400, "There is no room for another account."}},
     .schema = [](std::string_view param, const ProductInfo& /*product*/) -> std::string {
       return param == "password"
                  ? R"("type":"string","maxLength":64,"pattern":"^[A-Za-z0-9+/= \\t\\r\\n]*$")"
                  : "";
     }});
template struct EndpointOf<UserModEndpoint>;

}  // namespace camera
