// What every endpoint is that reads and changes one record through a table of parameters.
#pragma once

#include "framework/param_table.h"
#include "handlers/transaction.h"

namespace camera {

// The endpoint names the record with its functions and flag, and gives the table that goes into record_.
template <class Record, int (*kGet)(Record*), int (*kSet)(const Record*, _cam_actions*, unsigned char),
          unsigned char kFlag>
class RecordCgilet : public InfCgilet {
 public:
  void onLoad() override {
    status = 500;
    if (kGet(&record_) == 0) status = 200;
  }

  void onApply() override {
    if (status != 200) return;
    status = 400;
    if (!params().check(*this)) return;
    params().merge();
    if (!isConsistent()) return;
    status = changed_ ? store(kSet, record_, kFlag) : 200;
  }

  void onReply() override {
    if (status != 200) {
      infFail(status);
      return;
    }
    params().reply(*this);
    infOK();
  }

 protected:
  virtual ParamTable& params() = 0;
  // Whether the values go together; asked after the merge, and nothing is stored when they do not.
  virtual bool isConsistent() { return true; }

  Record record_;
  bool changed_ = false;
};

}  // namespace camera
