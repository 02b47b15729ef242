#include "framework/route_resolver.h"

#include <stdexcept>

#include "platform/libipmi.h"

namespace odata::redfish {

namespace {

// The numeric member shorthand of route paths.
constexpr std::string_view number_shorthand = "{n}";
constexpr std::string_view number_pattern = "([0-9]+)";

// No resource name is longer than a file name; longer segments are not
// given to the regular-expression engine, whose matching recurses per
// character.
constexpr size_t max_pattern_segment = 255;

// The non-empty segments of path, so that "//" and a trailing "/" add none.
std::vector<std::string_view> split_segments(std::string_view path) {
    std::vector<std::string_view> segments;
    size_t start = 0;
    while (start <= path.size()) {
        size_t end = path.find('/', start);
        if (end == std::string_view::npos) end = path.size();
        if (end > start) segments.push_back(path.substr(start, end - start));
        start = end + 1;
    }
    return segments;
}

bool is_pattern(std::string_view segment) { return !segment.empty() && segment.front() == '('; }

}  // namespace

route_resolver::route_resolver(const std::vector<route>& routes,
                               const handler_factories& factories) {
    for (const route& entry : routes) {
        node* at = &root_;
        for (std::string_view segment : split_segments(entry.path)) {
            if (segment == number_shorthand) segment = number_pattern;
            // The common number segment is matched without the regex engine.
            const bool numeric = segment == number_pattern;
            node* next = nullptr;
            for (node& child : at->children) {
                if (child.literal == segment) {
                    next = &child;
                    break;
                }
            }
            if (!next) {
                node& child = at->children.emplace_back();
                child.literal = std::string(segment);
                child.numeric = numeric;
                if (is_pattern(segment) && !numeric)
                    child.pattern = std::make_unique<boost::regex>(child.literal);
                next = &child;
            }
            at = next;
        }
        // The first row for a path wins; a class without a factory leaves
        // the node without a route.
        if (!at->handler_class.empty()) continue;
        auto factory = factories.find(entry.handler_class);
        if (factory == factories.end() || !factory->second) continue;
        at->handler_class = std::string(entry.handler_class);
        at->factory = factory->second;
        at->crashdump = entry.crashdump;
    }
}

const route_resolver::node* route_resolver::walk(const node& from,
                                                 const std::vector<std::string_view>& segments,
                                                 size_t index,
                                                 std::vector<std::string>& captures) const {
    if (index == segments.size()) {
        if (from.handler_class.empty()) return nullptr;
        if (from.crashdump && is_ACD_crashdump_supported() == 0) return nullptr;
        return &from;
    }
    std::string_view segment = segments[index];
    for (const node& child : from.children) {
        const size_t kept = captures.size();
        if (child.numeric) {
            if (segment.empty() || segment.size() > max_pattern_segment ||
                segment.find_first_not_of("0123456789") != std::string_view::npos)
                continue;
            captures.emplace_back(segment);
        } else if (child.pattern) {
            if (segment.size() > max_pattern_segment) continue;
            boost::match_results<std::string_view::const_iterator> groups;
            if (!boost::regex_match(segment.begin(), segment.end(), groups, *child.pattern))
                continue;
            for (size_t group = 1; group < groups.size(); ++group) {
                if (groups[group].matched) captures.push_back(groups[group].str());
            }
        } else if (child.literal != segment) {
            continue;
        }
        if (const node* found = walk(child, segments, index + 1, captures)) return found;
        // A dead end: try the next sibling without this one's captures.
        captures.resize(kept);
    }
    return nullptr;
}

const route_resolver::node* route_resolver::find(const std::string& path,
                                                 std::vector<std::string>& captures) const {
    if (path.empty() || path.front() != '/') {
        throw invalid_uri("provided uri is invalid: " + path);
    }
    captures.clear();
    return walk(root_, split_segments(path), 0, captures);
}

std::shared_ptr<webservice> route_resolver::resolve(const std::string& path,
                                                    request_context& context) const {
    std::vector<std::string> captures;
    const node* found = find(path, captures);
    context.captures = std::move(captures);
    if (!found) return nullptr;
    context.handler_class = found->handler_class;
    return found->factory(context);
}

std::string_view route_resolver::resolve_class(const std::string& path,
                                               std::vector<std::string>& captures) const {
    const node* found = find(path, captures);
    if (!found) return {};
    return found->handler_class;
}

}  // namespace odata::redfish
