#include "framework/servicedocument.h"

#include <boost/json.hpp>

#include "framework/top_level_services.h"

namespace odata::redfish {

const std::string& service_document_text() {
    static const std::string text = [] {
        boost::json::array entries;
        for (const auto& service : top_level_services()) {
            // Redfish models every top-level service, collections too, as a
            // singleton of the service container.
            entries.push_back(boost::json::object{
                {"name", service.name}, {"kind", "Singleton"}, {"url", service.url}});
        }
        boost::json::object document;
        document["@odata.context"] = "/redfish/v1/$metadata";
        document["value"] = std::move(entries);
        return boost::json::serialize(document);
    }();
    return text;
}

int servicedocument::get(request_context&) {
    set_lasting_text(service_document_text());
    return 0;
}

}  // namespace odata::redfish
