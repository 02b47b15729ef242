// bmcsim vmedia: the images mounted on the BMC's virtual drives.
#include <ostream>
#include <string>

#include "platform/libvmedia.h"
#include "platform/sim/tool/areas.h"
#include "platform/sim/virtual_media.h"

namespace bmcsim {
namespace vmedia_commands {

int show(std::ostream& out) {
    for (int kind : {VMEDIA_CD, VMEDIA_FLOPPY}) {
        for (int drive = 1; drive <= PltVMEDIA_DriveCount(kind); ++drive) {
            St_VMediaState state;
            PltVMEDIA_GetState(kind, drive, &state);
            const std::string name =
                platform::virtual_media_kind_name(kind) + std::to_string(drive);
            out << name << '=' << (state.inserted ? state.image : "") << '\n';
            if (!state.inserted) continue;
            out << name << ".write_protected=" << (state.write_protected ? "on" : "off") << '\n'
                << name << ".user=" << state.user_name << '\n';
        }
    }
    return exit_ok;
}

// The drive named by KIND DRIVE ("CD 1"); false when there is none.
bool read_drive(const arguments& words, int& kind, int& drive) {
    long long number = 0;
    kind = platform::find_virtual_media_kind(words[1]);
    if (kind < 0 || !parse_number(words[2], 1, PltVMEDIA_DriveCount(kind), number)) return false;
    drive = static_cast<int>(number);
    return true;
}

int result(int code, std::ostream& err) {
    if (code == PLT_OK) return exit_ok;
    err << "bmcsim: " << (code == PLT_ERR_STATE ? "the drive is not in that state" : "failed")
        << '\n';
    return exit_failed;
}

int run_vmedia(const area& self, const arguments& words, std::ostream& out, std::ostream& err) {
    const std::string& command = words.front();
    if (command == "show" && words.size() == 1) return show(out);
    int kind = 0, drive = 0;
    if (command == "insert" && words.size() == 4 && read_drive(words, kind, drive))
        return result(PltVMEDIA_Insert(kind, drive, words[3].c_str(), 1, "", ""), err);
    if (command == "eject" && words.size() == 3 && read_drive(words, kind, drive))
        return result(PltVMEDIA_Eject(kind, drive), err);
    return usage(self, err);
}

}  // namespace vmedia_commands

const area vmedia_area = {"vmedia", "show | insert CD|Floppy DRIVE IMAGE | eject CD|Floppy DRIVE",
                          vmedia_commands::run_vmedia};

}  // namespace bmcsim
