// datetime.cgi: the clock, its time zone and daylight saving, and the NTP server that may keep it.
#include <cstdio>

#include "framework/cgilet.h"
#include "framework/value_tables.h"
#include "handlers/transaction.h"
#include "platform/clock/calendar.h"
#include "platform/clock/clock.h"
#include "platform/clock/time_zones.h"
#include "platform/store/records/curtime.h"
#include "platform/store/records/ntp.h"
#include "platform/store/records/tzone.h"

namespace {

using Fields = std::vector<std::string>;

constexpr int kByHand = 0;
constexpr int kFromServer = 1;
constexpr int kSetNow = 2;  // by hand, and to the date and time of this request

constexpr char kOffsetSeparators[] = "-+:";
constexpr const char* kOffsets[] = {"2:00", "1:30", "1:00", "0:30"};

// The settings as the request would have them.
struct Wanted {
  _curtime_setting clock;
  _ntp_setting ntp;
  _tzone_setting zone;
  unsigned clockChanges = 0;
  unsigned ntpChanges = 0;
  unsigned zoneChanges = 0;
  int method = -1;
  bool hasDate = false;
  bool hasTime = false;
};

bool takeNumber(std::string_view value, int min, int max, std::int32_t* field, Wanted* wanted) {
  int number = 0;
  if (!BaseCgilet::CheckRange(value, min, max, &number)) return false;
  InfCgilet::isParamChanged(number, field, &wanted->clockChanges);
  return true;
}

bool takeDate(std::string_view value, Wanted* wanted) {
  Fields fields;
  _curtime_setting& clock = wanted->clock;
  wanted->hasDate = BaseCgilet::DTFormat(value, fields, "-", 3, 4, 2, 2, true, ":") > 0 &&
                    takeNumber(fields[0], 1969, 2037, &clock.year, wanted) &&
                    takeNumber(fields[1], 1, 12, &clock.month, wanted) &&
                    takeNumber(fields[2], 1, 31, &clock.day, wanted) &&
                    BaseCgilet::checkDate(clock.year, clock.month, clock.day);
  return wanted->hasDate;
}

bool takeTime(std::string_view value, Wanted* wanted) {
  Fields fields;
  _curtime_setting& clock = wanted->clock;
  wanted->hasTime = BaseCgilet::DTFormat(value, fields, ":", 3, 2, 2, 2, true) > 0 &&
                    takeNumber(fields[0], 0, 23, &clock.hour, wanted) &&
                    takeNumber(fields[1], 0, 59, &clock.minute, wanted) &&
                    takeNumber(fields[2], 0, 59, &clock.second, wanted);
  return wanted->hasTime;
}

bool takeMethod(std::string_view value, Wanted* wanted) {
  if (!BaseCgilet::CheckRange(value, kByHand, kSetNow, &wanted->method)) return false;
  const int stored = wanted->method == kSetNow ? kByHand : wanted->method;
  InfCgilet::isParamChanged(stored, &wanted->ntp.method, &wanted->ntpChanges);
  return true;
}

bool takeTimeServer(std::string_view value, Wanted* wanted) {
  if (BaseCgilet::ChkAcptStr(value, 0, 60, camera::kNameText, true, true, false) < 0) return false;
  InfCgilet::isParamChanged(value, wanted->ntp.timeserver, &wanted->ntpChanges);
  return true;
}

bool takeTimeZone(std::string_view value, Wanted* wanted) {
  int number = 0;
  if (!BaseCgilet::CheckRange(value, 1, camera::kTimeZoneCount, &number)) return false;
  InfCgilet::isParamChanged(number, &wanted->zone.timezone, &wanted->zoneChanges);
  return true;
}

template <std::uint8_t _tzone_setting::*kField>
bool takeSwitch(std::string_view value, Wanted* wanted) {
  const int index = BaseCgilet::isValidStr(value, camera::kNoYes, 2);
  if (index < 0) return false;
  InfCgilet::isParamChanged(index, &(wanted->zone.*kField), &wanted->zoneChanges);
  return true;
}

bool takeOffset(std::string_view value, Wanted* wanted) {
  Fields fields;
  if (BaseCgilet::DTFormat(value, fields, kOffsetSeparators, 2, 1, 2, 0, true) < 0) return false;
  const std::string offset = fields[0] + ":" + fields[1];
  if (BaseCgilet::isValidStr(offset, kOffsets, std::size(kOffsets)) < 0) return false;
  InfCgilet::isParamChanged(offset, wanted->zone.offset, &wanted->zoneChanges);
  return true;
}

// The date part of a rule (all before the slash) and the fields of its time part, of which it has two or
// three.
bool splitRule(std::string_view rule, std::string* date, Fields* time) {
  Fields parts;
  if (BaseCgilet::StrtoVector(rule, "/", parts) != 2) return false;
  *date = parts[0];
  return BaseCgilet::DTFormat(parts[1], *time, ":", 0, 2, 2, 2, true) >= 2;
}

bool isRule(std::string_view value) {
  std::string date;
  Fields time;
  Fields day;
  return splitRule(value, &date, &time) && BaseCgilet::checkTimeRange(time, static_cast<int>(time.size())) &&
         BaseCgilet::DTFormat(date, day, ".", 3, 0, 0, 0, false) > 0 &&
         BaseCgilet::CheckRange(day[0], 1, 12) && BaseCgilet::CheckRange(day[1], 1, 5) &&
         BaseCgilet::CheckRange(day[2], 0, 6);
}

template <char (_tzone_setting::*kField)[32]>
bool takeRule(std::string_view value, Wanted* wanted) {
  if (!isRule(value)) return false;
  if (value.starts_with('0')) value.remove_prefix(1);
  const std::string rule = "M" + std::string{value};
  if (!BaseCgilet::checkLength(rule, 0, sizeof(wanted->zone.*kField) - 1)) return false;
  InfCgilet::isParamChanged(rule, wanted->zone.*kField, &wanted->zoneChanges);
  return true;
}

struct Parameter {
  const char* name;
  bool (*take)(std::string_view value, Wanted* wanted);  // false: not acceptable
};

constexpr Parameter kParameters[] = {
    {"date", takeDate},
    {"dstauto", takeSwitch<&_tzone_setting::dstauto>},
    {"dstenable", takeSwitch<&_tzone_setting::dstenable>},
    {"method", takeMethod},
    {"offset", takeOffset},
    {"starttime", takeRule<&_tzone_setting::starttime>},
    {"stoptime", takeRule<&_tzone_setting::stoptime>},
    {"time", takeTime},
    {"timeserver", takeTimeServer},
    {"timezone", takeTimeZone},
};

bool take(std::string_view name, std::string_view value, Wanted* wanted) {
  for (const Parameter& parameter : kParameters) {
    if (name == parameter.name) return parameter.take(value, wanted);
  }
  return false;
}

// The reply forms; false for stored texts that cannot be split.
bool formatOffset(const char* stored, std::string* text) {
  Fields fields;
  if (BaseCgilet::DTFormat(stored, fields, kOffsetSeparators, 2, 2, 2, 0, true) < 0) return false;
  *text = fields[0] + ":" + fields[1];
  return true;
}

bool isSplit(std::string_view rule) {
  Fields parts;
  return BaseCgilet::StrtoVector(rule, "/", parts) == 2;
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

class DatetimeCgilet final : public InfCgilet {
 public:
  void onLoad() override {
    status = 500;
    apply_timezone();
    if (cam_get_ntp(&ntp_) != 0 || cam_get_tzone(&tzone_) != 0 || cam_get_curtime(&curtime_) != 0) return;
    fillUtc();
    status = 200;
  }

  void onApply() override {
    if (status != 200) return;
    status = 400;
    Wanted wanted{.clock = curtime_, .ntp = ntp_, .zone = tzone_};
    for (const auto& [name, value] : queries) {
      if (!take(name, value, &wanted)) return;
    }
    if (wanted.method == kSetNow && !(wanted.hasDate && wanted.hasTime)) return;
    if (wanted.ntp.method == kFromServer && *wanted.ntp.timeserver == '\0') return;
    if (wanted.method != kSetNow) {
      wanted.clock = curtime_;
      wanted.clockChanges = 0;
    }
    status = write(wanted);
    if (status == 200) status = report(wanted);
  }

  void onReply() override {
    std::string offset;
    std::string start;
    std::string stop;
    if (!isSplit(tzone_.starttime) || !isSplit(tzone_.stoptime)) status = 500;
    if (status == 200 && !(formatOffset(tzone_.offset, &offset) && formatRule(tzone_.starttime, &start) &&
                           formatRule(tzone_.stoptime, &stop)))
      status = 500;
    if (status != 200) {
      infFail(status);
      return;
    }
    pair("method", ntp_.method);
    pair("timeserver", ntp_.timeserver);
    pair("timezone", tzone_.timezone);
    pair("utcdate", threeNumbers("%04d-%02d-%02d", curtime_.utc_year, curtime_.utc_month, curtime_.utc_day));
    pair("utctime",
         threeNumbers("%02d:%02d:%02d", curtime_.utc_hour, curtime_.utc_minute, curtime_.utc_second));
    pair("date", threeNumbers("%d-%02d-%02d", curtime_.year, curtime_.month, curtime_.day));
    pair("time", threeNumbers("%02d:%02d:%02d", curtime_.hour, curtime_.minute, curtime_.second));
    pair("dstenable", camera::kNoYes[tzone_.dstenable]);
    pair("dstauto", camera::kNoYes[tzone_.dstauto]);
    pair("offset", offset);
    pair("starttime", start);
    pair("stoptime", stop);
    infOK();
  }

 private:
  // Begins and ends the transaction also when nothing changed.
  static int write(const Wanted& wanted) {
    camera::Transaction transaction;
    if (wanted.zoneChanges != 0) transaction.write(cam_set_tzone, wanted.zone, 0);
    if (wanted.clockChanges != 0) transaction.write(cam_set_curtime, wanted.clock, 0);
    if (wanted.ntpChanges != 0) transaction.write(cam_set_ntp, wanted.ntp, 0);
    return transaction.finish();
  }

  // Takes what was stored into the reply, which shows the method as it was given.
  int report(const Wanted& wanted) {
    tzone_ = wanted.zone;
    curtime_ = wanted.clock;
    ntp_ = wanted.ntp;
    if (wanted.method >= 0) ntp_.method = static_cast<std::uint8_t>(wanted.method);
    const bool moved = wanted.zoneChanges != 0 || wanted.ntpChanges != 0;
    if (wanted.clockChanges == 0 && moved && cam_get_curtime(&curtime_) != 0) return 400;
    fillUtc();
    return 200;
  }

  void fillUtc() {
    const camera::CivilTime utc = camera::civilTime(camera::cameraTime());
    curtime_.utc_valid = 1;
    curtime_.utc_year = utc.year;
    curtime_.utc_month = utc.month;
    curtime_.utc_day = utc.day;
    curtime_.utc_hour = utc.hour;
    curtime_.utc_minute = utc.minute;
    curtime_.utc_second = utc.second;
    camera::copyText(curtime_.utc_date_text, sizeof curtime_.utc_date_text,
                     threeNumbers("%04d/%02d/%02d", curtime_.utc_year, curtime_.utc_month, curtime_.utc_day));
    camera::copyText(
        curtime_.utc_time_text, sizeof curtime_.utc_time_text,
        threeNumbers("%02d:%02d:%02d", curtime_.utc_hour, curtime_.utc_minute, curtime_.utc_second));
  }

  _ntp_setting ntp_;
  _tzone_setting tzone_{};  // looked at for the reply even when it could not be read
  _curtime_setting curtime_;
};

template InfCgilet* camera::create<DatetimeCgilet>();
