// Runs bmcsim commands in the test process and keeps what they printed.
#pragma once

#include <sstream>

#include "platform/sim/tool/areas.h"

class tool_runner {
protected:
    int run(const bmcsim::arguments& words) {
        out_.str("");
        err_.str("");
        return bmcsim::run(words, out_, err_);
    }
    std::ostringstream out_;
    std::ostringstream err_;
};
