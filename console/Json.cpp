#include "console/Json.h"

#include "console/NumberText.h"
#include "console/Utf8.h"

#include <cmath>

namespace orbctl {

namespace {

std::string escapedControl(char character) {
    const std::string digits = hexadecimalText(static_cast<unsigned char>(character), 4).substr(2);
    return "\\u" + digits;
}

std::string escaped(char character) {
    switch (character) {
    case '"':
        return "\\\"";
    case '\\':
        return "\\\\";
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        return static_cast<unsigned char>(character) < 0x20 ? escapedControl(character)
                                                            : std::string(1, character);
    }
}

} // namespace

std::string jsonString(std::string_view text) {
    std::string result = "\"";
    while (!text.empty()) {
        const std::size_t length = utf8SequenceLength(text);
        if (length == 0)
            result += "\xEF\xBF\xBD";
        else if (length == 1)
            result += escaped(text.front());
        else
            result += text.substr(0, length);
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return result + "\"";
}

void JsonWriter::newLine() {
    mText += '\n';
    mText.append(2 * mHasElements.size(), ' ');
}

void JsonWriter::beforeValue() {
    if (mAfterName) {
        mAfterName = false;
        return;
    }
    if (mHasElements.empty())
        return;
    if (mHasElements.back())
        mText += ',';
    mHasElements.back() = true;
    newLine();
}

JsonWriter& JsonWriter::raw(std::string_view text) {
    beforeValue();
    mText += text;
    return *this;
}

JsonWriter& JsonWriter::begin(char bracket) {
    beforeValue();
    mText += bracket;
    mHasElements.push_back(false);
    return *this;
}

JsonWriter& JsonWriter::end(char bracket) {
    const bool hadElements = mHasElements.back();
    mHasElements.pop_back();
    if (hadElements)
        newLine();
    mText += bracket;
    if (mHasElements.empty())
        mText += '\n';
    return *this;
}

JsonWriter& JsonWriter::beginObject() { return begin('{'); }
JsonWriter& JsonWriter::endObject() { return end('}'); }
JsonWriter& JsonWriter::beginArray() { return begin('['); }
JsonWriter& JsonWriter::endArray() { return end(']'); }

JsonWriter& JsonWriter::name(std::string_view name) {
    raw(jsonString(name) + ": ");
    mAfterName = true;
    return *this;
}

JsonWriter& JsonWriter::value(std::string_view text) { return raw(jsonString(text)); }
JsonWriter& JsonWriter::value(std::uint64_t number) { return raw(textOf(number)); }
JsonWriter& JsonWriter::value(std::int64_t number) { return raw(textOf(number)); }
JsonWriter& JsonWriter::value(double number) { return std::isfinite(number) ? raw(textOf(number)) : null(); }
JsonWriter& JsonWriter::value(bool truth) { return raw(truth ? "true" : "false"); }
JsonWriter& JsonWriter::null() { return raw("null"); }

} // namespace orbctl
