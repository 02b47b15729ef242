// bmcsim state: the shared BMC state record (St_GlobalVar) and the channel
// record of the last request (St_InterfaceInfo).
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <ostream>
#include <sstream>

#include "platform/libipmi.h"
#include "platform/sim/shared_state.h"
#include "platform/sim/tool/areas.h"

namespace bmcsim {
namespace state_commands {

enum class record { global, interface };
enum class kind { number, hex, text };

struct field {
    const char* name;
    record in;
    std::size_t offset;
    std::size_t size;
    kind type;
    bool writable;
};

#define GLOBAL(member, size, type, writable) \
    { #member, record::global, offsetof(St_GlobalVar, member), size, type, writable }
#define INTERFACE(member, type)                                                      \
    {                                                                                \
        "interface." #member, record::interface, offsetof(St_InterfaceInfo, member), \
            sizeof(St_InterfaceInfo::member), type, false                            \
    }

const field fields[] = {
    GLOBAL(layout_magic, 4, kind::hex, false),
    GLOBAL(layout_size, 4, kind::number, false),
    GLOBAL(fcgi_mode, 1, kind::number, true),
    {"boot_flags.0", record::global, offsetof(St_GlobalVar, boot_flags), 1, kind::number, true},
    {"boot_flags.1", record::global, offsetof(St_GlobalVar, boot_flags) + 1, 1, kind::number, true},
    GLOBAL(identify_state, 1, kind::number, true),
    GLOBAL(identify_blink, 1, kind::number, true),
    GLOBAL(identify_lit, 1, kind::number, true),
    GLOBAL(node_manager_present, 1, kind::number, true),
    GLOBAL(power_cycle_byte, 1, kind::number, true),
    GLOBAL(fw_update_flags, 4, kind::number, true),
    GLOBAL(node_serial_number, 32, kind::text, true),
    GLOBAL(node_part_number, 32, kind::text, true),
    GLOBAL(sensor_count, 2, kind::number, true),
    INTERFACE(kind, kind::number),
    INTERFACE(privilege, kind::number),
    INTERFACE(client_ip, kind::text),
    INTERFACE(user_name, kind::text),
};

#undef GLOBAL
#undef INTERFACE

const field* find_field(const std::string& name) {
    for (const field& each : fields)
        if (name == each.name) return &each;
    return nullptr;
}

char* address(const field& f) {
    char* base = f.in == record::global ? reinterpret_cast<char*>(at_p_St_GlobalVar)
                                        : reinterpret_cast<char*>(InterfaceInfo);
    return base + f.offset;
}

unsigned long long read_number(const field& f) {
    uint8_t byte;
    uint16_t half;
    uint32_t word;
    switch (f.size) {
        case 1:
            std::memcpy(&byte, address(f), 1);
            return byte;
        case 2:
            std::memcpy(&half, address(f), 2);
            return half;
        default:
            std::memcpy(&word, address(f), 4);
            return word;
    }
}

void write_number(const field& f, unsigned long long value) {
    auto byte = static_cast<uint8_t>(value);
    auto half = static_cast<uint16_t>(value);
    auto word = static_cast<uint32_t>(value);
    switch (f.size) {
        case 1:
            std::memcpy(address(f), &byte, 1);
            break;
        case 2:
            std::memcpy(address(f), &half, 2);
            break;
        default:
            std::memcpy(address(f), &word, 4);
            break;
    }
}

std::string value_text(const field& f) {
    if (f.type == kind::text) return std::string(address(f), strnlen(address(f), f.size));
    if (f.type == kind::hex) {
        std::ostringstream text;
        text << "0x" << std::hex << read_number(f);
        return text.str();
    }
    return std::to_string(read_number(f));
}

// Numbers must fit the field; texts keep room for their NUL.
bool assign(const field& f, const std::string& value) {
    if (f.type == kind::text) {
        if (value.size() >= f.size || value.find('\0') != std::string::npos) return false;
        std::memset(address(f), 0, f.size);
        std::memcpy(address(f), value.data(), value.size());
        return true;
    }
    long long number = 0;
    long long max = static_cast<long long>((1ULL << (8 * f.size)) - 1);
    if (!parse_number(value, 0, max, number)) return false;
    write_number(f, static_cast<unsigned long long>(number));
    return true;
}

bool attach(std::ostream& err) {
    if (GlobalParaInit()) return true;
    err << "bmcsim: cannot attach " << platform::shared_state_file() << '\n';
    return false;
}

int show(std::ostream& out) {
    for (const field& each : fields) out << each.name << '=' << value_text(each) << '\n';
    return exit_ok;
}

int get(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const field* f = words.size() == 2 ? find_field(words[1]) : nullptr;
    if (!f) return usage(self, err);
    out << value_text(*f) << '\n';
    return exit_ok;
}

int set(const area& self, const arguments& words, std::ostream& err) {
    if (words.size() != 3) return usage(self, err);
    const field* f = find_field(words[1]);
    if (!f || !f->writable) {
        err << "bmcsim: " << words[1] << " is not a field that can be set\n";
        return usage(self, err);
    }
    if (!assign(*f, words[2])) {
        err << "bmcsim: " << words[1] << " cannot hold '" << words[2] << "'\n";
        return usage(self, err);
    }
    return exit_ok;
}

int run_state(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    bool known = command == "show" || command == "get" || command == "set" || command == "reset";
    if (!known) return usage(self, err);
    if (!attach(err)) return exit_failed;
    if (command == "show" && words.size() == 1) return show(out);
    if (command == "get") return get(self, words, out, err);
    if (command == "set") return set(self, words, err);
    if (command == "reset" && words.size() == 1)
        return platform::reset_shared_state() ? exit_ok : exit_failed;
    return usage(self, err);
}

}  // namespace state_commands

const area state_area = {"state", "show | get FIELD | set FIELD VALUE | reset",
                         state_commands::run_state};

}  // namespace bmcsim
