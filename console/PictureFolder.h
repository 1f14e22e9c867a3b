#pragma once

#include "console/Acquisition.h"
#include "console/PictureFile.h"

#include <string>

namespace orbctl {

class Session;

/// A folder that receives pictures.
class PictureFolder {
  public:
    /// Makes the folder where it does not exist.
    /// \throws Failure  (notFound)
    PictureFolder(const std::string& folder, PictureFormat format);

    const std::string& path() const { return mPath; }
    /// "port0-0001.png", with a word in front where one is given.
    std::string fileName(unsigned port, unsigned number, const std::string& word = "") const;
    /// \return the path of the file
    std::string write(const std::string& name, const GrayPicture& picture) const;

  private:
    std::string mPath;
    PictureFormat mFormat;
};

/// What shall be acquired.
struct AcquisitionRequest {
    std::vector<unsigned> ports;
    unsigned count = 1;
    double timeout = 10; ///< seconds without a picture
};

/// Acquires pictures and writes them, with a progress bar; Ctrl-C ends it early, with what has come.
/// \param word  begins the names of the files
/// \throws Failure (refused) where a picture does not come; those that came are written before
std::vector<PortResult> acquireInto(const PictureFolder& folder, Session& session,
                                    const AcquisitionRequest& request, const std::string& word = "");

/// "port 0: 10 pictures of 1024 x 1024, 8 bit, 59.9 frames per second".
std::string resultText(const PortResult& result);

} // namespace orbctl
