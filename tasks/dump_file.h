// Answers a dump as a file to save.
#pragma once

namespace odata::redfish {

// "200 OK" with the dump of the platform's kind as an attachment
// (application/octet-stream, Content-Disposition with its file name); 404
// ResourceNotFound naming resource_type and id while there is none.
void answer_dump_file(int kind, const char* resource_type, const char* id);

}  // namespace odata::redfish
