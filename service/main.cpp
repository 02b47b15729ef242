// index.fcgi: the BMC's Redfish service, started by the web server.
#include "frontend/service_loop.h"

int main() { return odata::redfish::run_service(); }
