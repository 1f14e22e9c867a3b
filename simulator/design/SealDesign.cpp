#include "simulator/design/DesignImage.h"

#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

namespace {

int sealFile(const char* name) {
    std::ifstream input(name, std::ios::binary);
    if (!input) {
        std::cerr << name << ": cannot be read\n";
        return 1;
    }
    std::ostringstream content;
    content << input.rdbuf();
    const std::string text = content.str();
    const std::string sealedText = simulator::DesignImage::seal(text);
    std::string reason;
    if (!simulator::DesignImage::decode(sealedText.data(), sealedText.size(), &reason)) {
        std::cerr << name << ": " << reason << '\n';
        return 1;
    }
    std::ofstream output(name, std::ios::binary);
    output << sealedText;
    output.close();
    if (!output) {
        std::cerr << name << ": cannot be written\n";
        return 1;
    }
    return 0;
}

} // namespace

/// sealdesign FILE: renews the checksum of a design image after editing; an image with a mistake is left
/// alone.
int main(int count, char** words) {
    if (count != 2) {
        std::cerr << "usage: sealdesign FILE\n";
        return 2;
    }
    return sealFile(words[1]);
}
