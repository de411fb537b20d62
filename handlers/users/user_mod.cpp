// user_mod.cgi: creates an ordinary account, renames an account, changes a password.
#include <algorithm>
#include <optional>

#include "framework/base64.h"
#include "handlers/endpoint.h"
#include "handlers/users/accounts.h"
#include "platform/store/records/system.h"

namespace camera {
namespace {

constexpr std::string_view kVelkor = "Velkor";      // whose accounts keep their names
constexpr std::string_view kLarkmoor = "Larkmoor";  // whose passwords have rules of their own
constexpr char kLarkmoorText[] = "!#$%@";
constexpr char kLongPasswordModule[] = "device1_2";

constexpr int kMostUsers = static_cast<int>(std::extent_v<decltype(AccountSettings::user_name)>) - 1;

constexpr std::string_view kBlanks = " \t\r\n";

// White space in the base64 text does not count.
std::optional<std::string> decode(std::string_view encoded) {
  std::string compact{encoded};
  std::erase_if(compact, [](char c) { return kBlanks.find(c) != kBlanks.npos; });
  std::optional<std::string> password = decodeBase64(compact);
  const bool isPassword =
      password && hasLength(*password, 0, 30) && consistsOf(*password, kAlnum, kPunctuationText);
  return isPassword ? password : std::nullopt;
}

bool isEncoded(std::string_view encoded) {
  return decode(encoded).has_value();
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
        .also(isEncoded, "0 to 30 letters, digits, punctuation, in at most 64 characters of base64"),
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
      return refuse("group", "not that of the account");
    const std::string password = decode(wanted.encoded).value_or("");
    AccountSettings changed = account_;
    int result = brand() == kLarkmoor && given("password") ? checkPassword(password) : 200;
    if (result == 200) result = isAdmin_ ? changeAdmin(wanted, &changed) : changeUser(wanted, &changed);
    if (result != 200) return result;
    if (given("password"))
      setText(isAdmin_ ? changed.admin_password : changed.user_password[slot_], password);
    writeChanged(account_, changed);
    result = commit();
    if (result == 200) account_ = changed;
    return result;
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

  int changeAdmin(const Wanted& wanted, AccountSettings* changed) {
    if (!given("newname")) return 200;
    if (findUser(account_, wanted.newName) > 0) return refuse("newname", "taken by another account");
    setText(changed->admin_name, wanted.newName);
    return 200;
  }

  int changeUser(const Wanted& wanted, AccountSettings* changed) {
    slot_ = findUser(account_, wanted.name);
    if (slot_ < 0) return addUser(wanted, changed);
    if (!given("newname")) return 200;
    const int owner = findUser(account_, wanted.newName);
    if (wanted.newName == account_.admin_name || (owner > 0 && owner != slot_))
      return refuse("newname", "taken by another account");
    setText(changed->user_name[slot_], wanted.newName);
    return 200;
  }

  int addUser(const Wanted& wanted, AccountSettings* changed) {
    if (given("newname")) return refuse("name", "no such account to rename");
    if (account_.user_count >= std::min<int>(account_.max_users, kMostUsers))
      return refuse("name", "there is no room for another account");
    slot_ = ++changed->user_count;
    setText(changed->user_name[slot_], wanted.name);
    setText(changed->user_password[slot_], "");
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
  int slot_ = 0;  // of an ordinary account
};

template void serve<UserModEndpoint>();

}  // namespace camera
