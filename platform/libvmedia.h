// The BMC's virtual media: remote images that it presents to the host as
// a CD drive or a floppy drive (the BMC's libweb.so). Return codes are
// those of plt_result.h. Mounts are volatile: a BMC reset ejects them.
#pragma once

#include <cstdint>

#include "platform/plt_result.h"

extern "C" {

enum { VMEDIA_CD = 0, VMEDIA_FLOPPY = 1 };
// Sizes with the terminating NUL.
enum { VMEDIA_IMAGE_SIZE = 256, VMEDIA_USER_SIZE = 64, VMEDIA_PASSWORD_SIZE = 128 };

struct St_VMediaState {
    uint8_t inserted;
    uint8_t write_protected;
    char image[VMEDIA_IMAGE_SIZE];  // the image's URI; empty when ejected
    char user_name[VMEDIA_USER_SIZE];
};

// Drives of a kind, numbered from 1; 0 for an unknown kind.
int PltVMEDIA_DriveCount(int kind);

// PLT_ERR_NOT_FOUND for a drive that does not exist.
int PltVMEDIA_GetState(int kind, int drive, St_VMediaState* state);

// Mounts image (with the credential to fetch it; the password is used for
// the mount and never stored). PLT_ERR_STATE when the drive holds an image,
// PLT_ERR_ARGUMENT for an empty or too long image, user name or password,
// or one with control characters.
int PltVMEDIA_Insert(int kind, int drive, const char* image, uint8_t write_protected,
                     const char* user_name, const char* password);

// PLT_ERR_STATE when the drive is empty.
int PltVMEDIA_Eject(int kind, int drive);

}  // extern "C"
