// A camera platform that records every call and gives back what the test scripted, linked in place of the
// real one.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/network/if_info.h"
#include "platform/network/site_survey.h"
#include "platform/store/record.h"

namespace camera::test {

// Of the process; a test starts with scripted().reset().
struct ScriptedPlatform {
  std::vector<std::string> calls;      // "get lan", "set lan 1", "clean", "work lan,ddns", in order
  std::map<std::string, int> results;  // what a call of that text returns instead of 0, e.g. {"set lan 1", 2}
  std::vector<std::vector<std::uint8_t>> records;  // what the store holds, by index
  int overtaken = 0;  // writes that are still to be refused because another process came first; none while
                      // the store is held
  bool wasOvertaken = false;  // the last one was

  std::string productInfo;                    // text of product.conf
  bool productFails = false;                  // PIB::init raises PIBError
  std::map<std::string, IF_INFO> interfaces;  // the active ones, by the camera's name
  std::vector<sitelist> sites;                // what the survey heard
  std::vector<std::string> printed;           // what read_command hands over, in pieces
  int rssi = 0;
  std::int64_t time = 0;  // of the camera's clock; the local time of curtime is what the record holds

  void reset();
  // Puts values into the store: "lan.dhcp=1 httpsvr.http_port=80", in the text form of camera-settings.
  void store(const std::string& values);
  // One stored value, in the same form: stored("lan.dhcp").
  std::string stored(const std::string& name) const;
  std::string allCalls(bool reads = true) const;  // joined by spaces
  // The calls that wrote or acted: what a read must leave empty.
  std::string writes() const { return allCalls(false); }
};

ScriptedPlatform& scripted();

// One request against a scripted starting state.
struct Row {
  std::string query;
  const char* state;  // for ScriptedPlatform::store, on top of the suite's own
  int status;
  std::string reply;   // body with spaces for line ends; of a failure "" stands for "error=CODE "
  const char* writes;  // "" for none
};

struct Reply {
  int status;
  std::string body;
};

// Serves a request of the endpoint on the scripted platform as it is.
Reply request(const char* cgi, const std::string& query);

// Serves every row from a fresh store that holds the state.
void expectRows(const char* cgi, const char* state, const std::vector<Row>& rows);
void expectRefused(const char* cgi, const char* state, const std::vector<std::string>& queries);  // as 400

// One request during which one call of the platform gives a result of its own.
struct ResultRow {
  const char* call;  // as in ScriptedPlatform::calls
  int result;
  const char* query;
  int status;
  const char* calls;  // all of them, in order
};

// Serves every row from a fresh store that holds the state.
void expectResults(const char* cgi, const char* state, const std::vector<ResultRow>& rows);

}  // namespace camera::test
