// bmcsim [--root DIR] <area> <command> [args]: shows and changes the state
// of the simulated BMC under DIR (default: BMC_ROOT, else "/").
#include <cstdlib>
#include <iostream>

#include "base/atomic_file.h"
#include "platform/sim/tool/areas.h"

int main(int argc, char** argv) {
    bmcsim::arguments words(argv + 1, argv + argc);
    if (!words.empty() && words.front() == "--root") {
        if (words.size() < 2) return bmcsim::usage(std::cerr);
        // The root is read once, on first use, which comes after this.
        setenv("BMC_ROOT", words[1].c_str(), 1);
        words.erase(words.begin(), words.begin() + 2);
    }
    // Before anything reads them: sets of files a killed writer left half-renamed.
    platform::finish_interrupted_commits();
    return bmcsim::run(words, std::cout, std::cerr);
}
