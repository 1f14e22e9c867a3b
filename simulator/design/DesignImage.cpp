#include "simulator/design/DesignImage.h"

#include "simulator/design/DesignLineReader.h"

#include <array>
#include <cstdint>
#include <cstdio>

namespace simulator {
namespace {

constexpr std::size_t largestImage = std::size_t{1} << 24;
constexpr const char* sealWord = "checksum ";

constexpr std::array<std::uint32_t, 256> makeChecksumTable() {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t byte = 0; byte < table.size(); ++byte) {
        std::uint32_t remainder = byte;
        for (int bit = 0; bit < 8; ++bit) {
            remainder = (remainder >> 1) ^ ((remainder & 1u) != 0 ? 0xEDB88320u : 0u);
        }
        table[byte] = remainder;
    }
    return table;
}

std::uint32_t checksum(const char* bytes, std::size_t size) {
    static constexpr std::array<std::uint32_t, 256> table = makeChecksumTable();
    std::uint32_t remainder = 0xFFFFFFFFu;
    for (std::size_t i = 0; i < size; ++i) {
        remainder = (remainder >> 8) ^ table[(remainder ^ static_cast<unsigned char>(bytes[i])) & 0xFFu];
    }
    return ~remainder;
}

std::string sealLine(const std::string& lines) {
    char digits[9];
    std::snprintf(digits, sizeof digits, "%08x", checksum(lines.data(), lines.size()));
    return sealWord + std::string(digits) + "\n";
}

/// Where the last line of a text starts.
std::size_t startOfLastLine(const std::string& text) {
    const std::size_t lineEnd =
        text.size() < 2 ? std::string::npos : text.find_last_of('\n', text.size() - 2);
    return lineEnd == std::string::npos ? 0 : lineEnd + 1;
}

std::optional<DesignImage> refuse(std::string* reason, const std::string& words) {
    if (reason != nullptr) {
        *reason = words;
    }
    return std::nullopt;
}

std::string registerLine(const DesignRegister& reg, std::size_t index) {
    return "register " + std::to_string(index) + ' ' + std::to_string(reg.bits) +
           (reg.isStatus ? " status " : " control ") + reg.name + '\n';
}

std::string parameterLine(const DesignParameter& parameter) {
    const std::string tail = ' ' + std::to_string(parameter.registerIndex) + ' ' + parameter.name + '\n';
    if (parameter.elements == 0) {
        return "parameter" + tail;
    }
    return "table " + std::to_string(parameter.elements) + ' ' + std::to_string(parameter.elementBits) + tail;
}

} // namespace

std::optional<DesignImage> DesignImage::decode(const void* image, std::size_t size, std::string* reason) {
    if (image == nullptr || size == 0 || size > largestImage) {
        return refuse(reason, "the image is empty or too large");
    }
    const std::string text(static_cast<const char*>(image), size);
    const std::size_t lastLine = startOfLastLine(text);
    const std::string lines = text.substr(0, lastLine);
    if (text.substr(lastLine) != sealLine(lines)) {
        return refuse(reason, "the checksum does not fit: the image is damaged or no design image");
    }
    DesignLineReader reader;
    std::size_t start = 0;
    for (unsigned number = 1; start < lines.size(); ++number) {
        const std::size_t end = lines.find('\n', start);
        if (!reader.read(lines.substr(start, end - start))) {
            return refuse(reason, "line " + std::to_string(number) + ": " + reader.complaint());
        }
        start = end + 1;
    }
    if (!reader.finish()) {
        return refuse(reason, reader.complaint());
    }
    return reader.takeDesign();
}

std::string DesignImage::encode() const {
    std::string text = std::string(DesignLineReader::firstLine) + '\n';
    text += "applet " + applet + "\ntype " + std::to_string(type) + '\n';
    for (std::size_t i = 0; i < registers.size(); ++i) {
        text += registerLine(registers[i], i + 1);
    }
    for (const DesignParameter& parameter : parameters) {
        text += parameterLine(parameter);
    }
    for (const std::string& event : events) {
        text += "event " + event + '\n';
    }
    return text + sealLine(text);
}

std::string DesignImage::seal(const std::string& text) {
    const std::size_t lastLine = startOfLastLine(text);
    const bool hasSeal = text.compare(lastLine, std::char_traits<char>::length(sealWord), sealWord) == 0;
    std::string lines = hasSeal ? text.substr(0, lastLine) : text;
    if (!lines.empty() && lines.back() != '\n') {
        lines += '\n';
    }
    return lines + sealLine(lines);
}

} // namespace simulator
