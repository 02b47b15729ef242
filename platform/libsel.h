// Reading and clearing the BMC event log (the BMC's libipmi.so); records
// are added with LibSaveSysEvtLog (libipmi.h).
#pragma once

#include <cstdint>

extern "C" {

struct St_SelRecord {
    int64_t time;  // seconds since the epoch
    int code;
    int argument;
    const char* text;  // valid during the visit only
};

// Calls visit for each record, oldest first, until it returns non-zero;
// returns the number of records visited (a missing log has none), or -1
// without visit. Visits hold the log's shared lock: visit must not log.
int LibVisitSysEvtLog(int (*visit)(const St_SelRecord* record, void* context), void* context);

// Empties the log; 0 on success.
int LibClearSysEvtLog(void);

// The log's alert state: the worst of the records of a sensor's health
// turning Warning or Critical that nobody has acknowledged yet.
enum { SEL_ALERTS_NONE = 0, SEL_ALERTS_WARNING = 1, SEL_ALERTS_CRITICAL = 2 };
int LibGetSysEvtLogAlertState(void);
// Acknowledges every alert record in the log now; 0 on success.
int LibAckSysEvtLogAlerts(void);

}  // extern "C"
