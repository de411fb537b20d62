// Ends the process at once where the C and C++ libraries would first print a message or throw. Nobody would
// read it, and what writes it is large: message translation, exceptions, the name demangler.
//
// CMakeLists.txt leaves this file out if it does not suit the libraries; the program is then larger than its
// budget in bench/.
#include <cstdlib>
#include <exception>

// The names are those of the libraries' own functions.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl50-cpp,cert-dcl58-cpp)

#ifdef __GLIBC__
extern "C" {

[[noreturn, gnu::used]] void __assert_fail(const char*, const char*, unsigned, const char*) noexcept {
  std::abort();
}

[[gnu::used]] char* __dcgettext(const char* /*domain*/, const char* message, int /*category*/) noexcept {
  return const_cast<char*>(message);
}
}
#endif

#ifdef __GLIBCXX__
namespace std {

void __throw_bad_alloc() {
  abort();
}
void __throw_bad_array_new_length() {
  abort();
}
void __throw_length_error(const char*) {
  abort();
}
void __throw_logic_error(const char*) {
  abort();
}
void __throw_out_of_range(const char*) {
  abort();
}
void __throw_out_of_range_fmt(const char*, ...) {
  abort();
}

}  // namespace std
#endif

#ifdef _LIBCPP_VERSION
extern "C" {

[[gnu::used]] char* __cxa_demangle(const char*, char*, std::size_t*, int*) {
  return nullptr;
}

[[noreturn, gnu::used]] void abort_message(const char* /*format*/, ...) {
  std::abort();
}
}

_LIBCPP_BEGIN_NAMESPACE_STD
[[gnu::used]] void __libcpp_verbose_abort(const char* /*format*/, ...) {
  std::abort();
}
_LIBCPP_END_NAMESPACE_STD
#endif

// NOLINTEND(bugprone-reserved-identifier,cert-dcl50-cpp,cert-dcl58-cpp)
