#include "tasks/taskcollection.h"

#include "frontend/exception_http.h"
#include "platform/libtask.h"
#include "platform/libweb.h"
#include "tasks/task_uris.h"

namespace odata::redfish {

taskcollection::taskcollection(request_context& context)
    : redfish(context, "TaskCollection", "", "Task Collection", tasks_uri) {}

int taskcollection::get(request_context&) {
    int count = 0;
    if (TaskServiceGetTaskCount(&count) < 0) {
        console_log("[TaskCollection] can't get task_count\n");
        throw_http_error(500, "Base.1.10.InternalError");
    }
    set_common_properties();
    std::vector<std::string> members;
    for (int task_id = 1; task_id <= count; ++task_id) members.push_back(task_uri(task_id));
    set_members(members);
    return 0;
}

}  // namespace odata::redfish
