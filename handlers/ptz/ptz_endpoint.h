// Base of the pan/tilt endpoints: 404 without a head, 500 if the daemon fails.
#pragma once

#include "handlers/endpoint.h"
#include "handlers/ptz/ptz_channel.h"

namespace camera {

// For descriptions of replies that end with replyZoom().
inline constexpr ApiKey kZoomKey{.name = "z",
                                 .type = ApiType::kNumber,
                                 .meaning = "Always 0; only if the head zooms.",
                                 .isOptional = true};

// Base is one of the classes of handlers/endpoint.h.
template <class Base>
class PtzEndpoint : public Base {
 protected:
  using Base::Base;

  int load() override {
    const int result = this->require(&ProductInfo::has_pan_tilt);
    return result == 200 ? resultOf(ask()) : result;
  }

  // Reads what the request needs from the head. False if a command failed.
  virtual bool ask() { return true; }

  // The result code of the request's commands: 200 or 500.
  int resultOf(bool done) {
    return done ? 200 : this->fail(500, "pan/tilt head: no answer, or the command was refused");
  }

  void replyPosition(const PtzLimits& limits, const PtzPosition& position) {
    this->pair("p", mirrorPan(limits, position.pan));
    this->pair("t", position.tilt);
    replyZoom();
  }

  // No endpoint moves the zoom, so its position is always 0.
  void replyZoom() {
    if (this->product()->has_zoom) this->pair("z", 0);
  }
};

}  // namespace camera
