// A camera platform that records every call and returns what the test scripted. It is linked in place of the
// real one.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/network/interface.h"
#include "platform/network/site_survey.h"
#include "platform/store/record.h"

namespace camera::test {

// There is one in the process. Every fake of a platform function that can fail calls answer(), by which the
// fault sweep makes it fail. The name of a call begins with a verb:
//   get            reads, or asks a daemon; may fail
//   ask            reads something that may be missing; a result other than 0: it is missing
//   time           reads the clock
//   set, send, run writes to the store, tells a daemon to act, runs a command
//   work           runs the action programs of records
struct ScriptedPlatform {
  std::vector<std::string> calls;  // of the last request, in order: "get lan", "set lan", "work lan,ddns";
                                   // the second call of that name is "get lan#2"
  std::map<std::string, int> results;  // what the call of that name returns instead of 0: {"set lan", 2}
  std::vector<std::vector<std::uint8_t>> records;  // what the store holds, by index
  bool isContested = false;   // another process overtakes every write, until the store is locked
  bool wasOvertaken = false;  // another process overtook the last write
  bool isFull = false;        // a write that fails does so because the disk is full
  std::string log;            // the texts of the last request, a line each

  std::map<std::string, std::string> product;       // the lines of product.conf
  std::map<std::string, InterfaceInfo> interfaces;  // the active ones, by the camera's name
  std::string sites;                                // lines of the survey's file, with commas for tabs
  std::vector<std::string> printed;                 // the pieces that readCommand passes on
  std::map<std::string, std::string> card;          // entries of the product's folder, by path
  int rssi = 0;
  std::int64_t time = 0;  // of the camera's clock; the local time is the one in the record curtime

  std::uint64_t unfinished = 0;  // records written whose actions did not run

  // Makes it a camera with every feature and factory settings, then changes it by store(state).
  void reset(const std::string& state = "");
  // Changes the state by words of these forms, in which a + is a space:
  //   lan.dhcp=1        a setting, in the text form of camera-settings
  //   product=          product.conf is empty
  //   product.has_mic=0 product.conf has this line; an unknown key makes it unreadable
  //   eth0=10.0.0.2     this interface is active (empty: not), with gateway 192.168.0.1
  //   site=A,NONE,OPEN,Infra,1,-50    one more network in the survey, as in its file
  //   line=by+Motion    one more line in what a command prints
  //   card=2014,folder card=2014/a.jpg,1025    an entry of the card: folder, pipe, locked or a file's size
  //   rssi=-42          the signal
  //   time=86400        the camera's clock
  // and those of ScriptedDaemons::store.
  void store(const std::string& state);
  // One stored value, in the same form: stored("lan.dhcp").
  std::string stored(const std::string& name) const;

  void beginRequest();
  int answer(const std::string& call);

  // The calls that begin with one of the verbs, joined by spaces.
  std::string history(const std::vector<std::string>& verbs) const;
  // The calls that changed something; empty after a read.
  std::string writes() const { return history({"set", "send", "run"}); }

 private:
  std::map<std::string, int> times_;
};

// The result of a set that is refused because another process overtook it.
inline constexpr int kOvertaken = 11;

ScriptedPlatform& scripted();

// True if the call's name begins with the verb.
bool isA(const std::string& verb, const std::string& call);

}  // namespace camera::test
