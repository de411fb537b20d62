// user_list.cgi, group_list.cgi, user_mod.cgi and user_del.cgi, and the accounts that they store.
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

constexpr char kAccounts[] =
    "account.admin_name=root account.admin_password=top account.max_users=4 account.user_count=3 "
    "account.user_name[1]=a account.user_name[2]=b account.user_name[3]=c account.user_password[1]=1 "
    "account.user_password[2]=2 account.user_password[3]=3 account.user_name[4]=old "
    "account.user_password[4]=4";
constexpr char kLarkmoor[] = "system.brand=Larkmoor product.modules=x,device1_2";

const Endpoint kUserMod{.cgi = "user_mod.cgi", .state = kAccounts, .writes = "set account"};
const Endpoint kUserDel{.cgi = "user_del.cgi", .state = kAccounts, .writes = "set account"};

TEST(UserList, KnowsTheAdministratorOnlyAsAdmin) {
  const Endpoint list{.cgi = "user_list.cgi",
                      .state = kAccounts,
                      .reply = "users=4&root=Administrator&a=Users&b=Users&c=Users",
                      .readsBack = false};
  list.accepts({{"", "account.user_name[2]=", "-b"},
                {"name=admin", "", "group=Administrator&-users&-root&-a&-b&-c"},
                {"name=c", "", "group=Users&-users&-root&-a&-b&-c"},
                {"", "account.user_count=0", "users=1&-a&-b&-c"}});
  list.refuses("name=root name=old name= Name=a");
}

TEST(GroupList, ReportsMembersAndTheirPrivileges) {
  const Endpoint groups{
      .cgi = "group_list.cgi",
      .state = std::string{kAccounts} + " product= product.has_pan_tilt=1 product.output_count=1",
      .reply = "user=a,b,c&privilege=pt,outputs,video,notify",
      .key = "name=Users",
      .readsBack = false};
  groups.accepts({{"", "account.user_name[2]=", "-user&-privilege&groups=2&Administrator=admin&Users=a,,c"},
                  {"name=Users", "account.user_count=0", "user="},
                  {"name=Administrator", "", "user=admin"},
                  {"name=Users", "product.has_zoom=1 product.has_mic=1 product.has_speaker=1",
                   "privilege=ptz,outputs,speaker,mic,video,notify"},
                  {"name=Users", "product=", "privilege=video,notify"}});
  groups.refuses("name=users name=");
}

// A row has the whole reply.
TEST(UserMod, ReportsTheChangedAccount) {
  kUserMod.accepts(
      {{"name=root", kLarkmoor, "name=root&password=dG9w&group=Administrator", ""},
       {"name=a&newname=a&password=MQ%3D%3D&group=Users", "", "name=a&password=MQ==&group=Users", ""},
       {"name=a&newname=A-1_.", "", "name=A-1_.&password=MQ==&group=Users"},
       {"name=d", kLarkmoor, "name=d&password=&group=Users"},
       {"name=d&password=b+%0d%0a%09A%3D%3D", "", "name=d&password=bA==&group=Users"},
       {"name=root&newname=boss&group=Administrator", "", "name=boss&password=dG9w&group=Administrator"},
       {"name=root&password=MTIzNDU2Nzg=", kLarkmoor, "name=root&password=MTIzNDU2Nzg=&group=Administrator"},
       {"name=root&password=MTIzNDU2Nzg5MDEyMzQ1Ng==", kLarkmoor,
        "name=root&password=MTIzNDU2Nzg5MDEyMzQ1Ng==&group=Administrator"},
       {"name=a&password=", kLarkmoor, "name=a&password=&group=Users"},
       {"name=root&password=", "system.brand=Larkmoor product.modules=device1",
        "name=root&password=&group=Administrator"}});
}

TEST(UserMod, RefusesNamesInUseTheOtherGroupAndWhatIsTooLong) {
  kUserMod.refuses(
      "!name password=&!name name= name=a+b name=a&!newname= "
      "name=a&!newname=b name=a&!newname=root name=root&!newname=c !name=d&newname=e "
      "name=a&!group=Administrator name=root&!group=Users "
      "name=a&!password=MQ= name=a&!password=IA== name=a&!password=MQ==MQ==");
  const std::string name(30, 'n');
  std::string password;  // thirty times A
  for (int i = 0; i < 10; ++i) password += "QUFB";
  kUserMod.accepts({{"name=" + name + "&password=" + password, "",
                     "name=" + name + "&password=" + password + "&group=Users"},
                    {"name=a&newname=" + name + "&password=Mg==" + std::string(60, '+'), "",
                     "name=" + name + "&password=Mg==&group=Users"}});
  kUserMod.refuses("!name=n" + name + " name=a&!newname=n" + name + " name=a&!password=" + password +
                   "QQ== name=a&!password=Mg==" + std::string(61, '+'));
  for (const char* limit : {"2", "3"}) kUserMod.refuses("name=d", std::string{"account.max_users="} + limit);
  kUserMod.refuses("name=a&!newname=d name=root&!newname=d", "system.brand=Velkor");
  // Seven characters, seventeen, none, eight with one that is not allowed.
  kUserMod.refuses(
      "name=root&!password=MTIzNDU2Nw== name=root&!password=MTIzNDU2Nzg5MDEyMzQ1Njc= "
      "name=root&!password= name=root&!password=MTIzNDU2Nyo= name=a&!password=Kg==",
      kLarkmoor);
}

TEST(UserDel, TakesAListOfOrdinaryAccounts) {
  kUserDel.accepts({{"name=a,c", "", "name=a,c"},
                    {"name=,b,", "", "name=,b,"},
                    {"name=,", "", "name=,", ""},
                    {"Name=a", "", "name=", ""}});
  kUserDel.refuses("! name= name=a,a name=root name=a,root name=old name=a+,b name=a&!a=1");
  kUserDel.refuses("name=a a=1&!name", "account.user_count=0");
}

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
