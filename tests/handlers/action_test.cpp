// action_ftp.cgi and action_mail.cgi: what goes into the records, and when the snapshots' record follows.
#include "tests/handlers/endpoint.h"

namespace camera::test {
namespace {

const Endpoint kFtp{
    "action_ftp.cgi", "ftp.enable=0 ftp.host=h ftp.pass=secret ftp.interval=10500 snapshot.ftp_enable=0",
    "enable=no&host=h&port=21&path=&prefix=&user=&pass=c2VjcmV0&passive=yes&interval=10", "set ftp 1"};
const Endpoint kMail{"action_mail.cgi",
                     "smtp.enable=0 smtp.sender=a@b.c smtp.to=d@e.f smtp.host=h smtp.pass=secret",
                     "enable=no&sender=a@b.c&to=d@e.f&host=h&port=25&user=&pass=c2VjcmV0", "set smtp 1"};
constexpr char kBoth[] = "set ftp 1 set snapshot 1";

const std::string kSixty(60, 'h');
const std::string kThirty(30, '~');
const std::string kEncoded = "pass=YWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFhYWFh";  // of thirty

TEST(ActionFtp, TellsTheSnapshotsWhenItIsSwitchedOrPaced) {
  kFtp.accepts({{.query = "enable=yes", .writes = kBoth},
                {.query = "enable=yes", .state = "snapshot.ftp_enable=1", .writes = kBoth},
                {"enable=no"},
                {.query = "interval=11", .writes = kBoth},
                {.query = "interval=10", .writes = kBoth},  // 10.5 seconds were stored
                {.query = "interval=10", .state = "ftp.interval=10000", .writes = ""},
                {.query = "enable=yes&interval=86400&passive=no", .writes = kBoth},
                {"passive=no&nobody=1", "", "passive=no"}});
  EXPECT_EQ(scripted().stored("snapshot.ftp_enable"), "0");
  kFtp.accepts({{.query = "enable=no&interval=10", .state = "ftp.enable=1", .writes = kBoth}});
  EXPECT_EQ(scripted().stored("snapshot.ftp_enable") + scripted().stored("ftp.interval"), "010000");
  scripted().results = {{"set snapshot 1", kOvertaken}};
  EXPECT_EQ(request("action_ftp.cgi", "enable=yes").status, 200);
  EXPECT_EQ(scripted().stored("snapshot.ftp_enable"), "1") << "forgotten when the request was applied again";
}

TEST(ActionFtp, TakesItsTextsByTheirCharacters) {
  kFtp.accepts({{"host=" + kSixty},
                {"path=/two/folders\\"},
                {"path=&prefix=&user=", "ftp.path=a ftp.prefix=b ftp.user=c"},
                {"prefix=" + kThirty},
                {"user=a:*\"?"}});
  kFtp.refuses(
      "interval=9 interval=86401 interval= interval=1e3 port=0 port=65536 port=+21 port=-21 port=%2B21 host= "
      "host=a/b host=a%00 path=a:b path=a+b path=a* prefix=a/b prefix=a\\ user=a+b enable=on passive= "
      "port=22&!interval=9");
  kFtp.refuses("host=h" + kSixty + " user=~" + kThirty + " path=~" + kThirty + " prefix=~" + kThirty);
}

TEST(ActionPassword, TravelsInBase64) {
  for (const Endpoint& endpoint : {kFtp, kMail}) {
    endpoint.accepts("pass= pass=c2VjcmV0 pass=cA==");
    endpoint.accepts({{"pass=fj8%2B", "", "pass=fj8+"}, {kEncoded}});
    endpoint.refuses(
        "pass=cA pass=c pass=cA= pass=cB== pass=c2Vj+cmV0 pass=AA== pass=IA== pass=w6Q= pass=%00");
    endpoint.refuses(kEncoded + "YQ==");
  }
  kMail.accepts(kEncoded);
  EXPECT_EQ(scripted().stored("smtp.pass"), std::string(30, 'a'));
}

TEST(ActionMail, TakesAddressesWithADotAfterTheAt) {
  kMail.accepts("enable=yes&port=65535&user= sender=@. to=a.b@c.d,e@f.g to=a@b@c.d");
  kMail.accepts({{"to=a@." + std::string(57, 'x')}, {"sender=a@b.c&to=d@e.f&nobody=1", "", ""}});
  kMail.refuses(
      "sender= sender=ab.c sender=a.b@c to=a@b to= sender=a+b@c.d host= port=0 port=65536 user=a+b enable=1");
  kMail.refuses("to=a@." + std::string(58, 'x') + " host=h" + kSixty);
}

}  // namespace
}  // namespace camera::test
