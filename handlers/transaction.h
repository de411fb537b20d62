// The settings transaction of one request: writes in order, then the actions of all of them.
#pragma once

#include "platform/store/cam.h"

namespace camera {

class Transaction {
 public:
  Transaction() { cam_clean_actions(&actions_); }

  // Stores a record with its cam_set_ function and flag, unless a write before it failed. True when stored.
  template <class Record>
  bool write(int (*set)(const Record*, _cam_actions*, unsigned char), const Record& record,
             unsigned char flag) {
    if (result_ == 0) result_ = set(&record, &actions_, flag);
    return result_ == 0;
  }

  // Runs the actions when everything was stored. The request's result code: 200; 400 after a refused write,
  // 500 after a failed one. What was stored before stays.
  int finish() {
    if (result_ != 0) return result_ == 1 ? 400 : 500;
    cam_work_actions(&actions_);
    return 200;
  }

 private:
  _cam_actions actions_;
  int result_ = 0;
};

// The transaction of one record.
template <class Record>
int store(int (*set)(const Record*, _cam_actions*, unsigned char), const Record& record, unsigned char flag) {
  Transaction transaction;
  transaction.write(set, record, flag);
  return transaction.finish();
}

}  // namespace camera
