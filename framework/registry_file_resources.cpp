#include "framework/registry_file_resources.h"

#include "framework/registry_files.h"
#include "frontend/exception_http.h"

namespace odata::redfish {
namespace {

constexpr const char* registries_uri = "/redfish/v1/Registries";

}  // namespace

messageregistryfilecollection::messageregistryfilecollection(request_context& context)
    : redfish(context, "MessageRegistryFileCollection", "", "Message Registry File Collection",
              registries_uri) {}

int messageregistryfilecollection::get(request_context&) {
    set_common_properties();
    set("Description", "Registry Repository");
    std::vector<std::string> members;
    for (const auto& registry : registry_files())
        members.push_back(registries_uri + ("/" + std::string(registry.id)));
    set_members(members);
    return 0;
}

messageregisteryfile::messageregisteryfile(request_context& context)
    : published_file(context, "MessageRegistryFile", registries_uri) {}

int messageregisteryfile::get(request_context&) {
    // The route's pattern leaves "." unescaped; only the table's Ids exist.
    const registry_file* registry = find_registry_file(id());
    if (!registry)
        throw_http_error(404, "Base.1.10.ResourceNotFound", {"MessageRegistryFile", id()});
    name_ = registry->name;
    set_common_properties();
    set_file_properties(registry->description, "Registry", registry_of(registry->id),
                        registry_location(registry->id));
    return 0;
}

}  // namespace odata::redfish
