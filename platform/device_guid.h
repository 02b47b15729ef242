// The BMC's device GUID (IPMI "Get Device GUID"), fixed for the life of the
// BMC.
#pragma once

extern "C" {

// Copies the GUID's 16 bytes, in the order they are written as text, into
// guid; 0 on success.
int GetDeviceGUID(unsigned char guid[16]);

}  // extern "C"
