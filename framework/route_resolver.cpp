#include "framework/route_resolver.h"

#include <stdexcept>

#include "platform/libipmi.h"

namespace odata::redfish {

namespace {

// The numeric member shorthand of route paths.
constexpr std::string_view number_shorthand = "{n}";

// The non-empty segments of path, so that "//" and a trailing "/" add none.
route_resolver::path_segments split_segments(std::string_view path) {
    route_resolver::path_segments segments;
    size_t start = 0;
    while (start <= path.size()) {
        size_t end = path.find('/', start);
        if (end == std::string_view::npos) end = path.size();
        if (end > start) segments.push_back(path.substr(start, end - start));
        start = end + 1;
    }
    return segments;
}

}  // namespace

route_resolver::route_resolver(boost::span<const route> routes) {
    for (const route& entry : routes) {
        node* at = &root_;
        for (std::string_view segment : split_segments(entry.path)) {
            if (segment == number_shorthand) segment = number_expression;
            node* next = nullptr;
            for (node& child : at->children) {
                if (child.segment.text() == segment) {
                    next = &child;
                    break;
                }
            }
            if (!next) next = &at->children.emplace_back(segment);
            at = next;
        }
        if (!at->row) at->row = &entry;
    }
}

const route* route_resolver::walk(const node& from, const path_segments& segments, size_t index,
                                  std::vector<std::string>& captures,
                                  unserved_match& unserved) const {
    if (index == segments.size()) {
        const route* row = from.row;
        if (!row || (row->has(route_crashdump) && is_ACD_crashdump_supported() == 0))
            return nullptr;
        if (row->served()) return row;
        if (!unserved.row) unserved = {row, captures};
        return nullptr;
    }
    std::string_view segment = segments[index];
    for (const node& child : from.children) {
        const size_t kept = captures.size();
        if (!child.segment.match(segment, captures)) continue;
        if (const route* found = walk(child, segments, index + 1, captures, unserved)) return found;
        // A dead end: try the next sibling without this one's captures.
        captures.resize(kept);
    }
    return nullptr;
}

const route* route_resolver::resolve(const std::string& path,
                                     std::vector<std::string>& captures) const {
    if (path.empty() || path.front() != '/') {
        throw invalid_uri("provided uri is invalid: " + path);
    }
    captures.clear();
    unserved_match unserved;
    if (const route* served = walk(root_, split_segments(path), 0, captures, unserved))
        return served;
    captures = std::move(unserved.captures);
    return unserved.row;
}

std::string_view route_resolver::resolve_class(const std::string& path,
                                               std::vector<std::string>& captures) const {
    const route* found = resolve(path, captures);
    if (!found || !found->served()) {
        captures.clear();
        return {};
    }
    return found->handler_class;
}

}  // namespace odata::redfish
