// Product information: the parser of product.conf.
#include "platform/product/pib.h"

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

constexpr std::size_t kMostDisplaySystems = 3;
constexpr std::string_view kBlanks = " \t\r";

using Words = std::vector<std::string>;

std::string_view trimmed(std::string_view text) {
  const std::size_t start = text.find_first_not_of(kBlanks);
  return start == text.npos ? std::string_view{}
                            : text.substr(start, text.find_last_not_of(kBlanks) + 1 - start);
}

Words wordsOf(std::string_view text, char separator) {
  Words words;
  while (!text.empty()) {
    const std::string_view word = trimmed(takeUntil(separator, &text));
    if (!word.empty()) words.emplace_back(word);
  }
  return words;
}

bool isDisplaySystem(const std::string& name) {
  return std::find(std::begin(DisplaySystem), std::end(DisplaySystem), name) != std::end(DisplaySystem);
}

// What the calls of PIB give back.
struct Details {
  std::int32_t region = 0;
  std::uint8_t wireless = 0;
  std::string sensor;
  std::string macAddress;
  std::string eth0 = "eth0";
  std::string ppp0 = "ppp0";
  std::string ra0 = "ra0";
  Words sensorCaps;
  Words modules;
  Words displaySystems;
  Words maxExposureTimes;
};

struct List {
  Words Details::*words;
  char separator;
};

// Where a key's value goes, which also says what it must look like.
struct Key {
  std::string_view name;
  std::variant<std::uint32_t PIB::*, std::uint8_t PIB::*, std::int32_t Details::*, std::uint8_t Details::*,
               std::string Details::*, List>
      target;
};

constexpr Key kKeys[] = {
    {"has_pir", &PIB::has_pir},
    {"input_count", &PIB::input_count},
    {"output_count", &PIB::output_count},
    {"has_speaker", &PIB::has_speaker},
    {"has_mic", &PIB::has_mic},
    {"has_pan_tilt", &PIB::has_pan_tilt},
    {"has_zoom", &PIB::has_zoom},
    {"has_privacy", &PIB::has_privacy},
    {"has_sdcard", &PIB::has_sdcard},
    {"has_irled", &PIB::has_irled},
    {"has_icr", &PIB::has_icr},
    {"has_h264", &PIB::has_h264},
    {"region", &Details::region},
    {"wireless", &Details::wireless},
    {"sensor", &Details::sensor},
    {"mac_address", &Details::macAddress},
    {"interface.eth0", &Details::eth0},
    {"interface.ppp0", &Details::ppp0},
    {"interface.ra0", &Details::ra0},
    {"sensor_caps", List{&Details::sensorCaps, ' '}},
    {"modules", List{&Details::modules, ','}},
    {"display_systems", List{&Details::displaySystems, ' '}},
    {"max_exposure_times", List{&Details::maxExposureTimes, ' '}},
};

// Stores the value of one key; false for a value that the key cannot have.
struct Reader {
  PIB& pib;
  Details& details;
  std::string_view value;

  bool operator()(std::uint32_t PIB::*count) const { return readNumber(value, &(pib.*count)); }
  bool operator()(std::uint8_t PIB::*feature) const { return readNumber(value, &(pib.*feature)); }
  bool operator()(std::int32_t Details::*index) const {
    return readNumber(value, &(details.*index)) && details.*index >= 0;
  }
  bool operator()(std::uint8_t Details::*truth) const {
    return readNumber(value, &(details.*truth)) && details.*truth <= 1;
  }
  bool operator()(std::string Details::*word) const {
    if (!value.empty()) details.*word = value;
    return true;
  }
  bool operator()(List list) const {
    details.*list.words = wordsOf(value, list.separator);
    return true;
  }
};

}  // namespace

struct PIB::Data : Details {};

const char* PIBError::what() const noexcept {
  return "product information cannot be read";
}

PIB::PIB()
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
      has_h264(0),
      data_(new Data) {}

PIB::~PIB() {
  delete data_;
}

void PIB::parse(std::string_view text) {
  std::array<bool, std::size(kKeys)> seen{};
  for (int number = 1; !text.empty(); ++number) {
    std::string_view line = takeUntil('\n', &text);
    line = trimmed(takeUntil('#', &line));
    if (line.empty()) continue;
    const std::size_t equals = line.find('=');
    const std::string_view name = trimmed(line.substr(0, equals));
    const Key* key =
        std::find_if(std::begin(kKeys), std::end(kKeys), [&](const Key& k) { return k.name == name; });
    const auto index = static_cast<std::size_t>(key - kKeys);
    if (equals == line.npos || key == std::end(kKeys) || seen[index] ||
        !std::visit(Reader{*this, *data_, trimmed(line.substr(equals + 1))}, key->target)) {
      dbg_log("product information:%d: not understood", number);
      throw PIBError();
    }
    seen[index] = true;
  }
  const Words& systems = data_->displaySystems;
  if (systems.size() > kMostDisplaySystems || !std::all_of(systems.begin(), systems.end(), isDisplaySystem)) {
    dbg_log("product information: display_systems: not understood");
    throw PIBError();
  }
}

int PIB::getRegion() const {
  return data_->region;
}

std::string PIB::getSensor() const {
  return data_->sensor;
}

std::string PIB::getSensorCaps() const {
  std::string caps;
  for (const std::string& name : data_->sensorCaps) caps += caps.empty() ? name : " " + name;
  return caps;
}

std::string PIB::getMacAddress() const {
  return data_->macAddress;
}

bool PIB::probeWireless() const {
  return data_->wireless != 0;
}

const std::vector<std::string>& PIB::displaySystems() const {
  return data_->displaySystems;
}

const std::vector<std::string>& PIB::maxExposureTimes() const {
  return data_->maxExposureTimes;
}

std::string PIB::interfaceName(const std::string& name) const {
  return name == "eth0" ? data_->eth0 : name == "ppp0" ? data_->ppp0 : name == "ra0" ? data_->ra0 : name;
}

bool PIB::hasModule(const std::string& name) const {
  return std::find(data_->modules.begin(), data_->modules.end(), name) != data_->modules.end();
}
