// The base classes of every endpoint: BaseCgilet owns the request, InfCgilet adds the result code and the
// reply.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "framework/common_api.h"
#include "framework/form.h"

namespace camera {
struct ParamRow;
}

// The request: its parameters and the checks on them. One object serves one request in one process. The
// checks are those of framework/checks.h, which handlers use; only DTFormat and checkTimeRange stand here
// alone.
class BaseCgilet {
 public:
  using Queries = camera::Queries;

  BaseCgilet();
  virtual ~BaseCgilet();
  virtual void onLoad() = 0;   // reads the current settings, sets the result code
  virtual void onApply() = 0;  // checks and applies the parameters; only called when there are some
  virtual void onDump() = 0;
  virtual void SetSSL(void* ssl);
  virtual void SetOnEngine(int on);

  // Reads the query string and the body of a POSTed form (each 64 KiB at most). True when there is a
  // parameter. A request that is too long, or whose body is no form or shorter than it says, has none, and
  // what would be a 200 becomes a 400. Of a body that is longer than it says the rest is not looked at.
  bool parseHttp();
  // Releases what parseHttp needed; the parameters stay.
  void cleanUp();
  unsigned getQueriesSize() const;
  // Finds a parameter: sets the position, adds 1 to the counter and returns 1. Otherwise returns -1.
  int getIter(const char* name, Queries::iterator& position, unsigned* counter);

  // Truth: decimal integer of min to max (value may be left out); length of min to max bytes.
  static bool CheckRange(std::string_view text, int min, int max, int* value);
  static bool CheckRange(std::string_view text, int min, int max);
  static bool checkLength(std::string_view text, int min, int max);
  // The length when it is min to max, otherwise -1.
  static int checkLen(std::string_view text, int min, int max);
  static int checkLen(int length, int min, int max);
  // Position of the text in the table, compared whole and by case; -1 when absent. With variants, a reported
  // sensor model also matches its base model.
  static int isValidStr(std::string_view text, const std::string table[], int count);
  static int isValidStr(std::string_view text, std::string table[], int count);
  static int isValidStr(std::string_view text, const std::vector<std::string>& table, int count);
  static int isValidStr(std::string_view text, const char* const table[], int count, bool variants = false);
  // The length of a text of min to max bytes made of the extra characters and, as the flags say, letters,
  // digits and hexadecimal digits; otherwise -1.
  static int ChkAcptStr(std::string_view text, int min, int max, std::string_view extra, bool letters,
                        bool digits, bool hexDigits);
  // The length of a text that is not empty and made of digits and the extra characters; otherwise -1.
  static int isDigit(std::string_view text, std::string_view extra);
  // The length when it is the one given and every character a hexadecimal digit; otherwise -1.
  static int checkHex(std::string_view text, int length, int flag);
  static bool checkDate(int year, int month, int day);
  // Truth: count (2 or 3) texts are hour 0 to 23, minute 0 to 59 and second 0 to 59.
  static bool checkTimeRange(const std::vector<std::string>& fields, int count);
  // Pieces between the separator's occurrences; none for an empty text. Their number, -1 without a separator.
  static int StrtoVector(std::string_view text, std::string_view separator, std::vector<std::string>& pieces);
  // Splits a date or time text at any of the separators into fields of digits. count 0 means any number of
  // fields. With widths checked, field i has at most the width given for it. Where several separators are
  // given, a sign among them may lead the text and is dropped. Returns the number of fields, -1 when the text
  // is not so made.
  static int DTFormat(std::string_view text, std::vector<std::string>& fields, std::string_view separators,
                      int count, int width1, int width2, int width3, bool checkWidths,
                      const char* joiner = "", bool flag = false);
  // Takes the leading digits of the named parameter into the field; truth: it was given and differed.
  bool applyInt(std::int32_t* field, const char* name) const;
  static bool changeUnsignedChar(std::uint8_t* field, int value);
  // As CommonAPI::GetValBySep.
  static int getValBySep(const char** cursor, const char* separator, const char* inner, char* first,
                         std::size_t firstSize, char* second, std::size_t secondSize);
  static void InitArray(bool* flags, int count);

  BaseCgilet(const BaseCgilet&) = delete;
  BaseCgilet& operator=(const BaseCgilet&) = delete;

 private:
  const char* readBody();

  std::string method_;
  std::string queryString_;
  std::string contentType_;
  std::string contentLength_;

 protected:
  Queries queries;

 private:
  std::string form_;
  std::vector<char> buffer_;
  int malformed_;  // 1: the request could not be read

 protected:
  bool malformed() const { return malformed_ != 0; }

  // Values may be no UTF-8: names of files are what they are.
  bool keepsBytes = false;

  // What a failure's reply says beside the code: "NAME: what is accepted". Empty: nothing.
  std::string refusal;
};

// The reply: a result code and lines of key and value.
class InfCgilet : public BaseCgilet {
 public:
  InfCgilet();
  ~InfCgilet() override;
  void onDump() override;
  virtual void onReply() = 0;  // ends in one infOK or infFail
  // Append one line; a control character in key or value goes out percent-encoded.
  virtual void pair(const std::string& key, const std::string& value);
  virtual void pair(const std::string& key, int value);
  // The rows of the parameters that the endpoint takes; none where it takes none.
  virtual std::span<const camera::ParamRow> parameters() const;

  // Each writes the whole response, header included, after whatever header lines the handler wrote itself to
  // standard output. infOK sends body; after a malformed request it is infFail(400). infFail sends the code,
  // one of 307, 400, 404, 409, 500, and the message where there is one, by default the refusal.
  void infOK();
  void infFail(int code);
  void infFail(int code, const std::string& message);

  template <class Value, class Field>
  static void isParamChanged(Value&& value, Field&& field, unsigned* changes) {
    CommonAPI::isParamChanged(std::forward<Value>(value), std::forward<Field>(field), changes);
  }

 protected:
  int status;        // 200, 307, 400, 404, 409 or 500; unset until onLoad sets it
  std::string body;  // the reply lines so far
};

namespace camera {

// Drives a handler through its one request; it has replied when this returns.
void serve(InfCgilet& cgilet);

// What the dispatcher's table calls to make a handler. The source file of an endpoint closes with the
// explicit instantiation for its class.
template <class Class>
InfCgilet* create() {
  return new Class;
}

}  // namespace camera
