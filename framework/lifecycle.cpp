// The lifecycle of a handler: the same four steps for every endpoint.
#include "framework/cgilet.h"

namespace camera {

void serve(InfCgilet& cgilet) {
  cgilet.onLoad();
  if (cgilet.parseHttp()) {
    cgilet.onApply();
    cgilet.cleanUp();
  }
  cgilet.onReply();
}

}  // namespace camera
