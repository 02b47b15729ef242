// index.fcgi: the BMC's Redfish service, started by the web server.
#include "frontend/service_loop.h"
#include "service/pipeline.h"

int main() { return odata::redfish::run_service(odata::redfish::run_pipeline); }
