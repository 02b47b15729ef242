// The OEM firmware inventory's way of updating a component in steps: enter
// update mode (a Pending task holds it and the firmware-update lock),
// upload the image to the staging file, update (the task flashes it), or
// cancel (the task ends, the staged image goes).
#pragma once

#include "frontend/request_context.h"
#include "platform/libtask.h"
#include "update/staged_components.h"

namespace odata::redfish {

// The component of the OEM inventory member that the request's path names
// segments_from_end segments before its end; 404 when there is none.
const staged_component& inventory_component(const request_context& context,
                                            size_t segments_from_end);

// Each refuses a body with any parameter (400 ActionParameterUnknown).
void check_no_parameters(const request_context& context, const char* action);

// 400 OemFirmwareAlreadyInUpdateMode while an update runs or another
// component is in update mode. Answers the task that holds update mode.
TaskInfo enter_update_mode(const staged_component& component);

// The others need the component in update mode and its task Pending (400
// otherwise), and change nothing when they refuse.
void upload_staged_image(const request_context& context, const staged_component& component);
TaskInfo start_staged_update(const staged_component& component, const char* action_uri);
void cancel_update_mode(const staged_component& component);

}  // namespace odata::redfish
