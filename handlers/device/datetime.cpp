// datetime.cgi: the clock, its time zone and daylight saving, and the NTP server that may keep it.
#include <cstdio>

#include "handlers/endpoint.h"
#include "platform/clock/calendar.h"
#include "platform/clock/clock.h"
#include "platform/clock/time_zones.h"
#include "platform/store/records/curtime.h"
#include "platform/store/records/ntp.h"
#include "platform/store/records/tzone.h"

namespace camera {
namespace {

using Fields = std::vector<std::string>;

constexpr int kByHand = 0;
constexpr int kFromServer = 1;
constexpr int kSetNow = 2;  // by hand, and to the date and time of this request

constexpr char kOffsetSeparators[] = "-+:";
constexpr const char* kOffsets[] = {"2:00", "1:30", "1:00", "0:30"};

// The settings as the request would have them.
struct Wanted {
  ClockSettings clock;
  NtpSettings ntp;
  TimeZoneSettings zone;
  std::int32_t method = -1;
  bool hasDate = false;
  bool hasTime = false;
};

bool takeDate(std::string_view value, Wanted& wanted) {
  Fields fields;
  ClockSettings& clock = wanted.clock;
  wanted.hasDate =
      BaseCgilet::DTFormat(value, fields, "-", 3, 4, 2, 2, true, ":") > 0 &&
      parseInteger(fields[0], 1969, 2037, &clock.year) && parseInteger(fields[1], 1, 12, &clock.month) &&
      parseInteger(fields[2], 1, 31, &clock.day) && isCalendarDate(clock.year, clock.month, clock.day);
  return wanted.hasDate;
}

bool takeTime(std::string_view value, Wanted& wanted) {
  Fields fields;
  ClockSettings& clock = wanted.clock;
  wanted.hasTime = BaseCgilet::DTFormat(value, fields, ":", 3, 2, 2, 2, true) > 0 &&
                   parseInteger(fields[0], 0, 23, &clock.hour) &&
                   parseInteger(fields[1], 0, 59, &clock.minute) &&
                   parseInteger(fields[2], 0, 59, &clock.second);
  return wanted.hasTime;
}

bool takeOffset(std::string_view value, Wanted& wanted) {
  Fields fields;
  if (BaseCgilet::DTFormat(value, fields, kOffsetSeparators, 2, 1, 2, 0, true) < 0) return false;
  const std::string offset = fields[0] + ":" + fields[1];
  return indexOf(offset, kOffsets, std::size(kOffsets)) >= 0 && setText(wanted.zone.offset, offset);
}

// The date part of a rule (all before the slash) and the fields of its time part, of which it has two or
// three.
bool splitRule(std::string_view rule, std::string* date, Fields* time) {
  Fields parts;
  if (split(rule, "/", parts) != 2) return false;
  *date = parts[0];
  return BaseCgilet::DTFormat(parts[1], *time, ":", 0, 2, 2, 2, true) >= 2;
}

bool isRule(std::string_view value) {
  std::string date;
  Fields time;
  Fields day;
  return splitRule(value, &date, &time) && BaseCgilet::checkTimeRange(time, static_cast<int>(time.size())) &&
         BaseCgilet::DTFormat(date, day, ".", 3, 0, 0, 0, false) > 0 &&
         parseInteger(day[0], 1, 12, nullptr) && parseInteger(day[1], 1, 5, nullptr) &&
         parseInteger(day[2], 0, 6, nullptr);
}

template <char (TimeZoneSettings::*kField)[32]>
bool takeRule(std::string_view value, Wanted& wanted) {
  if (!isRule(value)) return false;
  if (value.starts_with('0')) value.remove_prefix(1);
  return setText(wanted.zone.*kField, "M" + std::string{value});
}

constexpr char kDate[] = "YYYY-MM-DD, a date of 1969 to 2037";
constexpr char kTime[] = "HH:MM:SS";
constexpr char kOffset[] = "0:30, 1:00, 1:30 or 2:00";
constexpr char kRule[] = "month.week.weekday/HH:MM, such as 3.5.0/02:00";

// In ascending order of the names, which is the order in which a request's parameters are looked at.
constexpr auto kParams = paramRows<Wanted>(
    ownParam<takeDate, Wanted>("date", kDate),
    choiceParam<&Wanted::zone, &TimeZoneSettings::dstauto>("dstauto", kNoYes),
    choiceParam<&Wanted::zone, &TimeZoneSettings::dstenable>("dstenable", kNoYes),
    integerParam<&Wanted::method>("method", kByHand, kSetNow),
    ownParam<takeOffset, Wanted>("offset", kOffset),
    ownParam<takeRule<&TimeZoneSettings::starttime>, Wanted>("starttime", kRule),
    ownParam<takeRule<&TimeZoneSettings::stoptime>, Wanted>("stoptime", kRule),
    ownParam<takeTime, Wanted>("time", kTime),
    textParam<&Wanted::ntp, &NtpSettings::timeserver>("timeserver", 0, 60, kNameText),
    integerParam<&Wanted::zone, &TimeZoneSettings::timezone>("timezone", 1, kTimeZoneCount));

// The reply forms; false for stored texts that cannot be split.
bool formatOffset(const char* stored, std::string* text) {
  Fields fields;
  if (BaseCgilet::DTFormat(stored, fields, kOffsetSeparators, 2, 2, 2, 0, true) < 0) return false;
  *text = fields[0] + ":" + fields[1];
  return true;
}

bool isSplit(std::string_view rule) {
  Fields parts;
  return split(rule, "/", parts) == 2;
}

bool formatRule(const char* stored, std::string* text) {
  std::string date;
  Fields time;
  if (!splitRule(stored, &date, &time)) return false;
  *text = date + "/" + time[0] + ":" + time[1] + ":" + (time.size() < 3 ? "00" : time[2]);
  text->erase(0, 1);  // the M
  return true;
}

std::string threeNumbers(const char* format, int first, int second, int third) {
  char text[40];
  return std::snprintf(text, sizeof text, format, first, second, third) < 0 ? "" : text;
}

}  // namespace

class DatetimeEndpoint final : public Endpoint {
 public:
  DatetimeEndpoint() : Endpoint(ParamTable<Wanted>(kParams)) {}

 private:
  int load() override {
    applyTimeZone();
    const int result = read(ntp_, tzone_, curtime_);
    if (result == 200) fillUtc();
    return result;
  }

  // Stored rules that are none make every request fail, but for one that mends them.
  int apply() override {
    const int result = change();
    return result == 200 || (isSplit(tzone_.starttime) && isSplit(tzone_.stoptime)) ? result : failOnRules();
  }

  int change() {
    Wanted wanted{.clock = curtime_, .ntp = ntp_, .zone = tzone_};
    if (take(&wanted) != 200) return 400;
    if (wanted.method == kSetNow && !wanted.hasDate) return refuse("date", "needed with method=2");
    if (wanted.method == kSetNow && !wanted.hasTime) return refuse("time", "needed with method=2");
    if (wanted.method >= 0) wanted.ntp.method = wanted.method == kFromServer ? kFromServer : kByHand;
    if (wanted.ntp.method == kFromServer && *wanted.ntp.timeserver == '\0')
      return refuse("timeserver", "needed while method is 1");
    if (wanted.method != kSetNow) wanted.clock = curtime_;
    const int result = store(wanted);
    if (result == 200) return report(wanted);
    tzone_ = wanted.zone;  // rules that the request mends are not why it failed
    return result;
  }

  int reply() override {
    std::string offset;
    std::string start;
    std::string stop;
    if (!formatOffset(tzone_.offset, &offset) || !formatRule(tzone_.starttime, &start) ||
        !formatRule(tzone_.stoptime, &stop))
      return failOnRules();
    pair("method", ntp_.method);
    pair("timeserver", ntp_.timeserver);
    pair("timezone", tzone_.timezone);
    pair("utcdate", threeNumbers("%04d-%02d-%02d", curtime_.utc_year, curtime_.utc_month, curtime_.utc_day));
    pair("utctime",
         threeNumbers("%02d:%02d:%02d", curtime_.utc_hour, curtime_.utc_minute, curtime_.utc_second));
    pair("date", threeNumbers("%d-%02d-%02d", curtime_.year, curtime_.month, curtime_.day));
    pair("time", threeNumbers("%02d:%02d:%02d", curtime_.hour, curtime_.minute, curtime_.second));
    pair("dstenable", kNoYes[tzone_.dstenable]);
    pair("dstauto", kNoYes[tzone_.dstauto]);
    pair("offset", offset);
    pair("starttime", start);
    pair("stoptime", stop);
    return 200;
  }

  int failOnRules() { return fail(500, "settings: the stored daylight saving rules are none"); }

  int store(const Wanted& wanted) {
    writeChanged(tzone_, wanted.zone);
    writeChanged(curtime_, wanted.clock);
    writeChanged(ntp_, wanted.ntp);
    return commit();
  }

  // Takes what was stored into the reply, which shows the method as it was given.
  int report(const Wanted& wanted) {
    const bool isSet = differ(curtime_, wanted.clock);
    const bool isMoved = differ(tzone_, wanted.zone) || differ(ntp_, wanted.ntp);
    tzone_ = wanted.zone;
    curtime_ = wanted.clock;
    ntp_ = wanted.ntp;
    if (wanted.method >= 0) ntp_.method = static_cast<std::uint8_t>(wanted.method);
    if (!isSet && isMoved && read(curtime_) != 200) return 400;
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
             threeNumbers("%04d/%02d/%02d", curtime_.utc_year, curtime_.utc_month, curtime_.utc_day));
    copyText(curtime_.utc_time_text, sizeof curtime_.utc_time_text,
             threeNumbers("%02d:%02d:%02d", curtime_.utc_hour, curtime_.utc_minute, curtime_.utc_second));
  }

  NtpSettings ntp_;
  TimeZoneSettings tzone_{};  // looked at for the reply even when it could not be read
  ClockSettings curtime_;
};

template InfCgilet* create<DatetimeEndpoint>();

}  // namespace camera
