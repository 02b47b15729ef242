#include "platform/sim/generated_file.h"

#include <cerrno>

#include "platform/plt_result.h"
#include "platform/sim/sim_file.h"

namespace platform::sim {

int read_or_generate(const std::string& path, std::string (*generate)(), std::string& bytes) {
    if (read_file(path, bytes)) return PLT_OK;
    if (errno != ENOENT) return PLT_ERR_IO;
    bytes = generate();
    return replace_file(path, bytes, 0644) ? PLT_OK : PLT_ERR_IO;
}

}  // namespace platform::sim
