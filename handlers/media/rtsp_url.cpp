// rtspurl.cgi: the path under which the RTSP server offers each video profile.
#include "handlers/endpoint.h"
#include "platform/store/records/rtspsvr.h"

namespace camera {
namespace {

struct StreamPath {
  std::int32_t profile;
  std::string_view path;
};

constexpr auto kParams =
    paramRows<StreamPath>(integerParam<&StreamPath::profile>("profileid", 1, 4).required(),
                          textParam<&StreamPath::path>("urlentry", 1, 15, kNameText));

}  // namespace

class RtspUrlEndpoint final : public StateEndpoint<kParams, Takes::kCommand> {
  // Only a valid request reads the record.
  int carryOut(StreamPath& wanted) override {
    if (const int result = read(rtspsvr_); result != 200) return result;
    RtspServerSettings changed = rtspsvr_;
    char(&entry)[32] = changed.urlentry[wanted.profile - 1];
    if (given("urlentry")) setText(entry, wanted.path);
    writeChanged(rtspsvr_, changed);
    rtspsvr_ = changed;
    wanted.path = rtspsvr_.urlentry[wanted.profile - 1];
    return commit();
  }

  RtspServerSettings rtspsvr_;
};

template <>
const Api kApi<RtspUrlEndpoint> =
    describes<kParams>({.subsystem = Subsystem::kPicture,
                        .summary = "The path under which the RTSP server offers a video profile.",
                        .records = "`rtspsvr`",
                        .params = {{"profileid", "The video profile."},
                                   {"urlentry", "The path, without a slash.", nullptr, "live1"}}});
template struct EndpointOf<RtspUrlEndpoint>;

}  // namespace camera
