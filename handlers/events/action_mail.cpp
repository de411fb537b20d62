// action_mail.cgi: the mail account that sends the snapshots of events.
#include "handlers/encoded_password.h"
#include "handlers/endpoint.h"
#include "platform/store/records/smtp.h"

namespace camera {
namespace {

struct Mail {
  SmtpSettings account;
  char pass[kEncodedSize];
};

// True if a dot follows the first "@" anywhere. A list of addresses with commas is accepted too.
bool isAddress(std::string_view text) {
  const std::size_t at = text.find('@');
  return at != text.npos && text.find('.', at) != text.npos;
}

template <auto... kPath>
constexpr auto addressParam(const char* name) {
  return textParam<kPath...>(name, 1, 60, kPunctuationText)
      .also(isAddress, "1 to 60 letters, digits, punctuation, with an @ and a dot after it");
}

constexpr auto kParams =
    paramRows<Mail>(choiceParam<&Mail::account, &SmtpSettings::enable>("enable", kNoYes),
                    addressParam<&Mail::account, &SmtpSettings::sender>("sender"),
                    addressParam<&Mail::account, &SmtpSettings::to>("to"),
                    textParam<&Mail::account, &SmtpSettings::host>("host", 1, 60, kNameText),
                    integerParam<&Mail::account, &SmtpSettings::port>("port"),
                    textParam<&Mail::account, &SmtpSettings::user>("user", kPunctuationText),
                    encodedPasswordParam<&Mail::pass>("pass"))
        .ignoringUnknown();

}  // namespace

class ActionMailEndpoint final : public StateEndpoint<kParams> {
  int load() override {
    const int result = read(state.account);
    if (result == 200) showPassword(state.account.pass, state.pass);
    return result;
  }

  int check(Mail& wanted) override {
    if (given("pass")) storePassword(wanted.pass, wanted.account.pass);
    return 200;
  }

  int carryOut(Mail& wanted) override {
    writeChanged(state.account, wanted.account);
    return commit();
  }
};

template struct EndpointOf<ActionMailEndpoint>;

}  // namespace camera
