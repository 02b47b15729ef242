#include "frontend/service_loop.h"

#include <fcgiapp.h>

#include <cstring>
#include <iostream>

#include "base/request_epoch.h"
#include "frontend/answer_storage.h"
#include "frontend/fcgx_streambuf.h"
#include "frontend/process_memory.h"
#include "frontend/request_context.h"
#include "frontend/request_parameters.h"
#include "frontend/response_stream.h"
#include "platform/libipmi.h"
#include "platform/libweb.h"

extern char** environ;

namespace odata::redfish {
namespace {

// Reused for every request.
FCGX_Request request;

// Binds the standard output and the process environment to one request;
// returns the size of the answer.
std::streamsize serve(FCGX_Request& current, request_server serve_request) {
    fcgx_streambuf output(current.out);
    fcgx_streambuf input(current.in);
    counting_streambuf counted(&output);
    // rdbuf() also clears the error state that a client gone away may have
    // left from the last request.
    std::streambuf* saved_output = std::cout.rdbuf(&counted);
    char** saved_environment = environ;
    environ = current.envp;
    keep_request_parameters(true);
    // Made once: a stream's construction looks up its locale's facets.
    static std::istream body(nullptr);
    body.rdbuf(&input);

    open_answer_storage();
    serve_request(body);
    close_answer_storage();
    body.rdbuf(nullptr);

    std::cout.flush();
    std::cout.rdbuf(saved_output);
    environ = saved_environment;
    keep_request_parameters(false);
    FCGX_Finish_r(&current);
    return counted.written();
}

}  // namespace

int run_service(request_server serve_request) {
    if (GlobalParaInit() == 0) return 0;
    int result = FCGX_Init();
    if (result != 0) {
        console_log("FCGX_Init failed: %d", result);
        return 1;
    }
    limit_heap();
    std::memset(&request, 0, sizeof request);
    result = FCGX_InitRequest(&request, 0, 0);
    if (result != 0) {
        console_log("FCGX_InitRequest failed: %d", result);
        return 2;
    }
    at_p_St_GlobalVar->fcgi_mode = 1;
    for (;;) {
        result = FCGX_Accept_r(&request);
        if (result < 0) {
            console_log("FCGX_Accept_r failed: %s\n", std::strerror(-result));
            GlobalParaFin();
            return 0;
        }
        // First: the check of the shared block must see what changed since.
        platform::start_request_epoch();
        // The flag is this process's own: a re-initialised block lost it.
        if (GlobalParaCheck() != 0) at_p_St_GlobalVar->fcgi_mode = 1;
        return_free_memory(serve(request, serve_request));
        if (stop_requested()) {
            GlobalParaFin();
            return 0;
        }
    }
}

}  // namespace odata::redfish
