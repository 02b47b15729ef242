// PECI as the simulated host's processors answer it: Ping, GetDIB, GetTemp
// and RdPkgConfig; other commands answer the completion code "unknown
// command".
#include <cstring>

#include "platform/libdump.h"
#include "platform/libipmi_chassis.h"
#include "platform/plt_result.h"

namespace {

constexpr int first_address = 0x30;
constexpr int processors = 2;  // as many as the crash dumps read
constexpr int header_bytes = 3;
constexpr unsigned char get_dib = 0xf7;
constexpr unsigned char get_temp = 0x01;
constexpr unsigned char rd_pkg_config = 0xa1;
constexpr unsigned char completion_passed = 0x40;
constexpr unsigned char completion_unknown = 0x90;

void answer(int cpu, const unsigned char* write, int write_length, unsigned char* read,
            int read_length) {
    std::memset(read, 0, static_cast<size_t>(read_length));
    const unsigned char command = write_length > 0 ? write[0] : 0;
    if (command == get_dib) {
        // Revision 4 of the device info, one domain.
        const unsigned char dib[] = {0x40, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00};
        std::memcpy(read, dib, static_cast<size_t>(read_length < 8 ? read_length : 8));
    } else if (command == get_temp) {
        // Degrees below the throttling point, in 1/64 units, two's complement.
        const int below = -(30 + 5 * cpu) * 64;
        read[0] = static_cast<unsigned char>(below & 0xff);
        if (read_length > 1) read[1] = static_cast<unsigned char>((below >> 8) & 0xff);
    } else if (command == rd_pkg_config) {
        read[0] = completion_passed;
        const unsigned char index = write_length > 2 ? write[2] : 0;
        for (int at = 1; at < read_length; ++at)
            read[at] = static_cast<unsigned char>(index + at + cpu);
    } else {
        read[0] = completion_unknown;
    }
}

}  // namespace

extern "C" int PeciSendRaw(const unsigned char* request, int length, unsigned char* response,
                           int size) {
    if (!request || length < header_bytes || length != header_bytes + request[1] ||
        request[2] > size || (request[2] > 0 && !response))
        return PLT_ERR_ARGUMENT;
    const int cpu = request[0] - first_address;
    if (PltCHASSIS_PowerStatus() == 0) return PLT_ERR_STATE;
    if (cpu < 0 || cpu >= processors) return PLT_ERR_NOT_FOUND;
    // A Ping writes and reads nothing.
    if (request[2] > 0) answer(cpu, request + header_bytes, request[1], response, request[2]);
    return request[2];
}
