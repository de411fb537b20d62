// datetime.cgi: the clock, its time zone and daylight saving, and the NTP server that can set it.
#include <algorithm>
#include <vector>

#include "handlers/endpoint.h"
#include "platform/clock/calendar.h"
#include "platform/clock/clock.h"
#include "platform/store/records/curtime.h"
#include "platform/store/records/ntp.h"
#include "platform/store/records/tzone.h"

namespace camera {
namespace {

using Fields = std::vector<std::string_view>;

constexpr int kByHand = 0;
constexpr int kFromServer = 1;
constexpr int kSetNow = 2;  // set the clock to the request's date and time; stored as kByHand

constexpr char kSigns[] = "-+";
constexpr char kOffsetSeparators[] = "-+:";
constexpr const char* kOffsets[] = {"2:00", "1:30", "1:00", "0:30"};
constexpr std::size_t kAnyWidth = SIZE_MAX;

// The records with the request's changes.
struct Wanted {
  ClockSettings clock;
  NtpSettings ntp;
  TimeZoneSettings zone;
  std::int32_t method = -1;
  bool hasDate = false;
  bool hasTime = false;
};

// Splits a text at any of the separators into fields of digits. Returns the number of fields; 0 if a field is
// empty, longer than its width or not all digits, or if there are more fields than widths.
std::size_t splitDigits(std::string_view text, std::string_view separators,
                        std::initializer_list<std::size_t> widths, Fields* fields) {
  fields->clear();
  for (const std::size_t width : widths) {
    const std::size_t end = text.find_first_of(separators);
    const std::string_view field = text.substr(0, end);
    if (field.empty() || field.size() > width || !consistsOf(field, kDigits)) return 0;
    fields->push_back(field);
    if (end == text.npos) return fields->size();
    text.remove_prefix(end + 1);
  }
  return 0;
}

bool takeDate(std::string_view value, Wanted& wanted) {
  Fields fields;
  ClockSettings& clock = wanted.clock;
  wanted.hasDate =
      splitDigits(value, "-", {4, 2, 2}, &fields) == 3 && parseInteger(fields[0], 1969, 2037, &clock.year) &&
      parseInteger(fields[1], 1, 12, &clock.month) && parseInteger(fields[2], 1, 31, &clock.day) &&
      isCalendarDate(clock.year, clock.month, clock.day);
  return wanted.hasDate;
}

bool isTimeOfDay(const Fields& fields, int* hour, int* minute, int* second) {
  return parseInteger(fields[0], 0, 23, hour) && parseInteger(fields[1], 0, 59, minute) &&
         (fields.size() < 3 || parseInteger(fields[2], 0, 59, second));
}

bool takeTime(std::string_view value, Wanted& wanted) {
  Fields fields;
  wanted.hasTime = splitDigits(value, ":", {2, 2, 2}, &fields) == 3 &&
                   isTimeOfDay(fields, &wanted.clock.hour, &wanted.clock.minute, &wanted.clock.second);
  return wanted.hasTime;
}

// Returns the hours and minutes as "1:30"; a sign before them is ignored. False for a malformed text.
bool splitOffset(std::string_view text, std::size_t hourWidth, std::string* offset) {
  if (!text.empty() && std::string_view{kSigns}.find(text.front()) != text.npos) text.remove_prefix(1);
  Fields fields;
  if (splitDigits(text, kOffsetSeparators, {hourWidth, 2}, &fields) != 2) return false;
  *offset = joined({fields[0], ":", fields[1]});
  return true;
}

bool takeOffset(std::string_view value, Wanted& wanted) {
  std::string offset;
  return splitOffset(value, 1, &offset) && indexOf(offset, kOffsets) >= 0 &&
         setText(wanted.zone.offset, offset);
}

bool hasOneSlash(std::string_view rule) {
  return std::count(rule.begin(), rule.end(), '/') == 1;
}

// Splits a rule into its date, before the slash, and the two or three fields of its time.
bool splitRule(std::string_view rule, std::string_view* date, Fields* time) {
  if (!hasOneSlash(rule)) return false;
  *date = takeUntil('/', &rule);
  return splitDigits(rule, ":", {2, 2, 2}, time) >= 2;
}

bool isRule(std::string_view value) {
  std::string_view date;
  Fields time;
  Fields day;
  return splitRule(value, &date, &time) && isTimeOfDay(time, nullptr, nullptr, nullptr) &&
         splitDigits(date, ".", {kAnyWidth, kAnyWidth, kAnyWidth}, &day) == 3 &&
         parseInteger(day[0], 1, 12, nullptr) && parseInteger(day[1], 1, 5, nullptr) &&
         parseInteger(day[2], 0, 6, nullptr);
}

template <char (TimeZoneSettings::*kField)[32]>
bool takeRule(std::string_view value, Wanted& wanted) {
  if (!isRule(value)) return false;
  if (value.starts_with('0')) value.remove_prefix(1);
  return setText(wanted.zone.*kField, joined({"M", value}));
}

constexpr char kDate[] = "YYYY-MM-DD, a date of 1969 to 2037";
constexpr char kTime[] = "HH:MM:SS";
constexpr char kOffset[] = "0:30, 1:00, 1:30 or 2:00";
constexpr char kRule[] = "month.week.weekday/HH:MM, such as 3.5.0/02:00";

// In alphabetical order: of several invalid parameters the first in this order is reported.
constexpr auto kParams =
    paramRows<Wanted>(ownParam<takeDate, Wanted>("date", kDate),
                      choiceParam<&Wanted::zone, &TimeZoneSettings::dstauto>("dstauto", kNoYes),
                      choiceParam<&Wanted::zone, &TimeZoneSettings::dstenable>("dstenable", kNoYes),
                      integerParam<&Wanted::method>("method", kByHand, kSetNow),
                      ownParam<takeOffset, Wanted>("offset", kOffset),
                      ownParam<takeRule<&TimeZoneSettings::starttime>, Wanted>("starttime", kRule),
                      ownParam<takeRule<&TimeZoneSettings::stoptime>, Wanted>("stoptime", kRule),
                      ownParam<takeTime, Wanted>("time", kTime),
                      textParam<&Wanted::ntp, &NtpSettings::timeserver>("timeserver", kNameText),
                      integerParam<&Wanted::zone, &TimeZoneSettings::timezone>("timezone"));

// Formats a stored rule for the reply, without its M and with seconds. False if it is malformed.
bool formatRule(std::string_view stored, std::string* text) {
  std::string_view date;
  Fields time;
  if (!splitRule(stored, &date, &time)) return false;
  *text = joined({date, "/", time[0], ":", time[1], ":", time.size() < 3 ? "00" : time[2]});
  text->erase(0, 1);
  return true;
}

// Fills up the number, which is not negative, with zeros to at least that many digits.
std::string padded(int number, std::size_t digits) {
  std::string text{Decimal(number).text()};
  while (text.size() < digits) text.insert(text.begin(), '0');
  return text;
}

std::string threeNumbers(std::string_view separator, int first, int second, int third,
                         std::size_t digits = 2) {
  return joined({padded(first, digits), separator, padded(second, 2), separator, padded(third, 2)});
}

// Parts of the regular expressions in JSON schemas. Only leap years have a 29th of February.
constexpr std::string_view kAnyDate =
    "(19(69|[7-9][0-9])|20([0-2][0-9]|3[0-7]))-((0?[1-9]|1[0-2])-(0?[1-9]|1[0-9]|2[0-8])|"
    "(0?[13-9]|1[0-2])-(29|30)|(0?[13578]|1[02])-31)";
constexpr std::string_view kLeapDay = "(19(7[26]|8[048]|9[26])|20([02][048]|[13][26]))-0?2-29";
constexpr std::string_view kHours = "([01]?[0-9]|2[0-3])";
constexpr std::string_view kSixtieth = ":[0-5]?[0-9]";
constexpr std::string_view kRuleDate = "0*([1-9]|1[0-2])[.]0*[1-5][.]0*[0-6]";

std::string textSchema(std::initializer_list<std::string_view> pattern) {
  return joined({R"("type":"string","pattern":"^()", joined(pattern), R"()$")"});
}

std::string withFactory(const std::string& schema, std::string_view factory) {
  return joined({schema, ",\"x-factory\":", jsonString(factory)});
}

std::string ruleSchema(std::string_view stored) {
  std::string factory;
  formatRule(stored, &factory);
  return withFactory(textSchema({kRuleDate, "/", kHours, "(", kSixtieth, "){1,2}"}) + ",\"maxLength\":30",
                     factory);
}

std::string schemaOf(std::string_view param, const ProductInfo& /*product*/) {
  const TimeZoneSettings factory{};
  if (param == "date") return textSchema({kAnyDate, "|", kLeapDay});
  if (param == "time") return textSchema({kHours, kSixtieth, kSixtieth});
  if (param == "offset")
    return withFactory(textSchema({"[-+]?(0[-+:]30|1[-+:](00|30)|2[-+:]00)"}), factory.offset);
  if (param == "starttime") return ruleSchema(factory.starttime);
  return param == "stoptime" ? ruleSchema(factory.stoptime) : "";
}

}  // namespace

class DatetimeEndpoint final : public ParamEndpoint<kParams> {
  int load() override {
    applyTimeZone();
    const int result = read(ntp_, tzone_, curtime_);
    if (result == 200) fillUtc();
    return result;
  }

  // If the change fails while the stored DST rules are malformed, the rules are reported instead.
  int apply() override {
    const int result = change();
    return result == 200 || (hasOneSlash(tzone_.starttime) && hasOneSlash(tzone_.stoptime)) ? result
                                                                                            : failOnRules();
  }

  int change() {
    Wanted wanted{.clock = curtime_, .ntp = ntp_, .zone = tzone_};
    if (take(&wanted) != 200) return 400;
    if (wanted.method == kSetNow && !wanted.hasDate) return refuse("date", "needed with method=2");
    if (wanted.method == kSetNow && !wanted.hasTime) return refuse("time", "needed with method=2");
    if (wanted.method >= 0) wanted.ntp.method = wanted.method == kFromServer ? 1 : 0;
    if (wanted.ntp.method == kFromServer && *wanted.ntp.timeserver == '\0')
      return refuse("timeserver", "needed while method is 1");
    if (wanted.method != kSetNow) ignoreTime(&wanted);
    const int result = store(wanted);
    if (result == 200) return report(wanted);
    tzone_ = wanted.zone;  // so that apply does not report rules that this request replaces
    return result;
  }

  void ignoreTime(Wanted* wanted) {
    wanted->clock = curtime_;
    noteIgnored("date");
    noteIgnored("time");
  }

  int reply() override {
    std::string offset;
    std::string start;
    std::string stop;
    if (!splitOffset(tzone_.offset, 2, &offset) || !formatRule(tzone_.starttime, &start) ||
        !formatRule(tzone_.stoptime, &stop))
      return failOnRules();
    pair("method", ntp_.method);
    pair("timeserver", ntp_.timeserver);
    pair("timezone", tzone_.timezone);
    pair("utcdate", threeNumbers("-", curtime_.utc_year, curtime_.utc_month, curtime_.utc_day, 4));
    pair("utctime", threeNumbers(":", curtime_.utc_hour, curtime_.utc_minute, curtime_.utc_second));
    pair("date", threeNumbers("-", curtime_.year, curtime_.month, curtime_.day, 1));
    pair("time", threeNumbers(":", curtime_.hour, curtime_.minute, curtime_.second));
    pair("dstenable", kNoYes[tzone_.dstenable]);
    pair("dstauto", kNoYes[tzone_.dstauto]);
    pair("offset", offset);
    pair("starttime", start);
    pair("stoptime", stop);
    return 200;
  }

  int failOnRules() { return fail(500, "settings: the stored daylight saving rules are malformed"); }

  // In a new zone, the same date and time is another instant. method=2 then sets the clock even if the date
  // and time do not change.
  int store(const Wanted& wanted) {
    isZoneMoved_ = isZoneMoved_ || differ(tzone_, wanted.zone);
    isSet_ = isSet_ || differ(curtime_, wanted.clock) || (wanted.method == kSetNow && isZoneMoved_);
    writeChanged(tzone_, wanted.zone);
    if (isSet_) write(wanted.clock);
    writeChanged(ntp_, wanted.ntp);
    return commit();
  }

  // Prepares the reply, which shows the method as given. If the local time cannot be read again, the reply is
  // 400 although the change is stored.
  int report(const Wanted& wanted) {
    const bool isMoved = isZoneMoved_ || differ(ntp_, wanted.ntp);
    tzone_ = wanted.zone;
    curtime_ = wanted.clock;
    ntp_ = wanted.ntp;
    if (wanted.method >= 0) ntp_.method = static_cast<std::uint8_t>(wanted.method);
    if (!isSet_ && isMoved && read(curtime_) != 200) return 400;
    fillUtc();
    return 200;
  }

  void fillUtc() {
    const CivilTime utc = civilTime(cameraTime());
    curtime_.utc_valid = 1;
    curtime_.utc_year = utc.year;
    curtime_.utc_month = utc.month;
    curtime_.utc_day = utc.day;
    curtime_.utc_hour = utc.hour;
    curtime_.utc_minute = utc.minute;
    curtime_.utc_second = utc.second;
    copyText(curtime_.utc_date_text, sizeof curtime_.utc_date_text,
             threeNumbers("/", curtime_.utc_year, curtime_.utc_month, curtime_.utc_day, 4));
    copyText(curtime_.utc_time_text, sizeof curtime_.utc_time_text,
             threeNumbers(":", curtime_.utc_hour, curtime_.utc_minute, curtime_.utc_second));
  }

  NtpSettings ntp_;
  TimeZoneSettings tzone_;
  ClockSettings curtime_;
  // Whether the request changes the zone and sets the clock. Both stay true when the request is applied again
  // on records that already hold its change.
  bool isZoneMoved_ = false;
  bool isSet_ = false;
};

template <>
const Api kApi<DatetimeEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kDevice,
     .summary = "The clock: date and time, time zone and daylight saving time, and whether the clock is set "
                "by hand or by an NTP server.",
     .records = "`tzone`, `curtime`, `ntp`",
     .dependent = "method",
     .params =
         {{"date", "The local date; takes effect only with `method=2`.", nullptr, "2024-07-04",
           "`YYYY-MM-DD`, a date of the years 1969 to 2037; leading zeros may be left out (`2024-7-4`)"},
          {"dstauto",
           "Daylight saving time follows the rules of the region (`yes`), or `offset`, `starttime` and "
           "`stoptime` (`no`)."},
          {"dstenable", "Whether daylight saving time is observed."},
          {"method",
           "`0`: the clock is set by hand; `1`: the NTP server `timeserver` sets it; `2`: sets the clock now "
           "to `date` and `time`, both required, and is stored as `0`."},
          {"offset", "How far daylight saving time is ahead; a sign before it is ignored.", nullptr, "1:00",
           "`0:30`, `1:00`, `1:30`, `2:00`"},
          {"starttime",
           "Start of daylight saving time in local time: month 1 to 12, week of the month 1 to 5 (5 is the "
           "last), day of the week 0 to 6 (0 is Sunday).",
           nullptr, "3.5.0/02:00", "`M.W.D/HH:MM` or `M.W.D/HH:MM:SS`"},
          {"stoptime", "End of daylight saving time, written as `starttime`.", nullptr, "10.5.0/03:00",
           "`M.W.D/HH:MM` or `M.W.D/HH:MM:SS`"},
          {"time", "The local time; takes effect only with `method=2`.", nullptr, "09:30:00",
           "`HH:MM:SS`, `00:00:00` to `23:59:59`; leading zeros may be left out"},
          {"timeserver", "The name or address of the NTP server; must not be empty while `method` is `1`.",
           nullptr, "time.example.net"},
          {"timezone", "The number of the time zone.", nullptr, "35"}},
     .reply = {{"method"},
               {"timeserver"},
               {"timezone"},
               {"utcdate", ApiType::kText, "The UTC date, `YYYY-MM-DD`."},
               {"utctime", ApiType::kText, "The UTC time, `HH:MM:SS`."},
               {"date", ApiType::kText, "The same date in local time."},
               {"time", ApiType::kText, "The same time in local time."},
               {"dstenable"},
               {"dstauto"},
               {"offset"},
               {"starttime"},
               {"stoptime"}},
     .codes = {{400,
                "Also if a change that does not set the clock is stored and in effect, but the time for the "
                "reply cannot be read (`settings: curtime cannot be read`)."},
               {500,
                "Also if the stored `offset`, `starttime` or `stoptime` is malformed. Every request then "
                "fails, unless it replaces the malformed values. A request with valid parameters fails too, "
                "but its change is made."}},
     .state = [](const ProductInfo&) -> const void* {
       static Wanted state;
       state.method = state.ntp.method;
       return &state;
     },
     .schema = schemaOf});
template struct EndpointOf<DatetimeEndpoint>;

}  // namespace camera
