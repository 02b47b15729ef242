// Boost.JSON compiled into the programs rather than loaded as a shared
// library: only the parts the service calls are linked, and each service
// process saves the library's own mapping and relocations.
#include <boost/json/src.hpp>
