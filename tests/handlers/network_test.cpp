// network.cgi: what each parameter changes, which combinations it refuses, and what a failed write leaves.
#include <gtest/gtest.h>

#include <sstream>

#include "tests/handlers/scripted_platform.h"

namespace camera::test {
namespace {

constexpr char kState[] =
    "lan.dhcp=0 lan.ip=10.0.0.2 lan.netmask=255.0.0.0 lan.gateway=10.0.0.1 lan.dns1=10.0.0.3 "
    "lan.dns2=10.0.0.4 pppoe.enable=0 pppoe.user=pu pppoe.password=pp ddns.enable=0 ddns.provider=dyndns "
    "ddns.host=dh ddns.user=du ddns.password=dp upnp.enable=0 upnp.http_external_port=8080 "
    "upnp.rtsp_external_port=8554 httpsvr.http_port=80 httpsvr.alt_port=443 rtspsvr.rtsp_port=554";
constexpr char kReply[] =
    "dhcp=off ip=10.0.0.2 netmask=255.0.0.0 gateway=10.0.0.1 dns1=10.0.0.3 dns2=10.0.0.4 pppoe=off "
    "pppoeuser=pu pppoepass=pp ddns=off ddnsprovider=dyndns ddnshost=dh ddnsuser=du ddnspass=dp upnp=off "
    "httpport=80 httpexternalport=8080 rtspport=554 rtspexternalport=8554 ";

// The lines of a reply that are not those of the one before.
std::string difference(const std::string& before, const std::string& after) {
  std::istringstream old{before};
  std::istringstream now{after};
  std::string changed;
  for (std::string oldLine, line; now >> line; oldLine.clear()) {
    old >> oldLine;
    if (line != oldLine) changed += (changed.empty() ? "" : " ") + line;
  }
  return changed;
}

void start(const char* state) {
  scripted().reset();
  scripted().store(kState);
  scripted().store(state);
}

struct Change {
  const char* query;
  const char* state;
  const char* changes;  // the lines of the reply that differ from those before; they are stored too
  const char* writes;
};

TEST(Network, ChangesWhatIsNamedAndNothingElse) {
  constexpr char kLan[] = "clean set lan 1 work lan";
  constexpr char kPppoe[] = "clean set pppoe 1 work pppoe";
  constexpr char kDdns[] = "clean set ddns 1 work ddns";
  constexpr char kUpnp[] = "clean set upnp 1 work upnp";
  constexpr char kServers[] = "clean set httpsvr 1 set rtspsvr 1 work httpsvr,rtspsvr";
  const Change kRows[] = {
      {"dhcp=on&ip=10.1.0.2&netmask=255.255.0.0", "", "dhcp=on ip=10.1.0.2 netmask=255.255.0.0", kLan},
      {"gateway=10.0.0.9&dns2=8.8.4.4", "", "gateway=10.0.0.9 dns2=8.8.4.4", kLan},
      {"dns1=", "", "dns1=", kLan},
      {"dns2=", "", "dns2=", kLan},
      {"pppoe=on", "", "pppoe=on", kPppoe},
      {"pppoeuser=", "", "pppoeuser=", kPppoe},
      {"pppoepass=", "pppoe.enable=1", "pppoepass=", kPppoe},
      {"pppoe=on&pppoeuser=me", "pppoe.user=", "pppoe=on pppoeuser=me", kPppoe},
      {"ddns=on&ddnsprovider=velkorddns", "", "ddns=on ddnsprovider=velkorddns", kDdns},
      {"ddnshost=&ddnsuser=", "", "ddnshost= ddnsuser=", kDdns},
      {"ddns=off&ddnspass=", "ddns.enable=1", "ddns=off ddnspass=", kDdns},
      {"httpexternalport=1", "", "httpexternalport=1", kUpnp},
      {"upnp=on&rtspexternalport=65535", "", "upnp=on rtspexternalport=65535", kUpnp},
      {"httpexternalport=8554&rtspexternalport=8080", "", "httpexternalport=8554 rtspexternalport=8080",
       kUpnp},
      {"httpport=443", "", "httpport=443", "clean set httpsvr 1 work httpsvr"},  // the second port as well
      {"rtspport=8080", "", "rtspport=8080", "clean set rtspsvr 1 work rtspsvr"},
      {"httpport=554&rtspport=80", "", "httpport=554 rtspport=80", kServers},
      // What was stored in a clash or incomplete stays as it is until the request names it.
      {"upnp=on", "httpsvr.http_port=554 upnp.http_external_port=8554", "upnp=on", kUpnp},
      {"dhcp=on", "ddns.enable=1 ddns.host= pppoe.enable=1 pppoe.user=", "dhcp=on", kLan},
      {"httpport=80&dhcp=off&pppoeuser=pu", "", "", "clean work"},
      {"", "", "", ""},
  };
  for (const Change& row : kRows) {
    SCOPED_TRACE(std::string{row.query} + "  on " + row.state);
    start(row.state);
    const Reply before = request("network.cgi", "");
    const Reply reply = request("network.cgi", row.query);
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(difference(before.body, reply.body), row.changes);
    EXPECT_EQ(scripted().writes(), row.writes);
    EXPECT_EQ(request("network.cgi", "").body, reply.body) << "is not what was stored";
  }
}

TEST(Network, TakesTextsUpToTheirLongest) {
  for (const auto& [name, longest] : {std::pair{"ddnshost=", 36},
                                      {"ddnsuser=", 30},
                                      {"ddnspass=", 30},
                                      {"pppoeuser=", 32},
                                      {"pppoepass=", 60}}) {
    const std::string query = name + std::string(static_cast<std::size_t>(longest), 'x');
    start("");
    EXPECT_EQ(request("network.cgi", query + "x").status, 400) << name;
    EXPECT_EQ(difference(kReply, request("network.cgi", query).body), query);
  }
}

TEST(Network, RefusesWhatCannotBe) {
  const std::pair<const char*, std::vector<const char*>> kTable[] = {
      {"",
       {"dhcp=1",
        "ip=",
        "ip=10.0.0.256",
        "ip=10.0.0",
        "ip=10.0.0.2%00",
        "ip=255.255.255.255",
        "netmask=",
        "netmask=255.0.255.0",
        "gateway=",
        "gateway=camera",
        "dns1=10.0.0.",
        "dns2=::1",
        "upnp=",
        "httpport=0",
        "httpport=65536",
        "rtspport=0",
        "httpexternalport=0",
        "rtspexternalport=65536",
        "ddnsprovider=other",
        "ddnshost=a/b",
        "ddnspass=a+b",
        "dhcp=on&user=me"}},
      {"",
       {"httpport=80&rtspport=80", "httpport=554", "rtspport=80", "httpexternalport=9&rtspexternalport=9",
        "httpexternalport=8554", "rtspexternalport=8080"}},
      {"rtspsvr.rtsp_port=80", {"httpport=80", "rtspport=80"}},  // named, though stored as it is
      {"", {"ddns=on&ddnshost=", "pppoe=on&pppoeuser="}},
      {"ddns.enable=1", {"ddnshost=", "ddnsuser=", "ddnspass="}},
      {"ddns.provider=", {"ddns=on"}},
      {"ddns.password=", {"ddns=on"}},
      {"pppoe.enable=1", {"pppoeuser="}},
      {"pppoe.user=", {"pppoe=on"}},
  };
  std::vector<Row> rows;
  for (const auto& [state, queries] : kTable) {
    for (const char* query : queries) rows.push_back({query, state, 400, "", ""});
  }
  expectRows("network.cgi", kState, rows);
}

TEST(Network, StopsAtTheFirstRecordThatCannotBeRead) {
  std::string calls;
  for (const char* call : {"get lan", "get pppoe", "get ddns", "get httpsvr", "get rtspsvr", "get upnp"}) {
    calls += (calls.empty() ? "" : " ") + std::string{call};
    start("");
    scripted().results[call] = 2;
    EXPECT_EQ(request("network.cgi", "dhcp=on").status, 500) << call;
    EXPECT_EQ(scripted().allCalls(), calls);
  }
}

TEST(Network, AFailedWriteKeepsThoseBeforeItAndRunsNoAction) {
  constexpr std::pair<const char*, const char*> kWrites[] = {
      {"lan", "dhcp=on"},  {"pppoe", "pppoepass=x"},   {"ddns", "ddnspass=x"},
      {"upnp", "upnp=on"}, {"httpsvr", "httpport=81"}, {"rtspsvr", "rtspport=555"}};
  std::string query;
  for (const auto& [record, change] : kWrites) query += std::string{change} + "&";

  start("");
  EXPECT_EQ(request("network.cgi", "").body, kReply);
  EXPECT_EQ(request("network.cgi", query).status, 200);
  EXPECT_EQ(scripted().writes(),
            "clean set lan 1 set pppoe 1 set ddns 1 set upnp 1 set httpsvr 1 set rtspsvr 1 "
            "work ddns,lan,pppoe,upnp,httpsvr,rtspsvr");

  for (const auto& [result, status] : {std::pair{1, 400}, {2, 500}, {-1, 500}}) {
    std::string calls = "clean";
    std::string stored;
    for (const auto& [record, change] : kWrites) {
      const std::string call = std::string{"set "} + record + " 1";
      calls += " " + call;
      SCOPED_TRACE(call + " giving " + std::to_string(result));
      start("");
      scripted().results[call] = result;
      EXPECT_EQ(request("network.cgi", query).status, status);
      EXPECT_EQ(scripted().writes(), calls);
      EXPECT_EQ(difference(kReply, request("network.cgi", "").body), stored);
      stored += (stored.empty() ? "" : " ") + std::string{change};
    }
  }
}

}  // namespace
}  // namespace camera::test
