#include "simulator/design/DesignLineReader.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace simulator {
namespace {

constexpr unsigned mostElements = 1u << 20;
constexpr std::size_t longestName = 255;

/// Splits at single spaces; two in a row give an empty word, which no reader accepts.
std::vector<std::string> splitWords(const std::string& line) {
    std::vector<std::string> words;
    std::size_t start = 0;
    for (std::size_t end = line.find(' '); end != std::string::npos; end = line.find(' ', start)) {
        words.push_back(line.substr(start, end - start));
        start = end + 1;
    }
    words.push_back(line.substr(start));
    return words;
}

bool isName(const std::string& word) {
    const auto isPlain = [](char letter) { return letter > ' ' && letter <= '~'; };
    return !word.empty() && word.size() <= longestName && std::all_of(word.begin(), word.end(), isPlain);
}

template <class Number>
bool readNumber(const std::string& word, Number lowest, Number highest, Number& number) {
    const char* end = word.data() + word.size();
    const auto parsed = std::from_chars(word.data(), end, number);
    return parsed.ec == std::errc{} && parsed.ptr == end && number >= lowest && number <= highest;
}

unsigned bitsFor(unsigned elements) {
    unsigned bits = 0;
    while ((1u << bits) < elements) {
        ++bits;
    }
    return bits;
}

} // namespace

bool DesignLineReader::complain(const std::string& words) {
    mComplaint = words;
    return false;
}

bool DesignLineReader::read(const std::string& line) {
    if (!mHasFirstLine) {
        mHasFirstLine = line == firstLine;
        return mHasFirstLine || complain("not the first line of a design image that this version reads");
    }
    if (line.empty() || line.front() == '#') {
        return true;
    }
    static constexpr struct {
        const char* word;
        std::size_t words;
        bool (DesignLineReader::*read)(const Words&);
    } kinds[] = {
        {"applet", 2, &DesignLineReader::readApplet},     {"type", 2, &DesignLineReader::readType},
        {"register", 5, &DesignLineReader::readRegister}, {"parameter", 3, &DesignLineReader::readParameter},
        {"table", 5, &DesignLineReader::readTable},       {"event", 2, &DesignLineReader::readEvent},
    };
    const Words words = splitWords(line);
    for (const auto& kind : kinds) {
        if (words.front() == kind.word && words.size() == kind.words) {
            return isName(words.back()) ? (this->*kind.read)(words) : complain("the last word is no name");
        }
    }
    return complain("unknown kind of line, or a wrong number of words");
}

bool DesignLineReader::finish() {
    if (!mHasFirstLine || !mHasType || mDesign.applet.empty()) {
        return complain("the head of the image is incomplete");
    }
    return true;
}

bool DesignLineReader::readApplet(const Words& words) {
    if (!mDesign.applet.empty()) {
        return complain("a second applet name");
    }
    mDesign.applet = words[1];
    return true;
}

bool DesignLineReader::readType(const Words& words) {
    if (mHasType || !readNumber(words[1], 0, 0x7FFFFFFF, mDesign.type)) {
        return complain("a second type number, or none");
    }
    mHasType = true;
    return true;
}

bool DesignLineReader::readRegister(const Words& words) {
    unsigned index = 0;
    DesignRegister reg;
    const auto expected = static_cast<unsigned>(mDesign.registers.size() + 1);
    if (!readNumber(words[1], expected, expected, index)) {
        return complain("registers are numbered from 1 without a gap");
    }
    if (!readNumber(words[2], 1u, 64u, reg.bits)) {
        return complain("a register has 1 to 64 bits");
    }
    reg.isStatus = words[3] == "status";
    if (!reg.isStatus && words[3] != "control") {
        return complain("a register is a control or a status");
    }
    reg.name = words[4];
    mDesign.registers.push_back(std::move(reg));
    return true;
}

bool DesignLineReader::readParameter(const Words& words) {
    DesignParameter parameter;
    parameter.name = words[2];
    const auto registers = static_cast<unsigned>(mDesign.registers.size());
    return readNumber(words[1], 1u, registers, parameter.registerIndex) ? addParameter(std::move(parameter))
                                                                        : complain("no such register");
}

bool DesignLineReader::readTable(const Words& words) {
    DesignParameter parameter;
    parameter.name = words[4];
    const auto registers = static_cast<unsigned>(mDesign.registers.size());
    if (!readNumber(words[1], 1u, mostElements, parameter.elements) ||
        !readNumber(words[2], 1u, 32u, parameter.elementBits) ||
        !readNumber(words[3], 1u, registers, parameter.registerIndex)) {
        return complain("no such register, or no such table");
    }
    if (bitsFor(parameter.elements) + parameter.elementBits >
        mDesign.registers[parameter.registerIndex - 1].bits) {
        return complain("the register is too narrow for an element and its index");
    }
    return addParameter(std::move(parameter));
}

bool DesignLineReader::readEvent(const Words& words) {
    mDesign.events.push_back(words[1]);
    return true;
}

bool DesignLineReader::addParameter(DesignParameter parameter) {
    if (!mParameterNames.insert(parameter.name).second) {
        return complain("a second parameter of the same name");
    }
    mDesign.parameters.push_back(std::move(parameter));
    return true;
}

} // namespace simulator
