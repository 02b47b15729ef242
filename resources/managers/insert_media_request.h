// The parameters of VirtualMedia.InsertMedia, read in one pass that
// collects messages.
#pragma once

#include <boost/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "frontend/message.h"

namespace odata::redfish {

struct insert_media_request {
    std::string image;
    bool write_protected = true;
    std::string user_name;
    std::string password;
};

// The TransferProtocolType values the BMC can mount, in the order listed.
const std::vector<std::string_view>& transfer_protocol_types();

// The TransferProtocolType of an image URI ("HTTPS" for "https://h/a.iso");
// empty when it is not an absolute URI with a host and a path that the BMC
// can mount.
std::string_view image_transfer_protocol(std::string_view image);

// The request; its fields are meaningful only when result stays empty.
insert_media_request read_insert_media(const boost::json::object& parameters,
                                       result_record& result);

}  // namespace odata::redfish
