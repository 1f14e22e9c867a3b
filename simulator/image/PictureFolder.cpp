#include "simulator/image/PictureFile.h"
#include "simulator/image/PictureSource.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <vector>

namespace simulator {
namespace {

std::vector<std::string> pictureFilesIn(const std::string& folder) {
    std::vector<std::string> files;
    std::error_code failure;
    for (std::filesystem::directory_iterator entry(folder, failure), end; !failure && entry != end;
         entry.increment(failure)) {
        if (isPictureFileName(entry->path().filename().string())) {
            files.push_back(entry->path().string());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

class PictureFolder : public PictureSource {
  public:
    explicit PictureFolder(std::vector<std::string> files) : mFiles(std::move(files)) {}

    /// A file that has become unreadable shows as black.
    GrayPicture picture(std::uint64_t number, std::uint32_t width, std::uint32_t height) const override {
        const auto place = static_cast<std::size_t>((number - 1) % mFiles.size());
        const std::optional<GrayPicture> read = readPictureFile(mFiles[place]);
        return read ? fitPicture(*read, width, height) : GrayPicture(width, height);
    }

  private:
    std::vector<std::string> mFiles;
};

} // namespace

std::shared_ptr<const PictureSource> makePictureFolder(const std::string& folder) {
    std::vector<std::string> files = pictureFilesIn(folder);
    if (files.empty() || !readPictureFile(files.front())) {
        throw std::invalid_argument("the folder " + folder + " holds no PGM or PNG picture that can be read");
    }
    return std::make_shared<PictureFolder>(std::move(files));
}

} // namespace simulator
