// CGI variable store and diagnostics (the BMC's libweb.so).
#pragma once

extern "C" {

struct CgiVar {
    CgiVar* next;
    char* name;
    char* value;
};

// First word: first element (null when empty); second word: the address of
// the last element's link, or the head's own address when empty.
struct CgiVarsList {
    CgiVar* first;
    void* last;
};

extern CgiVarsList CgiVarsListHead;

// Copies at most max_length characters of the variable's value and a NUL
// into value (max_length + 1 bytes); returns the value's full length, or -1
// when the variable is not set.
int get_cgi_env(const char* name, char* value, int max_length);

// Bytes of request body to read: CONTENT_LENGTH, at most max_length;
// zero or less means no body.
int get_cgi_content_length(int max_length);

// Parse QUERY_STRING into CgiVarsListHead.
int cgiInitialize(void);
// Release the variable list of cgiInitialize.
void FreeCGIResoure(void);
// Release the variable list of a request with a body.
void free_cgi_vars(void);

// printf-style diagnostics line to standard error (the web server's log).
void console_log(const char* format, ...) __attribute__((format(printf, 1, 2)));

}  // extern "C"
