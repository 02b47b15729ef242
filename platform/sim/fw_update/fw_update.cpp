// fw_update -d DEVICE -f IMAGE -p 1: flashes a simulated image. Checks the
// image's header and digest, takes the time a flash takes, and records the
// image's version as the device's running version.
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

#include "platform/sim/firmware_image.h"
#include "platform/sim/firmware_state.h"

namespace {

constexpr auto flash_time = std::chrono::milliseconds(1500);

int usage() {
    std::fprintf(stderr, "usage: fw_update -d DEVICE -f IMAGE -p 1\n");
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    int device = 0;
    std::string image;
    for (int option; (option = getopt(argc, argv, "d:f:p:")) != -1;) {
        if (option == 'd')
            device = std::atoi(optarg);
        else if (option == 'f')
            image = optarg;
        else if (option != 'p')
            return usage();
    }
    const char* component = platform::sim::firmware_component(device);
    if (!component || image.empty() || optind != argc) return usage();
    platform::sim::firmware_image_header header;
    std::string reason;
    if (!platform::sim::check_firmware_image(image, component, header, reason)) {
        std::fprintf(stderr, "fw_update: %s\n", reason.c_str());
        return 1;
    }
    std::this_thread::sleep_for(flash_time);
    if (!platform::sim::store_firmware_version(device, header.version)) {
        std::fprintf(stderr, "fw_update: cannot record the new version\n");
        return 1;
    }
    std::printf("fw_update: %s updated to %s\n", component, header.version.c_str());
    return 0;
}
