// Product information: the parser of product.conf.
#include "platform/product/product_info.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <variant>

#include "platform/log.h"
#include "platform/product/display_system.h"
#include "platform/text.h"

namespace camera {
namespace {

constexpr bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r';
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

// A key and the field that stores its value. The field's type decides which values are accepted.
struct Key {
  std::string_view name;
  std::variant<bool ProductInfo::*, std::uint8_t ProductInfo::*, std::int32_t ProductInfo::*,
               std::string_view ProductInfo::*, WordList ProductInfo::*>
      target;
};

constexpr Key kKeys[] = {
    {"has_pir", &ProductInfo::has_pir},
    {"input_count", &ProductInfo::input_count},
    {"output_count", &ProductInfo::output_count},
    {"has_speaker", &ProductInfo::has_speaker},
    {"has_mic", &ProductInfo::has_mic},
    {"has_pan_tilt", &ProductInfo::has_pan_tilt},
    {"has_zoom", &ProductInfo::has_zoom},
    {"has_privacy", &ProductInfo::has_privacy},
    {"has_sdcard", &ProductInfo::has_sdcard},
    {"has_irled", &ProductInfo::has_irled},
    {"has_icr", &ProductInfo::has_icr},
    {"has_h264", &ProductInfo::has_h264},
    {"wireless", &ProductInfo::wireless},
    {"region", &ProductInfo::region},
    {"sensor", &ProductInfo::sensor},
    {"sensor_caps", &ProductInfo::sensor_caps},
    {"mac_address", &ProductInfo::mac_address},
    {"modules", &ProductInfo::modules},
    {"display_systems", &ProductInfo::display_systems},
    {"max_exposure_times", &ProductInfo::max_exposure_times},
    {"interface.eth0", &ProductInfo::eth0},
    {"interface.ppp0", &ProductInfo::ppp0},
    {"interface.ra0", &ProductInfo::ra0},
};

// Finds the key of that name; returns the end of the table for an unknown name. Files mostly have the table's
// order, so the search starts after the previous key.
const Key* findKey(std::string_view name, const Key* start) {
  const auto isIt = [name](const Key& key) { return key.name == name; };
  const Key* found = std::find_if(start, std::end(kKeys), isIt);
  if (found != std::end(kKeys)) return found;
  found = std::find_if(std::begin(kKeys), start, isIt);
  return found == start ? std::end(kKeys) : found;
}

// Stores the value of one key. False if the key does not accept it.
struct Reader {
  ProductInfo& product;
  std::string_view value;

  bool operator()(bool ProductInfo::*feature) const {
    product.*feature = value == "1";
    return value == "0" || value == "1";
  }
  bool operator()(std::uint8_t ProductInfo::*count) const { return readNumber(value, &(product.*count)); }
  bool operator()(std::int32_t ProductInfo::*index) const {
    return readNumber(value, &(product.*index)) && product.*index >= 0;
  }
  bool operator()(std::string_view ProductInfo::*word) const {
    if (!value.empty()) product.*word = value;
    return true;
  }
  bool operator()(WordList ProductInfo::*list) const {
    (product.*list).text = value;
    return true;
  }
};

bool areDisplaySystems(WordList names) {
  for (std::string_view name = names.next(); !name.empty(); name = names.next()) {
    if (std::find(std::begin(kDisplaySystems), std::end(kDisplaySystems), name) == std::end(kDisplaySystems))
      return false;
  }
  return true;
}

}  // namespace

std::string_view WordList::next() {
  std::string_view word;
  while (word.empty() && !text.empty()) word = trimmed(takeUntil(separator, &text));
  return word;
}

std::string WordList::spaced(std::size_t most) const {
  std::string words;
  WordList rest = *this;
  for (std::string_view word = rest.next(); !word.empty() && most > 0; word = rest.next(), --most) {
    if (!words.empty()) words += ' ';
    words += word;
  }
  return words;
}

bool ProductInfo::parse(std::string file) {
  text_ = std::move(file);
  std::string_view text = text_;
  std::array<bool, std::size(kKeys)> seen{};
  const Key* next = kKeys;
  for (int number = 1; !text.empty(); ++number) {
    std::string_view line = takeUntil('\n', &text);
    line = takeUntil('#', &line);
    std::string_view value = line;
    const std::string_view name = takeUntil('=', &value);
    const bool hasValue = name.size() < line.size();
    if (!hasValue && trimmed(line).empty()) continue;
    const Key* key = findKey(trimmed(name), next);
    const auto index = static_cast<std::size_t>(key - kKeys);
    if (!hasValue || key == std::end(kKeys) || seen[index] ||
        !std::visit(Reader{*this, trimmed(value)}, key->target)) {
      logDebug(joined({"product information:", std::to_string(number), ": malformed"}));
      return false;
    }
    seen[index] = true;
    next = key + 1;
  }
  if (areDisplaySystems(display_systems)) return true;
  logDebug("product information: display_systems: unknown name");
  return false;
}

std::string_view ProductInfo::interfaceName(std::string_view name) const {
  return name == "eth0" ? eth0 : name == "ppp0" ? ppp0 : name == "ra0" ? ra0 : name;
}

bool ProductInfo::hasModule(std::string_view name) const {
  WordList rest = modules;
  std::string_view module = rest.next();
  while (!module.empty() && module != name) module = rest.next();
  return !module.empty();
}

}  // namespace camera
