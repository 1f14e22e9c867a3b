#pragma once

#include "simulator/design/DesignImage.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <optional>
#include <string>

namespace kavo::test {

/// Makes every applet that is created meanwhile load its design from a file: a new folder is the current one.
class ExternalDesign {
  public:
    /// \param content  of the file "Orbelline.qel"; without one there is no such file
    explicit ExternalDesign(const std::optional<std::string>& content)
        : mPreviousFolder(std::filesystem::current_path()), mSwitch("__KAVO_FORCE_EXTERNAL_QEL", "") {
        if (content) {
            mFolder.makeFile("Orbelline.qel", *content);
        }
        std::filesystem::current_path(mFolder.path(""));
    }
    explicit ExternalDesign(const simulator::DesignImage& image) : ExternalDesign(image.encode()) {}
    ~ExternalDesign() { std::filesystem::current_path(mPreviousFolder); }
    ExternalDesign(const ExternalDesign&) = delete;
    ExternalDesign& operator=(const ExternalDesign&) = delete;

    [[nodiscard]] const TemporaryFolder& folder() const { return mFolder; }

  private:
    std::filesystem::path mPreviousFolder;
    TemporaryFolder mFolder;
    ScopedEnvironment mSwitch;
};

} // namespace kavo::test
