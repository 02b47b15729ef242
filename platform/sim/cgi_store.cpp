// The CGI variable store. The service loop points the process environment
// at the current FastCGI request's parameters, so variables are read with
// getenv.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <string_view>

#include "platform/libweb.h"

CgiVarsList CgiVarsListHead = {nullptr, &CgiVarsListHead};

namespace {

int hex_digit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

// '+' is a space and %XX a byte; a '%' without two hex digits stays as is.
std::string url_decode(std::string_view text) {
    std::string decoded;
    decoded.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '+') {
            decoded += ' ';
        } else if (text[i] == '%' && i + 2 < text.size() && hex_digit(text[i + 1]) >= 0 &&
                   hex_digit(text[i + 2]) >= 0) {
            decoded += static_cast<char>(hex_digit(text[i + 1]) * 16 + hex_digit(text[i + 2]));
            i += 2;
        } else {
            decoded += text[i];
        }
    }
    return decoded;
}

char* duplicate(const std::string& text) {
    auto* copy = static_cast<char*>(std::malloc(text.size() + 1));
    if (copy) std::memcpy(copy, text.c_str(), text.size() + 1);
    return copy;
}

void free_list() {
    CgiVar* var = CgiVarsListHead.first;
    while (var) {
        CgiVar* next = var->next;
        std::free(var->name);
        std::free(var->value);
        std::free(var);
        var = next;
    }
    CgiVarsListHead = {nullptr, &CgiVarsListHead};
}

// Appends through the tail link: the head itself while the list is empty,
// whose first word is the 'first' pointer.
bool append(std::string_view pair) {
    auto equals = pair.find('=');
    std::string name = url_decode(pair.substr(0, equals));
    std::string value =
        equals == std::string_view::npos ? std::string() : url_decode(pair.substr(equals + 1));
    auto* var = static_cast<CgiVar*>(std::calloc(1, sizeof(CgiVar)));
    if (!var) return false;
    var->name = duplicate(name);
    var->value = duplicate(value);
    *static_cast<CgiVar**>(CgiVarsListHead.last) = var;
    CgiVarsListHead.last = &var->next;
    return var->name && var->value;
}

}  // namespace

extern "C" int get_cgi_env(const char* name, char* value, int max_length) {
    const char* found = name ? std::getenv(name) : nullptr;
    std::size_t length = found ? std::strlen(found) : 0;
    if (value && max_length >= 0) {
        std::size_t copied = std::min(length, static_cast<std::size_t>(max_length));
        if (found) std::memcpy(value, found, copied);
        value[found ? copied : 0] = '\0';
    }
    if (!found) return -1;
    return length > static_cast<std::size_t>(std::numeric_limits<int>::max())
               ? std::numeric_limits<int>::max()
               : static_cast<int>(length);
}

// Only plain decimal digits count; anything else means no body.
extern "C" int get_cgi_content_length(int max_length) {
    const char* text = std::getenv("CONTENT_LENGTH");
    if (!text || !*text) return 0;
    long long length = 0;
    for (const char* c = text; *c; ++c) {
        if (*c < '0' || *c > '9') return 0;
        if (length <= max_length) length = length * 10 + (*c - '0');
    }
    return length > max_length ? max_length : static_cast<int>(length);
}

extern "C" int cgiInitialize(void) {
    free_list();
    const char* query = std::getenv("QUERY_STRING");
    std::string_view rest = query ? query : "";
    while (!rest.empty()) {
        auto ampersand = rest.find('&');
        std::string_view pair = rest.substr(0, ampersand);
        rest =
            ampersand == std::string_view::npos ? std::string_view() : rest.substr(ampersand + 1);
        if (!pair.empty() && !append(pair)) {
            free_list();
            return -1;
        }
    }
    return 0;
}

extern "C" void FreeCGIResoure(void) { free_list(); }

extern "C" void free_cgi_vars(void) { free_list(); }
