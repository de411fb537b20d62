// The command line of the settings store.
#include "platform/store/settings_command.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <vector>

#include "platform/descriptor.h"
#include "platform/store/record_fields.h"
#include "platform/store/record_text.h"
#include "platform/text.h"

namespace camera {
namespace {

// A backup is this line, a line for each element, and a last line with the number of elements, so that a cut
// backup is noticed. It does not name its product: this program does not know its own, and a replacement may
// be a newer product. The help says that values are not compared with what the product has.
constexpr std::string_view kBackupTitle = "camera-settings backup 2";
constexpr std::string_view kBackupEnd = "end ";
constexpr std::size_t kMaxBackup = 1 << 20;  // bytes

// Excluded from backups: they describe the installed firmware and the card that is in the slot.
constexpr std::string_view kFirmware = "system";
constexpr std::string_view kCard = "sd";

// A text that ./run prints too, without its first and last line.
constexpr std::string_view kHelp =
#include "platform/store/settings_help.txt"
    ;

using Arguments = std::span<const std::string_view>;
using Bytes = std::vector<unsigned char>;

// A record on its way from a backup to the store.
struct Restored {
  const RecordInfo* info;
  Bytes record;
  std::vector<bool> seen;  // by the offset of the element
};

// Cuts a text from outside to 64 bytes and replaces control characters, for a message of one line.
std::string shown(std::string_view text) {
  std::string line(text.substr(0, 64));
  std::replace_if(line.begin(), line.end(), isControl, '?');
  return line;
}

void appendItem(std::string_view item, std::string* list) {
  if (!list->empty()) *list += ", ";
  *list += item;
}

// A message that lists the names of a record's fields, without the reserved ones.
std::string noField(const RecordInfo& info, std::string_view name) {
  std::string names;
  for (const Field& field : info.fields) {
    if (field.kind == FieldKind::kReserved) continue;
    appendItem(elementName(field, 0), &names);
    if (field.isArray) names += " to " + elementName(field, field.count - 1U);
  }
  return "no field " + shown(name) + "; " + info.name + " has " + names;
}

// A message that says which values an element accepts.
std::string accepted(const RecordInfo& info, const Field& field) {
  const std::string name = std::string(info.name) + "." + field.name + ": ";
  if (field.kind == FieldKind::kReserved)
    return name + std::to_string(2 * field.width) + " hexadecimal digits";
  std::string range = name + std::to_string(field.min) + " to " + std::to_string(field.max);
  if (field.kind != FieldKind::kText) return range;
  return range + " bytes, \\\\ for a backslash, \\n and \\xNN for control bytes";
}

// One run of the program.
class Command {
 public:
  Command(SettingsStore& store, std::string_view name, CommandStreams* streams)
      : store_(store), name_(name), streams_(*streams) {}

  StoreResult list(Arguments arguments);
  StoreResult get(Arguments arguments);
  StoreResult set(Arguments arguments);
  StoreResult reset(Arguments arguments);
  StoreResult factory(Arguments arguments);
  StoreResult backup(Arguments arguments);
  StoreResult restore(Arguments arguments);
  StoreResult version(Arguments arguments);

 private:
  std::vector<const RecordInfo*> restorable() const;
  static const RecordInfo* find(Arguments names, std::span<const RecordInfo* const> records);
  StoreResult restoreLine(std::string_view line, std::vector<Restored>* restored);
  StoreResult readInput(std::string* text);
  StoreResult factoryLine(std::string_view line, std::vector<Bytes>* records);
  StoreResult replaceAll(std::span<const Replacement> replacements);
  StoreResult atLine(std::size_t number, StoreResult result);
  StoreResult assignLines(const RecordInfo& info, unsigned char* record);
  StoreResult assign(const RecordInfo& info, std::string_view assignment, unsigned char* record);
  StoreResult checkEnd(std::string_view line, std::size_t elements);
  StoreResult refuse(std::string message);
  StoreResult refuseRecord(std::string_view name);
  StoreResult report(const RecordInfo& info, StoreResult result);

  SettingsStore& store_;
  std::string_view name_;  // by which the user called the program
  CommandStreams& streams_;
};

StoreResult Command::list(Arguments /*arguments*/) {
  for (const RecordInfo* info : store_.records()) streams_.output.append(info->name).append("\n");
  return StoreResult::kDone;
}

StoreResult Command::get(Arguments arguments) {
  const RecordInfo* info = find(arguments, store_.records());
  if (info == nullptr) return refuseRecord(arguments[0]);
  Bytes record(info->size);
  if (const StoreResult result = store_.read(*info, record.data()); result != StoreResult::kDone) {
    return report(*info, result);
  }
  forEachElement(*info, [&](const Field& field, unsigned index, std::size_t offset) {
    const std::string name = elementName(field, index);
    if (arguments.size() > 1 && arguments[1] != name && arguments[1] != field.name) return;
    streams_.output += name + "=" + formatElement(field, &record[offset]) + "\n";
  });
  if (streams_.output.empty()) return refuse(noField(*info, arguments[1]));
  return StoreResult::kDone;
}

StoreResult Command::set(Arguments arguments) {
  const RecordInfo* info = find(arguments, store_.records());
  if (info == nullptr) return refuseRecord(arguments[0]);
  Bytes record(info->size);
  if (const StoreResult result = store_.read(*info, record.data()); result != StoreResult::kDone) {
    return report(*info, result);
  }
  for (const std::string_view assignment : arguments.subspan(1)) {
    const StoreResult result =
        assignment == "-" ? assignLines(*info, record.data()) : assign(*info, assignment, record.data());
    if (result != StoreResult::kDone) return result;
  }
  return report(*info, store_.write(*info, record.data()));
}

// Other users can see the arguments of a program, but not what it reads.
StoreResult Command::assignLines(const RecordInfo& info, unsigned char* record) {
  std::string text;
  StoreResult result = readInput(&text);
  std::string_view rest = text;
  for (std::size_t number = 1; result == StoreResult::kDone && !rest.empty(); ++number) {
    result = assign(info, takeUntil('\n', &rest), record);
    if (result != StoreResult::kDone) return atLine(number, result);
  }
  return result;
}

StoreResult Command::assign(const RecordInfo& info, std::string_view assignment, unsigned char* record) {
  std::string_view value = assignment;
  const std::string_view name = takeUntil('=', &value);
  const std::optional<Element> element = findElement(info, name);
  if (!element) return refuse(noField(info, name));
  if (name.size() == assignment.size()) return refuse("no value for " + shown(name));
  if (parseElement(*element->field, value, record + element->offset)) return StoreResult::kDone;
  return refuse(accepted(info, *element->field));
}

StoreResult Command::reset(Arguments arguments) {
  if (!arguments.empty()) {
    const RecordInfo* info = find(arguments, store_.records());
    return info == nullptr ? refuseRecord(arguments[0]) : report(*info, store_.reset(*info));
  }
  std::vector<Replacement> all;
  all.reserve(store_.records().size());
  for (const RecordInfo* info : store_.records()) all.push_back({info, nullptr});
  return replaceAll(all);
}

StoreResult Command::factory(Arguments /*arguments*/) {
  std::string text;
  if (const StoreResult result = readInput(&text); result != StoreResult::kDone) return result;
  std::vector<Bytes> records(store_.records().size());  // empty: the factory defaults
  std::string_view rest = text;
  for (std::size_t number = 1; !rest.empty(); ++number) {
    const StoreResult result = factoryLine(takeUntil('\n', &rest), &records);
    if (result != StoreResult::kDone) return atLine(number, result);
  }
  std::vector<Replacement> all;
  all.reserve(records.size());
  for (std::size_t i = 0; i < records.size(); ++i)
    all.push_back({store_.records()[i], records[i].empty() ? nullptr : records[i].data()});
  return replaceAll(all);
}

StoreResult Command::factoryLine(std::string_view line, std::vector<Bytes>* records) {
  if (line.empty() || line.starts_with('#')) return StoreResult::kDone;
  const std::string_view name[] = {takeUntil(' ', &line)};
  for (std::size_t i = 0; i < records->size(); ++i) {
    const RecordInfo& info = *store_.records()[i];
    if (info.name != name[0]) continue;
    Bytes& record = (*records)[i];
    const auto* defaults = static_cast<const unsigned char*>(info.defaults);
    if (record.empty()) record.assign(defaults, defaults + info.size);
    return assign(info, line, record.data());
  }
  return refuseRecord(name[0]);
}

StoreResult Command::backup(Arguments /*arguments*/) {
  std::string text = std::string(kBackupTitle) + "\n";
  std::size_t elements = 0;
  for (const RecordInfo* info : restorable()) {
    Bytes record(info->size);
    if (const StoreResult result = store_.read(*info, record.data()); result != StoreResult::kDone) {
      return report(*info, result);
    }
    forEachElement(*info, [&](const Field& field, unsigned index, std::size_t offset) {
      text += std::string(info->name) + "." + elementName(field, index) + "=" +
              formatElement(field, &record[offset]) + "\n";
      ++elements;
    });
  }
  streams_.output = std::move(text.append(kBackupEnd).append(std::to_string(elements)).append("\n"));
  return StoreResult::kDone;
}

StoreResult Command::restore(Arguments /*arguments*/) {
  std::string text;
  if (const StoreResult result = readInput(&text); result != StoreResult::kDone) return result;
  std::vector<Restored> restored;
  std::string_view rest = text;
  bool complete = false;
  for (std::size_t number = 1; !complete || !rest.empty(); ++number) {
    const bool whole = rest.find('\n') != rest.npos;
    const std::string_view line = takeUntil('\n', &rest);
    StoreResult result = StoreResult::kDone;
    if (number == 1 && line != kBackupTitle) {
      result = refuse("not a backup");
    } else if (!whole || complete) {
      result = refuse(whole ? "text after the end" : "cut short");
    } else if (line.starts_with(kBackupEnd)) {
      result = checkEnd(line, number - 2);
      complete = true;
    } else if (number > 1) {
      result = restoreLine(line, &restored);
    }
    if (result != StoreResult::kDone) return atLine(number, result);
  }
  std::vector<Replacement> all;
  all.reserve(restored.size());
  for (const Restored& entry : restored) all.push_back({entry.info, entry.record.data()});
  return replaceAll(all);
}

// Reads to the end of standard input, but not much more than kMaxBackup.
StoreResult Command::readInput(std::string* text) {
  char buffer[4096];
  int error = 0;
  for (std::size_t length = 1; error == 0 && length > 0 && text->size() < kMaxBackup;) {
    error = readOnce(streams_.input, buffer, sizeof buffer, &length);
    text->append(buffer, error == 0 ? length : 0);
  }
  if (error == 0) return StoreResult::kDone;
  refuse(std::string("standard input: ") + std::strerror(error));
  return StoreResult::kFailed;
}

std::vector<const RecordInfo*> Command::restorable() const {
  std::vector<const RecordInfo*> records(store_.records().begin(), store_.records().end());
  std::erase_if(records,
                [](const RecordInfo* info) { return info->name == kFirmware || info->name == kCard; });
  return records;
}

const RecordInfo* Command::find(Arguments names, std::span<const RecordInfo* const> records) {
  const auto found = std::find_if(records.begin(), records.end(),
                                  [&](const RecordInfo* info) { return info->name == names[0]; });
  return found == records.end() ? nullptr : *found;
}

StoreResult Command::restoreLine(std::string_view line, std::vector<Restored>* restored) {
  std::string_view value = line;
  std::string_view name = takeUntil('=', &value);
  const bool assigned = name.size() < line.size();
  const std::string_view recordName[] = {takeUntil('.', &name)};
  if (recordName[0] == kCard) return StoreResult::kDone;  // backups of version 0.9.0 have it
  const std::vector<const RecordInfo*> records = restorable();
  const RecordInfo* info = find(recordName, records);
  if (info == nullptr) return refuse("no record " + shown(recordName[0]));
  const std::optional<Element> element = findElement(*info, name);
  if (!element || !assigned) return refuse("not RECORD.FIELD=VALUE with a field of that record");

  auto target =
      std::find_if(restored->begin(), restored->end(), [&](const Restored& r) { return r.info == info; });
  if (target == restored->end()) {
    const auto* defaults = static_cast<const unsigned char*>(info->defaults);
    restored->push_back({info, Bytes(defaults, defaults + info->size), std::vector<bool>(info->size)});
    target = std::prev(restored->end());
  }
  if (target->seen[element->offset]) return refuse("repeated field");
  target->seen[element->offset] = true;
  if (!parseElement(*element->field, value, &target->record[element->offset])) {
    return refuse(accepted(*info, *element->field));
  }
  return StoreResult::kDone;
}

StoreResult Command::checkEnd(std::string_view line, std::size_t elements) {
  if (line.substr(kBackupEnd.size()) == std::to_string(elements)) return StoreResult::kDone;
  return refuse("the number at the end is not that of the lines");
}

StoreResult Command::replaceAll(std::span<const Replacement> replacements) {
  const StoreResult result = store_.replaceAll(replacements);
  if (result != StoreResult::kDone) streams_.error = store_.fault();
  return result;
}

StoreResult Command::atLine(std::size_t number, StoreResult result) {
  streams_.error = "line " + std::to_string(number) + ": " + streams_.error;
  return result;
}

StoreResult Command::version(Arguments /*arguments*/) {
  streams_.output = "camera-settings " CAMERA_VERSION "\n";
  return StoreResult::kDone;
}

StoreResult Command::refuse(std::string message) {
  streams_.error = std::move(message);
  return StoreResult::kRefused;
}

StoreResult Command::refuseRecord(std::string_view name) {
  std::string names;
  for (const RecordInfo* info : store_.records()) appendItem(info->name, &names);
  return refuse("no record " + shown(name) + "; there are " + names);
}

// For a damaged record, names the remedy and not the file, whose folder may exist only in a sandbox.
StoreResult Command::report(const RecordInfo& info, StoreResult result) {
  if (result == StoreResult::kDone) return result;
  streams_.error = store_.fault();
  if (result == StoreResult::kFailed && store_.error() == 0) {
    streams_.error.erase(0, streams_.error.rfind('/') + 1);
    streams_.error.append("; restore its factory defaults: ").append(name_).append(" reset ") += info.name;
  }
  return result;
}

struct Verb {
  std::string_view name;
  std::size_t fewest;  // arguments after the verb
  std::size_t most;
  StoreResult (Command::*run)(Arguments arguments);
};

constexpr Verb kVerbs[] = {
    {"list", 0, 0, &Command::list},       {"get", 1, 2, &Command::get},
    {"set", 2, SIZE_MAX, &Command::set},  {"reset", 0, 1, &Command::reset},
    {"factory", 0, 0, &Command::factory}, {"backup", 0, 0, &Command::backup},
    {"restore", 0, 0, &Command::restore}, {"--version", 0, 0, &Command::version},
};

// The help, with the name by which the user called the program.
std::string helpFor(std::string_view name) {
  constexpr std::string_view kStart = "\ncamera-settings ";
  std::string text(kHelp);
  for (std::size_t at = text.find(kStart); at != text.npos; at = text.find(kStart, at + 1))
    text.replace(at + 1, kStart.size() - 2, name);
  return text;
}

// The verb's usage, from its line of the help.
std::string usage(std::string_view name, const Verb& verb) {
  const std::string help = helpFor(name);
  const std::size_t at = help.find("\n" + std::string(name) + " " + std::string(verb.name) + " ") + 1;
  return help.substr(at, help.find("  ", at) - at);
}

}  // namespace

int runSettingsCommand(SettingsStore& store, std::string_view name,
                       std::span<const std::string_view> arguments, CommandStreams* streams) {
  streams->error = "usage: " + std::string(name) + " COMMAND; --help lists the commands";
  if (arguments.empty()) return static_cast<int>(StoreResult::kRefused);
  if (arguments[0] == "--help") {
    streams->error.clear();
    streams->output = helpFor(name).substr(1);
    return static_cast<int>(StoreResult::kDone);
  }
  for (const Verb& verb : kVerbs) {
    if (arguments[0] != verb.name) continue;
    const Arguments rest = arguments.subspan(1);
    streams->error = "usage: " + usage(name, verb);
    if (rest.size() < verb.fewest || rest.size() > verb.most) break;
    streams->error.clear();
    Command command(store, name, streams);
    return static_cast<int>((command.*verb.run)(rest));
  }
  return static_cast<int>(StoreResult::kRefused);
}

}  // namespace camera
