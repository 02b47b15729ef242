// The simulated BMC's virtual media drives, one CD and one floppy drive,
// with their mounts in <root>/tmp/vmedia.ini (volatile, like the mounts):
//
//   [CD1], [Floppy1]  Inserted=0|1, WriteProtected=0|1, Image, UserName
#pragma once

#include <string>

namespace platform {

const std::string& virtual_media_file();

// "CD" or "Floppy" for a VMEDIA_* kind; null for others.
const char* virtual_media_kind_name(int kind);

// The VMEDIA_* kind of a name (as above), or -1.
int find_virtual_media_kind(const std::string& name);

}  // namespace platform
