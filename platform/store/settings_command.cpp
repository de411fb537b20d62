// The command line of the settings store.
#include "platform/store/settings_command.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <vector>

#include "platform/descriptor.h"
#include "platform/store/record_fields.h"
#include "platform/store/record_text.h"
#include "platform/store/route.h"

namespace camera {
namespace {

constexpr std::string_view kBackupTitle = "camera-settings backup 1";
constexpr char kUsage[] =
    "usage: camera-settings list | get RECORD [FIELD] | set RECORD FIELD=VALUE... | reset [RECORD] | backup "
    "| "
    "restore | route [TEXT]";

using Arguments = std::span<const std::string_view>;
using Bytes = std::vector<unsigned char>;

// A record on its way from a backup to the store.
struct Restored {
  const RecordInfo* info;
  Bytes record;
  std::vector<bool> seen;  // by the offset of the element
};

// One run of the program.
class Command {
 public:
  Command(SettingsStore& store, CommandStreams* streams) : store_(store), streams_(*streams) {}

  StoreResult list(Arguments arguments);
  StoreResult get(Arguments arguments);
  StoreResult set(Arguments arguments);
  StoreResult reset(Arguments arguments);
  StoreResult backup(Arguments arguments);
  StoreResult restore(Arguments arguments);
  StoreResult route(Arguments arguments);

 private:
  // The records of the list, and the route, which only backup, restore and reset treat as one.
  std::vector<const RecordInfo*> everything() const;
  static const RecordInfo* find(Arguments names, std::span<const RecordInfo* const> records);
  StoreResult restoreLine(std::string_view line, std::vector<Restored>* restored);
  StoreResult writeRestored(const std::vector<Restored>& restored);
  StoreResult refuse(std::string message);
  StoreResult report(StoreResult result);

  SettingsStore& store_;
  CommandStreams& streams_;
};

StoreResult Command::list(Arguments /*arguments*/) {
  for (const RecordInfo* info : store_.records()) streams_.output.append(info->name).append("\n");
  return StoreResult::kDone;
}

StoreResult Command::get(Arguments arguments) {
  const RecordInfo* info = find(arguments, store_.records());
  if (info == nullptr) return refuse("no record " + std::string(arguments[0]));
  Bytes record(info->size);
  if (const StoreResult result = store_.read(*info, record.data()); result != StoreResult::kDone) {
    return report(result);
  }
  forEachElement(*info, [&](const Field& field, unsigned index, std::size_t offset) {
    const std::string name = elementName(field, index);
    if (arguments.size() > 1 && arguments[1] != name && arguments[1] != field.name) return;
    streams_.output += name + "=" + formatElement(field, &record[offset]) + "\n";
  });
  if (streams_.output.empty()) return refuse("no field " + std::string(arguments[1]));
  return StoreResult::kDone;
}

StoreResult Command::set(Arguments arguments) {
  const RecordInfo* info = find(arguments, store_.records());
  if (info == nullptr) return refuse("no record " + std::string(arguments[0]));
  Bytes record(info->size);
  if (const StoreResult result = store_.read(*info, record.data()); result != StoreResult::kDone) {
    return report(result);
  }
  for (const std::string_view assignment : arguments.subspan(1)) {
    const std::size_t equals = assignment.find('=');
    const std::optional<Element> element = findElement(*info, assignment.substr(0, equals));
    if (equals == assignment.npos || !element) return refuse("no field in " + std::string(assignment));
    if (!parseElement(*element->field, assignment.substr(equals + 1), &record[element->offset])) {
      return refuse("no value for the field: " + std::string(assignment));
    }
  }
  return report(store_.write(*info, record.data()));
}

// A record that cannot be reset does not keep the others from it.
StoreResult Command::reset(Arguments arguments) {
  std::vector<const RecordInfo*> records = everything();
  if (!arguments.empty()) {
    const RecordInfo* info = find(arguments, records);
    if (info == nullptr) return refuse("no record " + std::string(arguments[0]));
    records = {info};
  }
  StoreResult worst = StoreResult::kDone;
  for (const RecordInfo* info : records) worst = std::max(worst, report(store_.reset(*info)));
  return worst;
}

StoreResult Command::backup(Arguments /*arguments*/) {
  std::string text = std::string(kBackupTitle) + "\n";
  for (const RecordInfo* info : everything()) {
    Bytes record(info->size);
    if (const StoreResult result = store_.read(*info, record.data()); result != StoreResult::kDone) {
      return report(result);
    }
    forEachElement(*info, [&](const Field& field, unsigned index, std::size_t offset) {
      text += std::string(info->name) + "." + elementName(field, index) + "=" +
              formatElement(field, &record[offset]) + "\n";
    });
  }
  streams_.output = std::move(text);
  return StoreResult::kDone;
}

StoreResult Command::restore(Arguments /*arguments*/) {
  std::string text;
  if (const int error = readAll(streams_.input, &text); error != 0) {
    refuse(std::string("standard input: ") + std::strerror(error));
    return StoreResult::kFailed;
  }
  std::vector<Restored> restored;
  std::string_view rest = text;
  for (int number = 1; number == 1 || !rest.empty(); ++number) {
    const std::size_t end = rest.find('\n');
    const std::string_view line = rest.substr(0, end);
    // A last line without an end may be half of one.
    StoreResult result = end == rest.npos ? refuse("cut short") : StoreResult::kDone;
    if (number == 1 && line != kBackupTitle) result = refuse("no backup");
    if (number > 1 && result == StoreResult::kDone) result = restoreLine(line, &restored);
    if (result != StoreResult::kDone) {
      streams_.error = "line " + std::to_string(number) + ": " + streams_.error;
      return result;
    }
    rest.remove_prefix(end + 1);
  }
  return writeRestored(restored);
}

StoreResult Command::route(Arguments arguments) {
  Route route{};
  if (arguments.empty()) {
    const StoreResult result = store_.read(kRouteRecord, &route);
    if (result == StoreResult::kDone) streams_.output = std::string(route.stops) + "\n";
    return report(result);
  }
  if (!isRoute(arguments[0])) return refuse("a route is at most 63 digits and commas");
  std::copy(arguments[0].begin(), arguments[0].end(), route.stops);
  return report(store_.write(kRouteRecord, &route));
}

std::vector<const RecordInfo*> Command::everything() const {
  std::vector<const RecordInfo*> all(store_.records().begin(), store_.records().end());
  all.push_back(&kRouteRecord);
  return all;
}

const RecordInfo* Command::find(Arguments names, std::span<const RecordInfo* const> records) {
  const auto found = std::find_if(records.begin(), records.end(),
                                  [&](const RecordInfo* info) { return info->name == names[0]; });
  return found == records.end() ? nullptr : *found;
}

StoreResult Command::restoreLine(std::string_view line, std::vector<Restored>* restored) {
  const std::size_t equals = std::min(line.find('='), line.size());
  const std::size_t dot = std::min(line.find('.'), equals);
  const std::string_view recordName[] = {line.substr(0, dot)};
  const std::vector<const RecordInfo*> records = everything();
  const RecordInfo* info = find(recordName, records);
  if (info == nullptr || dot == equals || equals == line.size()) return refuse("no record.field=value");
  const std::optional<Element> element = findElement(*info, line.substr(dot + 1, equals - dot - 1));
  if (!element) return refuse("unknown field");

  auto target =
      std::find_if(restored->begin(), restored->end(), [&](const Restored& r) { return r.info == info; });
  if (target == restored->end()) {
    const auto* defaults = static_cast<const unsigned char*>(info->defaults);
    restored->push_back({info, Bytes(defaults, defaults + info->size), std::vector<bool>(info->size)});
    target = std::prev(restored->end());
  }
  if (target->seen[element->offset]) return refuse("repeated field");
  target->seen[element->offset] = true;
  const std::string_view value = line.substr(equals + 1);
  if (!parseElement(*element->field, value, &target->record[element->offset]) ||
      (info == &kRouteRecord && !isRoute(value))) {
    return refuse("no value for the field");
  }
  return StoreResult::kDone;
}

StoreResult Command::writeRestored(const std::vector<Restored>& restored) {
  for (const Restored& entry : restored) {
    const StoreResult result = report(store_.overwrite(*entry.info, entry.record.data()));
    if (result != StoreResult::kDone) return result;
  }
  return StoreResult::kDone;
}

StoreResult Command::refuse(std::string message) {
  streams_.error = std::move(message);
  return StoreResult::kRefused;
}

StoreResult Command::report(StoreResult result) {
  if (result != StoreResult::kDone) streams_.error = store_.fault();
  return result;
}

struct Verb {
  std::string_view name;
  std::size_t fewest;  // arguments after the verb
  std::size_t most;
  StoreResult (Command::*run)(Arguments arguments);
};

constexpr Verb kVerbs[] = {
    {"list", 0, 0, &Command::list},      {"get", 1, 2, &Command::get},
    {"set", 2, SIZE_MAX, &Command::set}, {"reset", 0, 1, &Command::reset},
    {"backup", 0, 0, &Command::backup},  {"restore", 0, 0, &Command::restore},
    {"route", 0, 1, &Command::route},
};

}  // namespace

int runSettingsCommand(SettingsStore& store, std::span<const std::string_view> arguments,
                       CommandStreams* streams) {
  for (const Verb& verb : kVerbs) {
    if (arguments.empty() || arguments[0] != verb.name) continue;
    const Arguments rest = arguments.subspan(1);
    if (rest.size() < verb.fewest || rest.size() > verb.most) break;
    Command command(store, streams);
    return static_cast<int>((command.*verb.run)(rest));
  }
  streams->error = kUsage;
  return static_cast<int>(StoreResult::kRefused);
}

}  // namespace camera
