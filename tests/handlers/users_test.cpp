// The accounts that user_mod.cgi and user_del.cgi store.
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

constexpr char kAccounts[] =
    "account.admin_name=root account.admin_password=top account.max_users=4 account.user_count=3 "
    "account.user_name[1]=a account.user_name[2]=b account.user_name[3]=c account.user_password[1]=1 "
    "account.user_password[2]=2 account.user_password[3]=3 account.user_name[4]=old "
    "account.user_password[4]=4";
std::string storedAccounts() {
  std::string text;
  for (const char* name : {"admin_name", "admin_password", "user_count", "user_name[1]", "user_password[1]",
                           "user_name[2]", "user_password[2]", "user_name[3]", "user_password[3]"})
    text += scripted().stored(std::string{"account."} + name) + " ";
  return text;
}

TEST(Accounts, KeepTheirPasswordsInSlotsWithoutGaps) {
  scripted().reset(kAccounts);
  const std::tuple<const char*, const char*, const char*> steps[] = {
      {"user_mod.cgi", "name=root&newname=x&password=OQ==", "x 9 3 a 1 b 2 c 3 "},
      {"user_mod.cgi", "name=b&newname=d", "x 9 3 a 1 d 2 c 3 "},
      {"user_del.cgi", "name=a", "x 9 2 d 2 c 3   "},
      {"user_mod.cgi", "name=e", "x 9 3 d 2 c 3 e  "},
      {"user_mod.cgi", "name=c&password=OA==", "x 9 3 d 2 c 8 e  "},
      {"user_del.cgi", "name=e,d", "x 9 1 c 8     "}};
  for (const auto& [cgi, query, stored] : steps) {
    EXPECT_EQ(request(cgi, query).status, 200) << query;
    EXPECT_EQ(storedAccounts(), stored) << query;
  }
}

}  // namespace
}  // namespace camera::test
