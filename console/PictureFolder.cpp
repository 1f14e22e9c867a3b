#include "console/PictureFolder.h"

#include "console/Failure.h"
#include "console/Interruption.h"
#include "console/NumberText.h"
#include "console/ProgressBar.h"
#include "console/Session.h"

#include <exception>
#include <filesystem>

namespace orbctl {

namespace {

std::string padded(unsigned number) {
    const std::string digits = textOf(std::uint64_t{number});
    return std::string(digits.size() < 4 ? 4 - digits.size() : 0, '0') + digits;
}

} // namespace

PictureFolder::PictureFolder(const std::string& folder, PictureFormat format)
    : mPath(folder), mFormat(format) {
    std::error_code failure;
    std::filesystem::create_directories(folder, failure);
    if (!std::filesystem::is_directory(folder, failure))
        throw Failure(ExitStatus::notFound, "the folder " + folder + " cannot be made");
}

std::string PictureFolder::fileName(unsigned port, unsigned number, const std::string& word) const {
    return (word.empty() ? "" : word + "-") + "port" + textOf(std::uint64_t{port}) + "-" + padded(number) +
           "." + extensionOf(mFormat);
}

std::string PictureFolder::write(const std::string& name, const GrayPicture& picture) const {
    const std::string file = (std::filesystem::path(mPath) / name).string();
    writePicture(picture, mFormat, file);
    return file;
}

std::vector<PortResult> acquireInto(const PictureFolder& folder, Session& session,
                                    const AcquisitionRequest& request, const std::string& word) {
    Acquisition acquisition(session.applet(), request.ports, request.count, request.timeout);
    const std::size_t total = request.ports.size() * request.count;
    std::size_t written = 0;
    const auto takeAndWrite = [&] {
        ProgressBar bar(session.messages(), session.messageTerminal(), "Writing  ", total);
        acquisition.takePictures([&](unsigned port, unsigned number, const GrayPicture& picture) {
            folder.write(folder.fileName(port, number, word), picture);
            bar.show(++written);
        });
    };
    const auto acquireSome = [&] {
        ProgressBar bar(session.messages(), session.messageTerminal(), "Acquiring", total);
        acquisition.acquireSome([&](std::size_t done) { bar.show(done); });
    };
    while (!acquisition.isComplete() && !Interruption::isAskedFor()) {
        try {
            acquireSome();
        } catch (const Failure&) {
            takeAndWrite();
            throw;
        }
        takeAndWrite();
    }
    return acquisition.results();
}

std::string resultText(const PortResult& result) {
    const PictureGeometry& geometry = result.geometry;
    std::string text = "port " + textOf(std::uint64_t{result.port}) + ": " +
                       textOf(std::uint64_t{result.pictures}) + " picture" +
                       (result.pictures == 1 ? "" : "s") + " of " + textOf(std::uint64_t{geometry.width}) +
                       " x " + textOf(std::uint64_t{geometry.height}) + ", " +
                       textOf(std::uint64_t{8} * geometry.bytesPerPixel) + " bit";
    if (result.rate() > 0)
        text += ", " + textWithDigits(result.rate(), 1) + " frames per second";
    return text;
}

} // namespace orbctl
