#include <cstdarg>
#include <cstdio>

#include "platform/libweb.h"

// Standard error ends up in the web server's error log; flush so that a
// line is there even if the process dies right after.
extern "C" void console_log(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
    std::fflush(stderr);
}
