#include "base/bmc_root.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace platform {
namespace {

// Absolute (so a later chdir changes nothing) and without trailing '/'.
std::string normalise_root(std::string_view text) {
    std::string root(text.empty() ? "/" : text);
    if (root.front() != '/') {
        std::error_code error;
        auto absolute = std::filesystem::absolute(root, error);
        if (!error) root = absolute.string();
    }
    while (root.size() > 1 && root.back() == '/') root.pop_back();
    return root;
}

// Counts the roots a process has had; only tests change it.
unsigned root_generation = 0;

std::string& root_storage() {
    static std::string root = [] {
        const char* from_environment = std::getenv("BMC_ROOT");
        return normalise_root(from_environment ? from_environment : "/");
    }();
    return root;
}

}  // namespace

const std::string& bmc_root() { return root_storage(); }

// Built in one allocation: the service asks for paths on every request.
std::string bmc_path(std::string_view absolute_path) {
    const std::string& root = bmc_root();
    const std::string_view prefix = root == "/" ? std::string_view() : std::string_view(root);
    const bool needs_slash = absolute_path.empty() || absolute_path.front() != '/';
    std::string path;
    path.reserve(prefix.size() + needs_slash + absolute_path.size());
    path.append(prefix);
    if (needs_slash) path += '/';
    path.append(absolute_path);
    return path;
}

fixed_bmc_path::fixed_bmc_path(std::string_view absolute_path)
    : absolute_path_(absolute_path),
      path_(bmc_path(absolute_path)),
      root_generation_(root_generation) {}

const std::string& fixed_bmc_path::get() {
    if (root_generation_ != root_generation) {
        path_ = bmc_path(absolute_path_);
        root_generation_ = root_generation;
    }
    return path_;
}

void set_bmc_root_for_tests(std::string_view root) {
    root_storage() = normalise_root(root);
    ++root_generation;
}

}  // namespace platform
