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

// The lines of a reply that are not those of the one before, a space before each.
std::string difference(const std::string& before, const std::string& after) {
  std::istringstream lines{after};
  std::string changed;
  for (std::string line; lines >> line;) {
    if ((" " + before).find(" " + line + " ") == before.npos) changed += " " + line;
  }
  return changed;
}

void start(const char* state) {
  scripted().reset();
  scripted().store(kState);
  scripted().store(state);
}

TEST(Network, ChangesWhatIsNamedAndNothingElse) {
  expectRows(
      "network.cgi", kState,
      {{"", "", 200, kReply, ""}, {"httpport=80&dhcp=off&pppoeuser=pu", "", 200, kReply, "clean work"}});
  // Of the reply the lines that differ from those before, which are stored too; of the writes the one record.
  const Row rows[] = {
      {"dhcp=on&ip=10.1.0.2&netmask=255.255.0.0", "", 200, "dhcp=on ip=10.1.0.2 netmask=255.255.0.0", "lan"},
      {"gateway=10.0.0.9&dns1=&dns2=", "", 200, "gateway=10.0.0.9 dns1= dns2=", "lan"},
      {"pppoeuser=", "", 200, "pppoeuser=", "pppoe"},
      {"pppoepass=", "pppoe.enable=1", 200, "pppoepass=", "pppoe"},
      {"pppoe=on&pppoeuser=me", "pppoe.user=", 200, "pppoe=on pppoeuser=me", "pppoe"},
      {"ddns=on&ddnsprovider=velkorddns", "", 200, "ddns=on ddnsprovider=velkorddns", "ddns"},
      {"ddns=off&ddnshost=&ddnspass=", "ddns.enable=1", 200, "ddns=off ddnshost= ddnspass=", "ddns"},
      {"upnp=on&httpexternalport=1&rtspexternalport=65535", "", 200,
       "upnp=on httpexternalport=1 rtspexternalport=65535", "upnp"},
      {"httpport=443", "", 200, "httpport=443", "httpsvr"},  // the second port as well
      // What was stored in a clash or incomplete stays as it is until the request names it.
      {"upnp=on", "httpsvr.http_port=554 upnp.http_external_port=8554", 200, "upnp=on", "upnp"},
      {"dhcp=on", "ddns.enable=1 ddns.host= pppoe.enable=1 pppoe.user=", 200, "dhcp=on", "lan"}};
  for (const auto& [query, state, status, changes, record] : rows) {
    SCOPED_TRACE(query + "  on " + state);
    start(state);
    const Reply before = request("network.cgi", "");
    const Reply reply = request("network.cgi", query);
    EXPECT_EQ(reply.status, status);
    EXPECT_EQ(difference(before.body, reply.body), " " + changes);
    EXPECT_EQ(scripted().writes(), std::string{"clean set "} + record + " 1 work " + record);
    EXPECT_EQ(request("network.cgi", "").body, reply.body) << "is not what was stored";
  }
}

TEST(Network, RefusesWhatCannotBe) {
  const std::pair<const char*, std::string> kRows[] = {
      {"",
       "dhcp=1 ip= ip=10.0.0.256 ip=10.0.0.2%00 netmask= netmask=255.0.255.0 gateway= gateway=camera "
       "dns1=10.0.0. dns2=::1 upnp= httpport=0 httpport=65536 rtspport=0 httpexternalport=0 "
       "rtspexternalport=65536 ddnsprovider=other ddnshost=a/b ddnspass=a+b dhcp=on&user=me "
       "httpport=80&rtspport=80 httpport=554 rtspport=80 httpexternalport=9&rtspexternalport=9 "
       "httpexternalport=8554 rtspexternalport=8080 ddns=on&ddnshost= pppoe=on&pppoeuser="},
      {"rtspsvr.rtsp_port=80", "httpport=80 rtspport=80"},  // named, though stored as it is
      {"ddns.enable=1", "ddnshost= ddnsuser= ddnspass="},
      {"ddns.provider=", "ddns=on"},
      {"ddns.password=", "ddns=on"},
      {"pppoe.enable=1", "pppoeuser="},
      {"pppoe.user=", "pppoe=on"}};
  for (const auto& [state, queries] : kRows) {
    std::istringstream words{queries};
    for (std::string query; words >> query;) expectRows("network.cgi", kState, {{query, state, 400, "", ""}});
  }
  constexpr std::pair<const char*, std::size_t> kLongest[] = {
      {"ddnshost=", 36}, {"ddnsuser=", 30}, {"ddnspass=", 30}, {"pppoeuser=", 32}, {"pppoepass=", 60}};
  for (const auto& [name, longest] : kLongest) {
    const std::string query = name + std::string(longest, 'x');
    expectRefused("network.cgi", kState, {query + "x"});
    EXPECT_EQ(difference(kReply, request("network.cgi", query).body), " " + query);
  }
}

TEST(Network, StopsAtTheFirstRecordThatCannotBeRead) {
  std::string calls;
  for (const char* call : {"get lan", "get pppoe", "get ddns", "get httpsvr", "get rtspsvr", "get upnp"}) {
    calls += (calls.empty() ? "" : " ") + std::string{call};
    expectResults("network.cgi", kState, {{call, 2, "dhcp=on", 500, calls.c_str()}});
  }
}

TEST(Network, AFailedWriteKeepsThoseBeforeItAndRunsNoAction) {
  constexpr std::pair<const char*, const char*> kWrites[] = {
      {"lan", "dhcp=on"},  {"pppoe", "pppoepass=x"},    {"ddns", "ddnspass=x"},
      {"upnp", "upnp=on"}, {"httpsvr", "httpport=554"}, {"rtspsvr", "rtspport=80"}};
  std::string query;
  for (const auto& [record, change] : kWrites) query += std::string{change} + "&";
  std::string calls = "clean";
  std::string stored;
  for (const auto& [record, change] : kWrites) {
    const std::string call = std::string{"set "} + record + " 1";
    calls += " " + call;
    start("");
    scripted().results[call] = 2;
    EXPECT_EQ(request("network.cgi", query).status, 500) << call;
    EXPECT_EQ(scripted().writes(), calls);
    EXPECT_EQ(difference(kReply, request("network.cgi", "").body), stored) << call;
    stored += std::string{" "} + change;
  }
}

}  // namespace
}  // namespace camera::test
