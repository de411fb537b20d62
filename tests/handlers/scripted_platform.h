// A camera platform that records every call and gives back what the test scripted, linked in place of the
// real one.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "platform/network/interface.h"
#include "platform/network/site_survey.h"
#include "platform/store/record.h"

namespace camera::test {

// Of the process. Every fake of a platform function asks answer() before it does anything, and that is all it
// takes to join the fault sweep. The text of a call begins with a verb:
//   get            reads, or asks a daemon; the result says whether that worked
//   ask            reads what cannot fail; a result other than 0 means that there is nothing to be had
//   time           reads the clock
//   set, send, run writes to the store, tells a daemon to act, runs a command
struct ScriptedPlatform {
  std::vector<std::string> calls;  // of the last request, in order: "get lan", "set lan", "work lan,ddns";
                                   // the second of a text is "get lan#2"
  std::map<std::string, int> results;  // what the call of that name gives instead of 0, e.g. {"set lan", 2}
  std::vector<std::vector<std::uint8_t>> records;  // what the store holds, by index
  bool isContested = false;   // another process comes first at every write, until the store is held
  bool wasOvertaken = false;  // the last one was

  std::map<std::string, std::string> product;       // the lines of product.conf
  std::map<std::string, InterfaceInfo> interfaces;  // the active ones, by the camera's name
  std::string sites;                                // lines of the survey's file, with commas for tabs
  std::vector<std::string> printed;                 // what readCommand hands over, in pieces
  std::map<std::string, std::string> card;          // entries of the product's folder, by path
  int rssi = 0;
  std::int64_t time = 0;  // of the camera's clock; the local time of curtime is what the record holds

  std::uint64_t unfinished = 0;  // records written whose actions did not run

  // A camera of the fully equipped product with factory settings, in that state.
  void reset(const std::string& state = "");
  // Changes the state by words of these forms, in which a + is a space:
  //   lan.dhcp=1        a setting, in the text form of camera-settings
  //   product=          no line in product.conf
  //   product.has_mic=0 this line; a key that nobody knows makes the file unreadable
  //   eth0=10.0.0.2     this interface is active (empty: not), behind 192.168.0.1
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
  // The calls that changed something: what a read must leave empty.
  std::string writes() const { return history({"set", "send", "run"}); }

 private:
  std::map<std::string, int> times_;
};

// The result of a set that is refused, as 1 says, because another process came first.
inline constexpr int kOvertaken = 11;

ScriptedPlatform& scripted();

// True when the call's text begins with the verb.
bool isA(const std::string& verb, const std::string& call);

}  // namespace camera::test
