// What an exception that nobody catches does: end, without the library's own handler, whose name demangler is
// a twentieth of the whole program. Of other libraries than GNU's the handler stays.
#include <cstdlib>
#include <exception>

#ifdef __GLIBCXX__
namespace __cxxabiv1 {

// NOLINTNEXTLINE: the library's own name for its default, which is linked only where nobody defines it.
extern std::terminate_handler __terminate_handler;
std::terminate_handler __terminate_handler = std::abort;

}  // namespace __cxxabiv1
#endif
