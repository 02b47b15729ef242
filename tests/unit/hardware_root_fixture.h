// A fresh BMC root with the shared state attached, for the simulated host
// hardware; the chassis runs on the fixture's fake clock.
#pragma once

#include <sstream>
#include <string>

#include "platform/libipmi.h"
#include "platform/sim/chassis_state.h"
#include "sim_root_fixture.h"
#include "tool_runner.h"

namespace sim_testing {

class hardware_root : public sim_root, public tool_runner {
protected:
    void SetUp() override {
        was_attached_ = at_p_St_GlobalVar != nullptr;
        GlobalParaFin();
        sim_root::SetUp();
        platform::set_chassis_clock_for_tests(fake_clock);
        ASSERT_NE(GlobalParaInit(), 0);
    }

    void TearDown() override {
        GlobalParaFin();
        platform::set_chassis_clock_for_tests(nullptr);
        sim_root::TearDown();
        if (was_attached_) GlobalParaInit();
    }

private:
    bool was_attached_ = false;
};

}  // namespace sim_testing
