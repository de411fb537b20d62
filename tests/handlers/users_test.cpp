// user_list.cgi, group_list.cgi, user_mod.cgi and user_del.cgi: who exists, and that it stays consistent.
#include <cstring>
#include <random>

#include "platform/store/records/account.h"
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

constexpr char kAccounts[] =
    "account.admin_name=root account.admin_password=top account.max_users=4 account.user_count=3 "
    "account.user_name[1]=a account.user_name[2]=b account.user_name[3]=c account.user_password[1]=1 "
    "account.user_password[2]=2 account.user_password[3]=3 account.user_name[4]=old";
constexpr char kWrite[] = "set account 1";

const Endpoint kUserMod{
    .cgi = "user_mod.cgi", .state = kAccounts, .writes = kWrite, .key = "name=root", .readsBack = false};
const Endpoint kUserDel{.cgi = "user_del.cgi", .state = kAccounts, .writes = kWrite, .readsBack = false};

std::string account(const std::string& field) {
  return scripted().stored("account." + field);
}

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
  const Endpoint all{
      .cgi = "group_list.cgi", .state = kAccounts, .reply = "groups=2&Administrator=admin&Users=a,b,c"};
  const Endpoint users{
      .cgi = "group_list.cgi",
      .state = std::string{kAccounts} + " product= product.has_pan_tilt=1 product.output_count=1",
      .reply = "user=a,b,c&privilege=pt,outputs,video,notify",
      .key = "name=Users"};
  all.accepts({{"", "account.user_name[2]=", "Users=a,,c"}, {"", "account.user_count=0", "Users="}});
  users.accepts({{"name=Users", "account.user_count=0", "user="},
                 {"name=Administrator", "", "user=admin"},
                 {"name=Users", "product.has_zoom=2 product.has_mic=1 product.has_speaker=1",
                  "privilege=ptz,outputs,speaker,mic,video,notify"},
                 {"name=Users", "product=", "privilege=video,notify"}});
  all.refuses("name=users name= name=Users&!a=1 a=1");
}

TEST(UserMod, AddsRenamesAndChangesPasswords) {
  scripted().reset(kAccounts);
  const std::tuple<const char*, const char*, const char*> steps[] = {
      {"name=a", "name=a&password=MQ==&group=Users", ""},
      {"name=root", "name=root&password=dG9w&group=Administrator", ""},
      {"name=a&newname=a&password=MQ%3D%3D&group=Users", "name=a&password=MQ==&group=Users", ""},
      {"name=a&newname=A-1_.", "name=A-1_.&password=MQ==&group=Users", kWrite},
      {"name=d&password=b+%0d%0a%09A%3D%3D", "name=d&password=bA==&group=Users", kWrite},
      {"name=root&newname=boss&group=Administrator", "name=boss&password=dG9w&group=Administrator", kWrite},
      {"name=boss&password=", "name=boss&password=&group=Administrator", kWrite}};
  for (const auto& [query, reply, writes] : steps) {
    EXPECT_EQ(request("user_mod.cgi", query).body, reply) << query;
    EXPECT_EQ(scripted().writes(), writes) << query;
  }
  EXPECT_EQ(account("user_count") + account("user_name[4]") + account("user_password[4]"), "4dl");
  EXPECT_TRUE(isFailure(request("user_mod.cgi", "name=e"), 400, {"name"})) << "of four, a fifth was added";
}

TEST(UserMod, RefusesClashesAndWhatBelongsToTheOtherGroup) {
  kUserMod.refuses(
      "!name password=&!name name= name=a+b name=a/ name=a%00 name=a&!newname= name=a&!newname=b+b "
      "name=a&!newname=b name=a&!newname=root name=root&!newname=c !name=d&newname=e "
      "name=a&!group=Administrator "
      "name=root&!group=Users name=a&!group=users name=a&!passwd=1 name=a&!password=MQ= "
      "name=a&!password=IA== "
      "name=a&!password=MQ==MQ==");
  kUserMod.refuses("!name=" + std::string(31, 'a') + " name=a&!newname=" + std::string(31, 'a'));
  kUserMod.refuses("name=a&!password=" + std::string(41, 'Q') + "%3D%3D%3D name=a&!password=MQ%3D%3D" +
                   std::string(61, '+'));
  kUserMod.refuses("name=d", "account.max_users=2");
}

TEST(UserMod, KeepsTheBrandsRules) {
  constexpr char kLarkmoor[] = "system.brand=Larkmoor product.modules=x,device1_2";
  kUserMod.refuses("name=a&!newname=d name=root&!newname=d", "system.brand=Velkor");
  // Seven characters, seventeen, none, eight with one that is not allowed; an ordinary account has no
  // minimum.
  kUserMod.refuses(
      "name=root&!password=MTIzNDU2Nw== name=root&!password=MTIzNDU2Nzg5MDEyMzQ1Njc= "
      "name=root&!password= name=root&!password=MTIzNDU2Nyo= name=a&!password=Kg==",
      kLarkmoor);
  for (const char* query : {"name=root&password=MTIzNDU2Nzg=", "name=a&password=", "name=root", "name=d"}) {
    scripted().reset(std::string{kAccounts} + " " + kLarkmoor);
    EXPECT_EQ(request("user_mod.cgi", query).status, 200) << query;
  }
  scripted().reset(std::string{kAccounts} + " system.brand=Larkmoor product.modules=device1");
  EXPECT_EQ(request("user_mod.cgi", "name=root&password=").status, 200);
}

TEST(UserDel, TakesAListOfOrdinaryAccounts) {
  const std::tuple<const char*, const char*, const char*, const char*> rows[] = {
      {"name=a,c", "name=a,c", "1", "b"},
      {"name=,b,", "name=,b,", "2", "ac"},
      {"name=,", "name=,", "3", "abc"},
      {"Name=a", "name=", "3", "abc"}};
  for (const auto& [query, reply, count, names] : rows) {
    scripted().reset(kAccounts);
    EXPECT_EQ(request("user_del.cgi", query).body, reply) << query;
    EXPECT_EQ(account("user_count"), count) << query;
    EXPECT_EQ(account("user_name[1]") + account("user_name[2]") + account("user_name[3]"), names) << query;
  }
  kUserDel.refuses("! name= name=a,a name=root name=a,root name=old name=a+,b name=a%00 name=a&!a=1");
  kUserDel.refuses("name=a a=1&!name", "account.user_count=0");
}

using User = std::pair<std::string, std::string>;

struct Model {
  User admin{"root", ""};
  std::vector<User> users{};

  auto find(const std::string& name) {
    return std::find_if(users.begin(), users.end(), [&](const User& user) { return user.first == name; });
  }
  bool has(const std::string& name) { return find(name) != users.end(); }

  bool mod(const std::string& name, const std::string& newName, const char* password) {
    const std::string wanted = newName.empty() ? name : newName;
    const bool isNew = name != admin.first && !has(name);
    if (wanted != name && (wanted == admin.first || has(wanted))) return false;
    if (isNew && (!newName.empty() || users.size() == 20)) return false;
    if (isNew) users.emplace_back(name, "");
    User& user = name == admin.first ? admin : *find(name);
    user = {wanted, password == nullptr ? user.second : password};
    return true;
  }
  bool del(const std::string& first, const std::string& second) {
    if (first == second || !has(first) || (!second.empty() && !has(second))) return false;
    users.erase(find(first));
    if (has(second)) users.erase(find(second));
    return true;
  }
  void expectStored() const {
    _account_setting record;
    std::memcpy(&record, scripted().records[static_cast<std::size_t>(RecordIndex::account)].data(),
                sizeof record);
    EXPECT_EQ(User(record.admin_name, record.admin_password), admin);
    EXPECT_EQ(record.user_count, users.size());
    for (std::size_t slot = 1; slot <= 20; ++slot)
      EXPECT_EQ(User(record.user_name[slot], record.user_password[slot]),
                slot <= users.size() ? users[slot - 1] : User());
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
    const std::string name = pick(12) == 0 ? model.admin.first : anyName();
    const std::string other = pick(3) == 0 ? anyName() : "";
    const auto& [sent, password] = kPasswords[pick(3)];
    const bool deletes = pick(4) == 0;
    const std::string query =
        "name=" + name + (deletes ? "," + other : (other.empty() ? "" : "&newname=" + other) + sent);
    SCOPED_TRACE(std::to_string(step) + ": " + query);
    const bool expected = deletes ? model.del(name, other) : model.mod(name, other, password);
    EXPECT_EQ(request(deletes ? "user_del.cgi" : "user_mod.cgi", query).status, expected ? 200 : 400);
    model.expectStored();
    accepted += expected ? 1 : 0;
  }
  EXPECT_GT(accepted, 3'000);
}

}  // namespace
}  // namespace camera::test
