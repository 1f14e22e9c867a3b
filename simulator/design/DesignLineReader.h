#pragma once

#include "simulator/design/DesignImage.h"

#include <set>
#include <string>
#include <vector>

namespace simulator {

/// Puts a design together from the lines of an image, the seal excluded.
class DesignLineReader {
  public:
    static constexpr const char* firstLine = "orbelline-design 1";

    /// Takes the next line, without its line end. False when it does not fit; complaint() then says why.
    bool read(const std::string& line);
    /// To be called after the last line: looks for what is missing.
    bool finish();
    const std::string& complaint() const { return mComplaint; }
    DesignImage takeDesign() { return std::move(mDesign); }

  private:
    using Words = std::vector<std::string>;

    bool complain(const std::string& words);
    bool readApplet(const Words& words);
    bool readType(const Words& words);
    bool readRegister(const Words& words);
    bool readParameter(const Words& words);
    bool readTable(const Words& words);
    bool readEvent(const Words& words);
    bool addParameter(DesignParameter parameter);

    DesignImage mDesign;
    std::set<std::string> mParameterNames;
    std::string mComplaint;
    bool mHasFirstLine = false;
    bool mHasType = false;
};

} // namespace simulator
