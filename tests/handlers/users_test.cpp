// user_list.cgi, group_list.cgi, user_mod.cgi and user_del.cgi: who exists, and that it stays consistent.
#include <algorithm>
#include <random>

#include "platform/store/records/account.h"
#include "platform/store/settings.h"
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

TEST(UserList, NamesTheAdministratorByOneWordAlone) {
  const Endpoint list{.cgi = "user_list.cgi",
                      .state = kAccounts,
                      .reply = "users=4&root=Administrator&a=Users&b=Users&c=Users",
                      .readsBack = false};
  list.accepts({{"", "account.user_name[2]=", "-b"},
                {"name=admin", "", "group=Administrator&-users&-root&-a&-b&-c"},
                {"name=c", "", "group=Users&-users&-root&-a&-b&-c"},
                {"", "account.user_count=0", "users=1&-a&-b&-c"}});
  list.refuses("name=root name=old name= name=a%00 name=a&!group=Users Name=a");
}

TEST(GroupList, TellsMembersAndWhatTheProductLetsThemDo) {
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
  groups.refuses("name=users name= name=Users&!a=1 a=1");
}

// A row tells the whole reply.
TEST(UserMod, ShowsTheAccountAsItIsThen) {
  kUserMod.accepts(
      {{"name=root", kLarkmoor, "name=root&password=dG9w&group=Administrator", ""},
       {"name=a&newname=a&password=MQ%3D%3D&group=Users", "", "name=a&password=MQ==&group=Users", ""},
       {"name=a&newname=A-1_.", "", "name=A-1_.&password=MQ==&group=Users"},
       {"name=d", kLarkmoor, "name=d&password=&group=Users"},
       {"name=d&password=b+%0d%0a%09A%3D%3D", "", "name=d&password=bA==&group=Users"},
       {"name=root&newname=boss&group=Administrator", "", "name=boss&password=dG9w&group=Administrator"},
       {"name=root&password=MTIzNDU2Nzg=", kLarkmoor, "name=root&password=MTIzNDU2Nzg=&group=Administrator"},
       {"name=a&password=", kLarkmoor, "name=a&password=&group=Users"},
       {"name=root&password=", "system.brand=Larkmoor product.modules=device1",
        "name=root&password=&group=Administrator"}});
}

TEST(UserMod, RefusesClashesAndWhatBelongsToTheOtherGroup) {
  kUserMod.refuses(
      "!name password=&!name name= name=a+b name=a/ name=a%00 name=a&!newname= name=a&!newname=b+b "
      "name=a&!newname=b name=a&!newname=root name=root&!newname=c !name=d&newname=e "
      "name=a&!group=Administrator name=root&!group=Users name=a&!group=users name=a&!passwd=1 "
      "name=a&!password=MQ= name=a&!password=IA== name=a&!password=MQ==MQ==");
  kUserMod.refuses("!name=" + std::string(31, 'a') + " name=a&!newname=" + std::string(31, 'a') +
                   " name=a&!password=" + std::string(41, 'Q') + "%3D%3D%3D name=a&!password=MQ%3D%3D" +
                   std::string(61, '+'));
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
  kUserDel.refuses("! name= name=a,a name=root name=a,root name=old name=a+,b name=a%00 name=a&!a=1");
  kUserDel.refuses("name=a a=1&!name", "account.user_count=0");
}

using User = std::pair<std::string, std::string>;

struct Model {
  std::vector<User> accounts{{"root", ""}};  // the administrator first

  auto find(const std::string& name) {
    return std::find_if(accounts.begin(), accounts.end(), [&](const User& u) { return u.first == name; });
  }
  bool mod(const std::string& name, const std::string& newName, const char* password) {
    auto user = find(name);
    const bool isNew = user == accounts.end();
    const bool isTaken = !newName.empty() && newName != name && find(newName) != accounts.end();
    if (isTaken || (isNew && (!newName.empty() || accounts.size() == 21))) return false;
    if (isNew) user = accounts.insert(user, {name, ""});
    *user = {newName.empty() ? name : newName, password == nullptr ? user->second : password};
    return true;
  }
  bool del(const std::string& first, const std::string& second) {
    const auto isDeleted = [&](const User& user) { return user.first == first || user.first == second; };
    const bool isWhole = first != second && std::count_if(accounts.begin() + 1, accounts.end(), isDeleted) ==
                                                (second.empty() ? 1 : 2);
    if (isWhole) std::erase_if(accounts, isDeleted);
    return isWhole;
  }
  void expectStored() const {
    AccountSettings record;
    loadRecord(&record);
    EXPECT_EQ(User(record.admin_name, record.admin_password), accounts[0]);
    EXPECT_EQ(record.user_count, accounts.size() - 1);
    for (std::size_t slot = 1; slot <= 20; ++slot)
      EXPECT_EQ(User(record.user_name[slot], record.user_password[slot]),
                slot < accounts.size() ? accounts[slot] : User());
  }
};

TEST(Accounts, StayConsistentInARandomWalk) {
  std::mt19937 random{12};
  const auto pick = [&](unsigned count) { return static_cast<unsigned>(random() % count); };
  const auto anyName = [&] { return std::string(1, static_cast<char>('A' + pick(26))); };
  constexpr std::pair<const char*, const char*> kPasswords[] = {
      {"", nullptr}, {"&password=MQ%3D%3D", "1"}, {"&password=", ""}};
  scripted().reset("account.admin_name=root");
  Model model;
  int accepted = 0;
  for (int step = 0; step < 10'000 && !HasFailure(); ++step) {
    const std::string name = pick(12) == 0 ? model.accounts[0].first : anyName();
    const std::string other = pick(3) == 0 ? anyName() : "";
    const auto& [sent, password] = kPasswords[pick(3)];
    const bool deletes = pick(4) == 0;
    const std::string query =
        "name=" + name + (deletes ? "," + other : (other.empty() ? "" : "&newname=" + other) + sent);
    const bool expected = deletes ? model.del(name, other) : model.mod(name, other, password);
    EXPECT_EQ(request(deletes ? "user_del.cgi" : "user_mod.cgi", query).status, expected ? 200 : 400)
        << query;
    model.expectStored();
    accepted += expected ? 1 : 0;
  }
  EXPECT_GT(accepted, 3'000);
}

}  // namespace
}  // namespace camera::test
