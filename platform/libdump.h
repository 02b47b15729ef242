// Dumps that the BMC collects for support (libweb.so): the host's crash
// dumps, the BMC's and the BIOS's evidence, the SMART data of the host's
// drives. Each kind keeps its newest dump, a compressed file; generating
// one runs in the process that works on the dump's task.
#pragma once

extern "C" {

enum {
    DUMP_HOST_CRASH = 0,
    DUMP_BMC_EVIDENCE = 1,
    DUMP_BIOS_EVIDENCE = 2,
    DUMP_DRIVE_SMART = 3,
    DUMP_CRASHDUMP_ON_DEMAND = 4,
    DUMP_CRASHDUMP_TELEMETRY = 5,
    DUMP_KIND_COUNT = 6,
};

enum { DUMP_FILE_NAME_MAX = 63, DUMP_REASON_MAX = 127 };

struct DumpInfo {
    int kind;
    long long size;     // bytes of the compressed file
    long long created;  // seconds since the epoch
    char file_name[DUMP_FILE_NAME_MAX + 1];
};

// The dump of kind: PLT_OK, PLT_ERR_NOT_FOUND when there is none.
int DumpGetInfo(int kind, DumpInfo* info);
// 1 while a task generates a dump of kind, else 0.
int DumpIsGenerating(int kind);
// Reserves the generation of kind for the task, until the task ends:
// PLT_OK, PLT_ERR_STATE while another task generates that kind, PLT_ERR_IO.
int DumpClaimGeneration(int kind, int task_id);
// Collects and compresses the dump of the claimed kind, reporting the
// task's percentage, and puts it in place of the kind's earlier dump. The
// store keeps at most DumpStoreLimit() bytes: older dumps of other kinds
// are removed, oldest first, to make room. On failure reason says why
// (size bytes with the NUL) and the store is as it was.
int DumpGenerate(int kind, int task_id, char* reason, int size);
// The dump of kind opened for reading (a descriptor the caller closes),
// with its info; negative when there is none.
int DumpOpen(int kind, DumpInfo* info);
// PLT_OK, PLT_ERR_NOT_FOUND when the kind has no dump, PLT_ERR_IO.
int DumpDelete(int kind);
// Removes every dump; PLT_OK or PLT_ERR_IO.
int DumpDeleteAll(void);
// The most bytes the dumps take together.
long long DumpStoreLimit(void);

// Sends raw PECI commands to the host's processors: each request is the
// client address, the write length, the read length and the write bytes.
// The answer's read-length bytes go to response (at most size): its length,
// PLT_ERR_ARGUMENT for a malformed request, PLT_ERR_STATE while the host is
// off, PLT_ERR_NOT_FOUND for an address without a processor.
int PeciSendRaw(const unsigned char* request, int length, unsigned char* response, int size);

}  // extern "C"
