// Reads request paths, one a line, and prints each with "reusable" when the
// route table lets its GET answers be used again, else "-": the benchmark
// holds reused answers to their own target.
#include <iostream>
#include <string>
#include <vector>

#include "service/route_table.h"

int main() {
    using namespace odata::redfish;
    std::string path;
    while (std::getline(std::cin, path)) {
        std::vector<std::string> captures;
        const route* row = nullptr;
        try {
            row = service_routes().resolve(path, captures);
        } catch (const invalid_uri&) {
        }
        bool reusable = row && row->served() && row->has(route_reusable);
        std::cout << path << ' ' << (reusable ? "reusable" : "-") << '\n';
    }
    return 0;
}
