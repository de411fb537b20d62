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

template <>
const Api kApi<ActionMailEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kEvents,
     .summary = "The mail account through which the camera sends snapshots when an event rule with "
                "`mail_shot` fires.",
     .records = "`smtp`",
     .dependent = "pass",
     .params = {{"enable", "Switches the mailing."},
                {"sender", "The address of the sender.", nullptr, "door@example.net"},
                {"to", "The address of the recipient, or several separated by commas.", nullptr,
                 "me@example.net,you@example.net"},
                {"host", "The name or address of the mail server.", nullptr, "mail.example.net"},
                {"port", "The port of the mail server.", nullptr, "25"},
                {"user", "The name of the account on the server.", nullptr, "door"},
                {"pass", "The password of the account.", nullptr, "c2VjcmV0"}},
     .state = factoryState<Mail>,
     .schema = [](std::string_view param, const ProductInfo& /*product*/) -> std::string {
       if (param == "sender" || param == "to")
         return R"("type":"string","maxLength":60,"pattern":"^[!-~]*@[!-~]*\\.[!-~]*$")";
       if (param != "pass") return {};
       return R"("type":"string","maxLength":40,"contentEncoding":"base64",)"
              R"("pattern":"^([A-Za-z0-9+/]{4})*([A-Za-z0-9+/]{2}==|[A-Za-z0-9+/]{3}=)?$")";
     }});
template struct EndpointOf<ActionMailEndpoint>;

}  // namespace camera
