// Makes an uncaught exception abort at once. The handler of GNU's library prints the exception, and needs a
// name demangler that is a twentieth of the program. Other libraries keep their handler.
#include <cstdlib>
#include <exception>

#ifdef __GLIBCXX__
namespace __cxxabiv1 {

// NOLINTNEXTLINE: the library's name for its handler; defining it here keeps the library's out of the link.
extern std::terminate_handler __terminate_handler;
std::terminate_handler __terminate_handler = std::abort;

}  // namespace __cxxabiv1
#endif
