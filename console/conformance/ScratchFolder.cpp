#include "console/conformance/ScratchFolder.h"

#include "console/Failure.h"

#include <cstdlib>
#include <filesystem>

namespace orbctl {

namespace files = std::filesystem;

ScratchFolder::ScratchFolder() {
    std::error_code failure;
    mPath = (files::temp_directory_path(failure) / "orbctl-XXXXXX").string();
    if (failure || mkdtemp(mPath.data()) == nullptr)
        throw Failure(ExitStatus::notFound,
                      "a folder for temporary files cannot be made; TMPDIR names another place");
}

ScratchFolder::~ScratchFolder() {
    std::error_code failure;
    files::remove_all(mPath, failure);
}

} // namespace orbctl
