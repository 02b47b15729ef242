// The floor of the benchmark: the least a FastCGI responder does for a GET
// of a resource. It reads a small session-like file, takes the MD5 ETag of a
// fixed body of 1.8 KB and answers it.
#include <fcgiapp.h>
#include <fcntl.h>
#include <openssl/evp.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace {

std::string fixed_body() {
    std::string body = "{\"@odata.id\":\"/floor\",\"Members\":[";
    for (int i = 0; body.size() < 1780; ++i) {
        if (i > 0) body += ',';
        body += "{\"@odata.id\":\"/floor/" + std::to_string(i) + "\"}";
    }
    return body + "]}";
}

// Reads the session file as the service reads a session record.
bool read_session(const std::string& path) {
    int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return false;
    char record[512];
    ssize_t length = read(fd, record, sizeof record);
    close(fd);
    return length > 0;
}

std::string md5_hex(const std::string& text) {
    unsigned char digest[EVP_MAX_MD_SIZE];
    unsigned int length = 0;
    EVP_Digest(text.data(), text.size(), digest, &length, EVP_md5(), nullptr);
    static const char hex[] = "0123456789abcdef";
    std::string result;
    for (unsigned int i = 0; i < length; ++i) {
        result += hex[digest[i] >> 4];
        result += hex[digest[i] & 0x0f];
    }
    return result;
}

void answer(FCGX_Request& request, const std::string& session_file, const std::string& body) {
    if (!read_session(session_file)) {
        FCGX_PutS("Status: 500 Internal Server Error\r\nContent-Length: 0\r\n\r\n", request.out);
        return;
    }
    FCGX_FPrintF(request.out,
                 "ETag: \"%s\"\r\nOData-Version: 4.0\r\nContent-Length: %d\r\n"
                 "Content-Type: application/json; charset=UTF-8\r\n\r\n",
                 md5_hex(body).c_str(), static_cast<int>(body.size()));
    FCGX_PutStr(body.data(), static_cast<int>(body.size()), request.out);
}

}  // namespace

int main() {
    const char* root = std::getenv("BMC_ROOT");
    const std::string session_file = std::string(root ? root : "") + "/tmp/floor_session";
    const std::string body = fixed_body();
    if (FCGX_Init() != 0) return 1;
    FCGX_Request request;
    if (FCGX_InitRequest(&request, 0, 0) != 0) return 2;
    while (FCGX_Accept_r(&request) >= 0) {
        answer(request, session_file, body);
        FCGX_Finish_r(&request);
    }
    return 0;
}
