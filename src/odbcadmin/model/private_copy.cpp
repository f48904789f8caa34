// Making the directory and the file, and removing them.
#include "odbcadmin/model/private_copy.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace jx::model {

namespace fs = std::filesystem;

namespace {

// Memory of this user alone, where there is such a place.
std::string placeForPrivateFiles() {
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    struct stat state {};
    if (runtime != nullptr && *runtime == '/' && ::stat(runtime, &state) == 0 && S_ISDIR(state.st_mode) &&
        state.st_uid == ::geteuid() && ::access(runtime, W_OK | X_OK) == 0)
        return runtime;
    std::error_code error;
    const fs::path temporary = fs::temp_directory_path(error);
    return error ? "/tmp" : temporary.string();
}

// 0, or errno.
int writeNew(const std::string& path, std::string_view text) {
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
    int error = file < 0 ? errno : 0;
    while (error == 0 && !text.empty()) {
        const ssize_t count = ::write(file, text.data(), text.size());
        if (count >= 0)
            text.remove_prefix(static_cast<std::size_t>(count));
        else if (errno != EINTR)
            error = errno;
    }
    if (file >= 0 && ::close(file) != 0 && error == 0)
        error = errno;
    return error;
}

}  // namespace

PrivateCopy::PrivateCopy(const std::string& name, std::string_view text) {
    std::string made = placeForPrivateFiles() + "/odbcadmin-XXXXXX";
    int error = mkdtemp(made.data()) == nullptr ? errno : 0;
    if (error == 0) {
        directory_ = made;
        path_ = directory_ + "/" + name;
        error = writeNew(path_, text);
    }
    if (error != 0)
        trouble_ = {Reason::Kind::fileTrouble,
                    "Cannot make a copy in " + fs::path(made).parent_path().string() + ": " + std::strerror(error),
                    "Name a directory for temporary files in TMPDIR."};
}

PrivateCopy::~PrivateCopy() {
    std::error_code ignored;
    if (!directory_.empty() && !isKept_)
        fs::remove_all(directory_, ignored);
}

std::optional<std::string> PrivateCopy::text() const {
    std::error_code ignored;
    if (!fs::is_regular_file(path_, ignored))
        return std::nullopt;
    std::ifstream in(path_, std::ios::binary);
    std::string text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    return in.is_open() && !in.bad() ? std::optional(std::move(text)) : std::nullopt;
}

}  // namespace jx::model
