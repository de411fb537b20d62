// Product information: the parser of product.conf.
#include "platform/product/product_info.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <variant>

#include "platform/log.h"
#include "platform/product/display_system.h"
#include "platform/text.h"

namespace {

using camera::readNumber;
using camera::takeUntil;

constexpr int kMostDisplaySystems = 3;

constexpr bool isBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r';
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

// Words of product.conf and what separates them; empty ones do not count.
struct List {
  std::string_view text;
  char separator;

  // Takes the next word off the text; empty at the end.
  std::string_view next() {
    std::string_view word;
    while (word.empty() && !text.empty()) word = trimmed(takeUntil(separator, &text));
    return word;
  }
};

std::string spaced(List list) {
  std::string words;
  for (std::string_view word = list.next(); !word.empty(); word = list.next()) {
    if (!words.empty()) words += ' ';
    words += word;
  }
  return words;
}

bool areDisplaySystems(List names) {
  int count = 0;
  for (std::string_view name = names.next(); !name.empty(); name = names.next()) {
    if (std::find(std::begin(DisplaySystem), std::end(DisplaySystem), name) == std::end(DisplaySystem)) {
      return false;
    }
    ++count;
  }
  return count <= kMostDisplaySystems;
}

// What the calls of ProductInfo give back.
struct Details {
  std::int32_t region = 0;
  std::uint8_t wireless = 0;
  std::string_view sensor;
  std::string_view macAddress;
  std::string_view eth0 = "eth0";
  std::string_view ppp0 = "ppp0";
  std::string_view ra0 = "ra0";
  List sensorCaps{{}, ' '};
  List modules{{}, ','};
  List displaySystems{{}, ' '};
  List maxExposureTimes{{}, ' '};
};

// Where a key's value goes, which also says what it must look like.
struct Key {
  std::string_view name;
  std::variant<std::uint32_t ProductInfo::*, std::uint8_t ProductInfo::*, std::int32_t Details::*,
               std::uint8_t Details::*, std::string_view Details::*, List Details::*>
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
    {"wireless", &Details::wireless},
    {"region", &Details::region},
    {"sensor", &Details::sensor},
    {"sensor_caps", &Details::sensorCaps},
    {"mac_address", &Details::macAddress},
    {"modules", &Details::modules},
    {"display_systems", &Details::displaySystems},
    {"max_exposure_times", &Details::maxExposureTimes},
    {"interface.eth0", &Details::eth0},
    {"interface.ppp0", &Details::ppp0},
    {"interface.ra0", &Details::ra0},
};

// The end of the table for a name that is no key. Files mostly have the table's order, so that the search
// starts where the last one ended.
const Key* findKey(std::string_view name, const Key* start) {
  const auto isIt = [name](const Key& key) { return key.name == name; };
  const Key* found = std::find_if(start, std::end(kKeys), isIt);
  if (found != std::end(kKeys)) return found;
  found = std::find_if(std::begin(kKeys), start, isIt);
  return found == start ? std::end(kKeys) : found;
}

// Stores the value of one key; false for a value that the key cannot have.
struct Reader {
  ProductInfo& pib;
  Details& details;
  std::string_view value;

  bool operator()(std::uint32_t ProductInfo::*count) const { return readNumber(value, &(pib.*count)); }
  bool operator()(std::uint8_t ProductInfo::*feature) const { return readNumber(value, &(pib.*feature)); }
  bool operator()(std::int32_t Details::*index) const {
    return readNumber(value, &(details.*index)) && details.*index >= 0;
  }
  bool operator()(std::uint8_t Details::*truth) const {
    return readNumber(value, &(details.*truth)) && details.*truth <= 1;
  }
  bool operator()(std::string_view Details::*word) const {
    if (!value.empty()) details.*word = value;
    return true;
  }
  bool operator()(List Details::*list) const {
    (details.*list).text = value;
    return true;
  }
};

}  // namespace

struct ProductInfo::Data : Details {
  std::string text;  // what the details are parts of
};

const char* ProductInfoError::what() const noexcept {
  return "product information cannot be read";
}

ProductInfo::ProductInfo()
    : has_pir(0),
      input_count(0),
      output_count(0),
      has_speaker(0),
      has_mic(0),
      has_pan_tilt(0),
      has_zoom(0),
      has_privacy(0),
      has_sdcard(0),
      has_irled(0),
      has_icr(0),
      has_h264(0) {}

ProductInfo::~ProductInfo() = default;
ProductInfo& ProductInfo::operator=(const ProductInfo&) = default;

const ProductInfo::Data& ProductInfo::data() const {
  static const Data kNothing;
  return data_ ? *data_ : kNothing;
}

void ProductInfo::parse(std::string file) {
  const auto data = std::make_shared<Data>();
  data->text = std::move(file);
  std::string_view text = data->text;
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
        !std::visit(Reader{*this, *data, trimmed(value)}, key->target)) {
      logDebug("product information:%d: not understood", number);
      throw ProductInfoError();
    }
    seen[index] = true;
    next = key + 1;
  }
  if (!areDisplaySystems(data->displaySystems)) {
    logDebug("product information: display_systems: not understood");
    throw ProductInfoError();
  }
  data_ = data;
}

int ProductInfo::getRegion() const {
  return data().region;
}

std::string ProductInfo::getSensor() const {
  return std::string(data().sensor);
}

std::string ProductInfo::getSensorCaps() const {
  return spaced(data().sensorCaps);
}

std::string ProductInfo::getMacAddress() const {
  return std::string(data().macAddress);
}

bool ProductInfo::probeWireless() const {
  return data().wireless != 0;
}

std::string ProductInfo::displaySystems() const {
  return spaced(data().displaySystems);
}

std::string ProductInfo::maxExposureTimes() const {
  return spaced(data().maxExposureTimes);
}

std::string_view ProductInfo::interfaceName(std::string_view name) const {
  const Data& known = data();
  return name == "eth0" ? known.eth0 : name == "ppp0" ? known.ppp0 : name == "ra0" ? known.ra0 : name;
}

bool ProductInfo::hasModule(std::string_view name) const {
  List modules = data().modules;
  std::string_view module = modules.next();
  while (!module.empty() && module != name) module = modules.next();
  return !module.empty();
}
