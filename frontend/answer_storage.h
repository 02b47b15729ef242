// Where the JSON of an answer is built. Within a request of the service
// loop it is an arena that is emptied as the request ends: its values are
// neither freed one by one nor destroyed member by member. Elsewhere (the
// tools, the tests, worker threads) it is the heap. A value built in it
// must not be kept past the request.
#pragma once

#include <boost/json/storage_ptr.hpp>
#include <cstddef>

namespace odata::redfish {

boost::json::storage_ptr answer_storage();

// The most properties that Boost.JSON finds by a scan rather than a hash:
// an object built with room for more hashes every name it looks up.
inline constexpr std::size_t scanned_properties = 18;

// Called by the service loop on its own thread as each request begins and
// after its answer has gone out.
void open_answer_storage();
void close_answer_storage();

}  // namespace odata::redfish
