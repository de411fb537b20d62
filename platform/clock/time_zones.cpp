// The table of time zones, and when daylight saving time starts and stops.
#include "platform/clock/time_zones.h"

#include <algorithm>
#include <charconv>
#include <string_view>

#include "platform/clock/calendar.h"
#include "platform/store/records/tzone.h"

namespace camera {
namespace {

constexpr int kMaxSaving = 120;

constexpr std::int32_t at(int hour, int minute = 0) {
  return (hour * 60 + minute) * 60;
}

constexpr DaylightRules kUnitedStates{{3, 2, 0, at(2)}, {11, 1, 0, at(2)}};
constexpr DaylightRules kCuba{{3, 2, 0, at(0)}, {11, 1, 0, at(1)}};
constexpr DaylightRules kChile{{9, 1, 6, at(24)}, {4, 1, 6, at(24)}};
constexpr DaylightRules kEasterIsland{{9, 1, 6, at(22)}, {4, 1, 6, at(22)}};
constexpr DaylightRules kMoldova{{3, 5, 0, at(2)}, {10, 5, 0, at(3)}};
constexpr DaylightRules kLebanon{{3, 5, 0, at(0)}, {10, 5, 0, at(0)}};
constexpr DaylightRules kEgypt{{4, 5, 5, at(0)}, {10, 5, 4, at(24)}};
constexpr DaylightRules kIsrael{{3, 4, 4, at(26)}, {10, 5, 0, at(2)}};
constexpr DaylightRules kAustralia{{10, 1, 0, at(2)}, {4, 1, 0, at(3)}};
constexpr DaylightRules kLordHowe{{10, 1, 0, at(2)}, {4, 1, 0, at(2)}};
constexpr DaylightRules kNewZealand{{9, 5, 0, at(2)}, {4, 1, 0, at(3)}};
constexpr DaylightRules kChathamIslands{{9, 5, 0, at(2, 45)}, {4, 1, 0, at(3, 45)}};

// Europe changes everywhere at 01:00 UTC.
constexpr DaylightRules kGreenland{{3, 5, 0, at(-1)}, {10, 5, 0, at(0)}};
constexpr DaylightRules kAzores{{3, 5, 0, at(0)}, {10, 5, 0, at(1)}};
constexpr DaylightRules kWesternEurope{{3, 5, 0, at(1)}, {10, 5, 0, at(2)}};
constexpr DaylightRules kCentralEurope{{3, 5, 0, at(2)}, {10, 5, 0, at(3)}};
constexpr DaylightRules kEasternEurope{{3, 5, 0, at(3)}, {10, 5, 0, at(4)}};

constexpr std::int16_t west(int hours, int minutes = 0) {
  return static_cast<std::int16_t>(-(hours * 60 + minutes));
}
constexpr std::int16_t east(int hours, int minutes = 0) {
  return static_cast<std::int16_t>(hours * 60 + minutes);
}

// Removes a number and the character after it from the text, and returns the number. Returns -1 if the number
// is not 0 to max, or if another character than follower comes after it (0: the end).
int takeNumber(std::string_view* text, int max, char follower) {
  int number = 0;
  if (text->starts_with('-')) return -1;
  const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), number);
  if (error != std::errc{} || number > max) return -1;
  text->remove_prefix(static_cast<std::size_t>(end - text->data()));
  if (follower == '\0') return text->empty() ? number : -1;
  if (!text->starts_with(follower)) return -1;
  text->remove_prefix(1);
  return number;
}

// "M3.5.0/02:00", with or without seconds.
bool parseRule(std::string_view text, ChangeRule* rule) {
  if (!text.starts_with('M')) return false;
  text.remove_prefix(1);
  const int month = takeNumber(&text, 12, '.');
  const int week = takeNumber(&text, 5, '.');
  const int weekday = takeNumber(&text, 6, '/');
  const int hour = takeNumber(&text, 23, ':');
  const bool hasSeconds = text.find(':') != text.npos;
  const int minute = takeNumber(&text, 59, hasSeconds ? ':' : '\0');
  const int second = hasSeconds ? takeNumber(&text, 59, '\0') : 0;
  if (month < 1 || week < 1 || weekday < 0 || hour < 0 || minute < 0 || second < 0) return false;
  *rule = {static_cast<std::uint8_t>(month), static_cast<std::uint8_t>(week),
           static_cast<std::uint8_t>(weekday), at(hour, minute) + second};
  return true;
}

// "1:00" or "-0:30", in minutes; 0 if malformed.
int savingOf(std::string_view text) {
  const bool negative = text.starts_with('-');
  if (negative) text.remove_prefix(1);
  const int hours = takeNumber(&text, kMaxSaving / 60, ':');
  const int minutes = takeNumber(&text, 59, '\0');
  const int saving = hours * 60 + minutes;
  if (hours < 0 || minutes < 0 || saving > kMaxSaving) return 0;
  return negative ? -saving : saving;
}

// The instant at which the rule takes effect in that year, by clocks with that offset from UTC.
std::int64_t changeIn(int year, const ChangeRule& rule, std::int32_t offset) {
  return secondsOfWeekday(year, rule.month, rule.week, rule.weekday) + rule.seconds - offset;
}

}  // namespace

constexpr std::array<TimeZone, kTimeZoneCount> kTimeZones{{
    {west(12), nullptr},                      // 1 International Date Line West
    {west(11), nullptr},                      // 2 American Samoa, Midway Island
    {west(10), &kUnitedStates},               // 3 Aleutian Islands
    {west(10), nullptr},                      // 4 Hawaii, Tahiti
    {west(9, 30), nullptr},                   // 5 Marquesas Islands
    {west(9), &kUnitedStates},                // 6 Alaska
    {west(8), &kUnitedStates},                // 7 Pacific Time (US & Canada)
    {west(8), &kUnitedStates},                // 8 Baja California, Tijuana
    {west(7), &kUnitedStates},                // 9 Mountain Time (US & Canada)
    {west(7), nullptr},                       // 10 Arizona
    {west(7), nullptr},                       // 11 La Paz (Mexico), Mazatlan, Whitehorse
    {west(6), &kUnitedStates},                // 12 Central Time (US & Canada)
    {west(6), nullptr},                       // 13 Central America, Galapagos Islands
    {west(6), nullptr},                       // 14 Guadalajara, Mexico City, Monterrey
    {west(6), nullptr},                       // 15 Saskatchewan
    {west(6), &kEasterIsland},                // 16 Easter Island
    {west(5), &kUnitedStates},                // 17 Eastern Time (US & Canada)
    {west(5), nullptr},                       // 18 Bogota, Lima, Quito, Rio Branco
    {west(5), nullptr},                       // 19 Cancun, Jamaica, Panama
    {west(5), &kCuba},                        // 20 Havana
    {west(4), &kUnitedStates},                // 21 Atlantic Time (Canada), Bermuda
    {west(4), nullptr},                       // 22 Caracas
    {west(4), nullptr},                       // 23 Georgetown, La Paz (Bolivia), Manaus, San Juan
    {west(4), &kChile},                       // 24 Santiago
    {west(3, 30), &kUnitedStates},            // 25 Newfoundland
    {west(3), nullptr},                       // 26 Brasilia, Rio de Janeiro, Sao Paulo
    {west(3), nullptr},                       // 27 Buenos Aires, Montevideo
    {west(3), nullptr},                       // 28 Asuncion, Cayenne, Paramaribo
    {west(3), &kUnitedStates},                // 29 Saint Pierre and Miquelon
    {west(2), nullptr},                       // 30 Fernando de Noronha, South Georgia
    {west(2), &kGreenland},                   // 31 Greenland
    {west(1), &kAzores},                      // 32 Azores
    {west(1), nullptr},                       // 33 Cape Verde
    {east(0), nullptr},                       // 34 Coordinated Universal Time (UTC)
    {east(0), &kWesternEurope},               // 35 Dublin, Edinburgh, Lisbon, London
    {east(0), nullptr},                       // 36 Accra, Dakar, Monrovia, Reykjavik
    {east(1), &kCentralEurope},               // 37 Amsterdam, Berlin, Bern, Rome, Stockholm, Vienna
    {east(1), &kCentralEurope},               // 38 Belgrade, Bratislava, Budapest, Ljubljana, Prague
    {east(1), &kCentralEurope},               // 39 Brussels, Copenhagen, Madrid, Paris
    {east(1), &kCentralEurope},               // 40 Sarajevo, Skopje, Warsaw, Zagreb
    {east(1), nullptr},                       // 41 Casablanca, El Aaiun
    {east(1), nullptr},                       // 42 Algiers, Kinshasa, Lagos, Tunis
    {east(2), &kEasternEurope},               // 43 Athens, Bucharest, Nicosia
    {east(2), &kEasternEurope},               // 44 Helsinki, Kyiv, Riga, Sofia, Tallinn, Vilnius
    {east(2), &kMoldova},                     // 45 Chisinau
    {east(2), &kLebanon},                     // 46 Beirut
    {east(2), &kEgypt},                       // 47 Cairo
    {east(2), &kIsrael},                      // 48 Jerusalem
    {east(2), nullptr},                       // 49 Harare, Johannesburg, Pretoria, Windhoek
    {east(2), nullptr},                       // 50 Kaliningrad
    {east(2), nullptr},                       // 51 Khartoum, Tripoli
    {east(3), nullptr},                       // 52 Istanbul
    {east(3), nullptr},                       // 53 Amman, Damascus
    {east(3), nullptr},                       // 54 Baghdad, Kuwait, Riyadh
    {east(3), nullptr},                       // 55 Minsk, Moscow, Saint Petersburg
    {east(3), nullptr},                       // 56 Addis Ababa, Nairobi
    {east(3, 30), nullptr},                   // 57 Tehran
    {east(4), nullptr},                       // 58 Abu Dhabi, Dubai, Muscat
    {east(4), nullptr},                       // 59 Baku, Tbilisi, Yerevan
    {east(4), nullptr},                       // 60 Port Louis, Reunion, Samara
    {east(4, 30), nullptr},                   // 61 Kabul
    {east(5), nullptr},                       // 62 Islamabad, Karachi
    {east(5), nullptr},                       // 63 Almaty, Ashgabat, Astana, Tashkent
    {east(5), nullptr},                       // 64 Yekaterinburg
    {east(5, 30), nullptr},                   // 65 Chennai, Colombo, Kolkata, Mumbai, New Delhi
    {east(5, 45), nullptr},                   // 66 Kathmandu
    {east(6), nullptr},                       // 67 Bishkek, Dhaka, Omsk
    {east(6, 30), nullptr},                   // 68 Yangon
    {east(7), nullptr},                       // 69 Bangkok, Hanoi, Jakarta
    {east(7), nullptr},                       // 70 Krasnoyarsk, Novosibirsk
    {east(8), nullptr},                       // 71 Beijing, Chongqing, Hong Kong
    {east(8), nullptr},                       // 72 Kuala Lumpur, Manila, Singapore, Taipei
    {east(8), nullptr},                       // 73 Irkutsk, Perth, Ulaanbaatar
    {east(8, 45), nullptr},                   // 74 Eucla
    {east(9), nullptr},                       // 75 Osaka, Seoul, Tokyo, Yakutsk
    {east(9, 30), &kAustralia},               // 76 Adelaide
    {east(9, 30), nullptr},                   // 77 Darwin
    {east(10), nullptr},                      // 78 Brisbane, Guam, Port Moresby, Vladivostok
    {east(10), &kAustralia},                  // 79 Canberra, Hobart, Melbourne, Sydney
    {east(10, 30), &kLordHowe, east(0, 30)},  // 80 Lord Howe Island
    {east(11), nullptr},                      // 81 Honiara, Magadan, Noumea
    {east(11), &kAustralia},                  // 82 Norfolk Island
    {east(12), &kNewZealand},                 // 83 Auckland, Wellington
    {east(12), nullptr},                      // 84 Fiji, Kamchatka, Marshall Islands
    {east(12, 45), &kChathamIslands},         // 85 Chatham Islands
    {east(13), nullptr},                      // 86 Apia, Nuku'alofa
    {east(14), nullptr},                      // 87 Kiritimati
}};
static_assert(std::is_sorted(kTimeZones.begin(), kTimeZones.end(),
                             [](const TimeZone& a, const TimeZone& b) { return a.east < b.east; }));
static_assert(kTimeZones[kUtcTimeZone - 1].east == 0 && kTimeZones[kUtcTimeZone - 1].daylight == nullptr);

LocalZone localZone(const TimeZoneSettings& setting) {
  const TimeZone& zone = kTimeZones[static_cast<std::size_t>(setting.timezone - 1)];
  LocalZone local{.standard = zone.east * 60, .saving = 0, .daylight = {}};
  if (setting.dstenable == 0) return local;
  if (setting.dstauto != 0 && zone.daylight != nullptr) {
    local.saving = zone.saving * 60;
    local.daylight = *zone.daylight;
  } else if (setting.dstauto == 0 && parseRule(setting.starttime, &local.daylight.start) &&
             parseRule(setting.stoptime, &local.daylight.stop)) {
    local.saving = savingOf(setting.offset) * 60;
  }
  return local;
}

std::int32_t offsetAt(const LocalZone& zone, std::int64_t instant) {
  if (zone.saving == 0) return zone.standard;
  const int year = civilTime(instant + zone.standard).year;
  const std::int64_t start = changeIn(year, zone.daylight.start, zone.standard);
  const std::int64_t stop = changeIn(year, zone.daylight.stop, zone.standard + zone.saving);
  // South of the equator, daylight saving time lasts over the turn of the year.
  const bool saving = start < stop ? instant >= start && instant < stop : instant >= start || instant < stop;
  return zone.standard + (saving ? zone.saving : 0);
}

}  // namespace camera
