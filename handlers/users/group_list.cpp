// group_list.cgi: the groups, their members and what ordinary accounts may do.
#include "handlers/endpoint.h"
#include "handlers/users/accounts.h"

namespace camera {
namespace {

struct Selection {
  std::int32_t group;
};

constexpr auto kParams = paramRows<Selection>(choiceParam<&Selection::group>("name", kGroups));

std::string privileges(const ProductInfo& product) {
  std::string text;
  if (product.has_pan_tilt) text += product.has_zoom ? "ptz," : "pt,";
  if (product.output_count != 0) text += "outputs,";
  if (product.has_speaker) text += "speaker,";
  if (product.has_mic) text += "mic,";
  return text + "video,notify";
}

}  // namespace

class GroupListEndpoint final : public ParamEndpoint<kParams> {
  int load() override { return read(account_); }

  int apply() override { return take(&selection_); }

  int reply() override {
    if (selection_.group == kNoGroup) {
      replyGroups();
      return 200;
    }
    const ProductInfo* known = product();
    if (known == nullptr) return 500;
    list("user", members(selection_.group));
    list("privilege", privileges(*known));
    return 200;
  }

  void replyGroups() {
    if (!isJson()) {
      pair("groups", static_cast<int>(std::size(kGroups)));
      for (const int group : {kAdministrator, kUsers}) pair(kGroups[group], members(group));
      return;
    }
    JsonArray groups;
    for (const int group : {kAdministrator, kUsers}) {
      JsonObject entry;
      entry.add("name", kGroups[group]);
      entry.addValue("members", jsonList(members(group)));
      groups.add(entry.text());
    }
    value("groups", groups.text());
  }

  std::string members(int group) const { return group == kAdministrator ? kAdminWord : users(); }

  std::string users() const {
    std::string names;
    for (int slot = 1; slot <= account_.user_count; ++slot) {
      if (slot > 1) names += ',';
      names += account_.user_name[slot];
    }
    return names;
  }

  AccountSettings account_;
  Selection selection_{kNoGroup};
};

constexpr ApiKey kGroupKeys[] = {
    {"name", ApiType::kText, "The group's name.", kGroups},
    {"members", ApiType::kTexts,
     "Its members; the administrator is always `admin`, whatever the account's name is."}};
template <>
const Api kApi<GroupListEndpoint> = describes<kParams>(
    {.subsystem = Subsystem::kUsers,
     .summary =
         "The two groups: `Administrator`, which holds only the administrator, and `Users`, which holds all "
         "other accounts.",
     .records = "none; reads `account`",
     .params = {{"name", "Selects a group, whose members and privileges the reply then has."}},
     .reply = {
         {.name = "groups",
          .type = ApiType::kObjects,
          .meaning = "The groups; only without `name`. In text, their number, then a line for each with its "
                     "name as key and its members separated by commas.",
          .members = kGroupKeys,
          .isOptional = true},
         {.name = "user",
          .type = ApiType::kTexts,
          .meaning = "The members of the group, as in `members`; only with `name`.",
          .isOptional = true},
         {.name = "privilege",
          .type = ApiType::kTexts,
          .meaning = "What ordinary accounts may do on this product, the same for both groups; only with "
                     "`name`: `ptz` or `pt`, `outputs`, `speaker`, `mic` if it has such parts, then always "
                     "`video`, `notify`.",
          .isOptional = true}}});
template struct EndpointOf<GroupListEndpoint>;

}  // namespace camera
