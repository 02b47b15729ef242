// The multipart form that brings a firmware image: the request's checks
// and the image's way to its staging file.
#pragma once

#include <functional>

#include "frontend/request_context.h"
#include "update/multipart_reader.h"
#include "update/staged_components.h"

namespace odata::redfish {

// Logs console_line and throws status with an OemHttppushuriErrorMessage
// of text.
[[noreturn]] void throw_push_error(const char* console_line, const char* text, int status = 400);

// Checks the request's content type, length and boundary (each refusal
// with its console line) and reads its form.
multipart_reader open_push_form(const request_context& context);

inline constexpr const char* parse_failure_line =
    "[ERROR] HttpPushUri Multipart is parsing failed.\n";
inline constexpr const char* parse_failure_text = "Please check the parsing name.";

// Moves to the next part: true when there is one and it has this name.
bool next_part_is(multipart_reader& reader, const char* name);

// Streams the content of the current part into the component's staging
// file; before_commit runs once it is whole, and the image is put in place
// after it. False (the staged image as it was) when the part is empty or
// cannot be read or written.
bool receive_image(multipart_reader& reader, const staged_component& component,
                   const std::function<void()>& before_commit);

// Records the staged image's version ("Unknown" when it carries none for
// the component) under its staging inventory entry.
void record_staged_version(const staged_component& component);

}  // namespace odata::redfish
