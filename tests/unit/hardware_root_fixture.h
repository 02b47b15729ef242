// A fresh BMC root with the shared state attached, for the simulated host
// hardware; the chassis runs on the fixture's fake clock.
#pragma once

#include <sstream>
#include <string>

#include "platform/libipmi.h"
#include "platform/sim/chassis_state.h"
#include "platform/sim/tool/areas.h"
#include "sim_root_fixture.h"

namespace sim_testing {

class hardware_root : public sim_root {
protected:
    void SetUp() override
    {
        was_attached_ = at_p_St_GlobalVar != nullptr;
        GlobalParaFin();
        sim_root::SetUp();
        platform::set_chassis_clock_for_tests(fake_clock);
        ASSERT_NE(GlobalParaInit(), 0);
    }

    void TearDown() override
    {
        GlobalParaFin();
        platform::set_chassis_clock_for_tests(nullptr);
        sim_root::TearDown();
        if (was_attached_)
            GlobalParaInit();
    }

    // Runs a bmcsim command; its output is in out_ and err_.
    int tool(const bmcsim::arguments& words)
    {
        out_.str("");
        err_.str("");
        return bmcsim::run(words, out_, err_);
    }

    std::ostringstream out_;
    std::ostringstream err_;

private:
    bool was_attached_ = false;
};

}  // namespace sim_testing
