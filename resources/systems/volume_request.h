// The parameters of a volume's creation (TwrStorage.CreateVolume,
// TwrStorage.CreateVD): "RAIDType" (DMTF's Volume RAIDType), "Drives"
// (links to drives of one controller of the storage member, each healthy
// and in no volume, as many as the level takes) and an optional "Name".
#pragma once

#include <boost/json.hpp>
#include <cstdint>
#include <string>
#include <vector>

#include "resources/systems/raid_paths.h"

namespace odata::redfish {

struct volume_request {
    int controller = 0;
    int level = 0;
    std::vector<uint8_t> bays;
    std::string name;
};

// Reads and checks the whole body against the controllers' present state;
// throws 400 with every refusal.
volume_request read_volume_request(const boost::json::value& body, const raid_family& family,
                                   const std::string& action);

}  // namespace odata::redfish
