#include "platform/sim/virtual_media.h"

#include <algorithm>
#include <cstring>

#include "base/bmc_root.h"
#include "platform/libvmedia.h"
#include "platform/sim/sim_file.h"
#include "platform/sim/state_ini.h"

namespace pt = boost::property_tree;

namespace {

constexpr const char* kind_names[] = {"CD", "Floppy"};
constexpr int drives_per_kind = 1;
// The drives' user names are the image servers' accounts: owner only.
constexpr mode_t state_mode = 0600;

bool is_drive(int kind, int drive) {
    return platform::virtual_media_kind_name(kind) && drive >= 1 && drive <= drives_per_kind;
}

std::string section(int kind, int drive) { return kind_names[kind] + std::to_string(drive); }

// Stored texts stay on one INI line and keep their blanks.
bool is_storable(const char* text, std::size_t size, bool required) {
    if (!text) return !required;
    const std::size_t length = std::strlen(text);
    if ((required && length == 0) || length >= size) return false;
    if (length > 0 && (text[0] == ' ' || text[length - 1] == ' ')) return false;
    return std::none_of(text, text + length,
                        [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; });
}

}  // namespace

namespace platform {

const std::string& virtual_media_file() {
    static fixed_bmc_path path("/tmp/vmedia.ini");
    return path.get();
}

const char* virtual_media_kind_name(int kind) {
    return kind == VMEDIA_CD || kind == VMEDIA_FLOPPY ? kind_names[kind] : nullptr;
}

int find_virtual_media_kind(const std::string& name) {
    for (int kind : {VMEDIA_CD, VMEDIA_FLOPPY})
        if (name == kind_names[kind]) return kind;
    return -1;
}

}  // namespace platform

extern "C" int PltVMEDIA_DriveCount(int kind) {
    return platform::virtual_media_kind_name(kind) ? drives_per_kind : 0;
}

extern "C" int PltVMEDIA_GetState(int kind, int drive, St_VMediaState* state) {
    if (!state) return PLT_ERR_ARGUMENT;
    if (!is_drive(kind, drive)) return PLT_ERR_NOT_FOUND;
    const std::shared_ptr<const pt::ptree> stored =
        platform::sim::stored_state_ini(platform::virtual_media_file());
    const std::string name = section(kind, drive);
    *state = {};
    state->inserted = stored->get(name + ".Inserted", 0) != 0;
    state->write_protected = stored->get(name + ".WriteProtected", 1) != 0;
    if (!state->inserted) return PLT_OK;
    platform::sim::copy_text(state->image, stored->get(name + ".Image", std::string()));
    platform::sim::copy_text(state->user_name, stored->get(name + ".UserName", std::string()));
    return PLT_OK;
}

extern "C" int PltVMEDIA_Insert(int kind, int drive, const char* image, uint8_t write_protected,
                                const char* user_name, const char* password) {
    if (!is_drive(kind, drive)) return PLT_ERR_NOT_FOUND;
    if (!is_storable(image, VMEDIA_IMAGE_SIZE, true) ||
        !is_storable(user_name, VMEDIA_USER_SIZE, false) ||
        !is_storable(password, VMEDIA_PASSWORD_SIZE, false))
        return PLT_ERR_ARGUMENT;
    const std::string name = section(kind, drive);
    int result = PLT_OK;
    const bool written = platform::sim::update_state_ini(
        platform::virtual_media_file(),
        [&](pt::ptree& stored) {
            if (stored.get(name + ".Inserted", 0) != 0) {
                result = PLT_ERR_STATE;
                return false;
            }
            stored.put(name + ".Inserted", 1);
            stored.put(name + ".WriteProtected", write_protected ? 1 : 0);
            stored.put(name + ".Image", std::string(image));
            stored.put(name + ".UserName", std::string(user_name ? user_name : ""));
            return true;
        },
        state_mode);
    return written ? result : PLT_ERR_IO;
}

extern "C" int PltVMEDIA_Eject(int kind, int drive) {
    if (!is_drive(kind, drive)) return PLT_ERR_NOT_FOUND;
    const std::string name = section(kind, drive);
    int result = PLT_OK;
    const bool written = platform::sim::update_state_ini(
        platform::virtual_media_file(),
        [&](pt::ptree& stored) {
            if (stored.get(name + ".Inserted", 0) == 0) {
                result = PLT_ERR_STATE;
                return false;
            }
            stored.erase(name);
            return true;
        },
        state_mode);
    return written ? result : PLT_ERR_IO;
}
