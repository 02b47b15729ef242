#include <cstdlib>
#include <cstring>

#include "platform/libipmi.h"

// The web server passes the client's address as REMOTE_ADDR. An address
// that does not fit is not truncated: a cut address would name another host.
extern "C" int GetClientIP(char* buffer, int length) {
    if (!buffer || length <= 0) return -1;
    buffer[0] = '\0';
    const char* address = std::getenv("REMOTE_ADDR");
    if (!address) return -1;
    std::size_t size = std::strlen(address);
    if (size >= static_cast<std::size_t>(length)) return -1;
    std::memcpy(buffer, address, size + 1);
    return 0;
}
