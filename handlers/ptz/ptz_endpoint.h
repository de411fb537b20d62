// What all pan/tilt endpoints are: of a camera that has a head, and as good as the head's answers.
#pragma once

#include "handlers/endpoint.h"
#include "handlers/ptz/ptz_channel.h"

namespace camera {

// On top of one of the endpoints of handlers/endpoint.h.
template <class Base>
class PtzEndpoint : public Base {
 protected:
  using Base::Base;

  int load() override {
    const int result = this->require(&ProductInfo::has_pan_tilt);
    return result == 200 ? resultOf(ask()) : result;
  }

  // Asks the head what the request needs to know of it; false when a command failed.
  virtual bool ask() { return true; }

  // What commands make of the request: 200, or 500 with the failure said.
  int resultOf(bool done) {
    return done ? 200 : this->fail(500, "pan/tilt head: no answer, or the command was refused");
  }

  void replyPosition(const PtzLimits& limits, const PtzPosition& position) {
    this->pair("p", mirrorPan(limits, position.pan));
    this->pair("t", position.tilt);
    replyZoom();
  }

  // No endpoint drives the zoom, so there is one place where it is.
  void replyZoom() {
    if (this->product()->has_zoom) this->pair("z", 0);
  }
};

}  // namespace camera
