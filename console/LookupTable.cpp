#include "console/LookupTable.h"

#include "console/AppletHandle.h"
#include "console/ErrorText.h"
#include "console/NumberText.h"
#include "console/ParameterAccess.h"
#include "console/ParameterCatalogue.h"
#include "console/PortChoice.h"
#include "console/ValueText.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orbctl {

namespace {

constexpr const char* typeName = "FG_LUT_TYPE";
constexpr const char* fileName = "FG_LUT_CUSTOM_FILE";
constexpr std::int64_t typeOfProcessor = 3;
constexpr std::int64_t typeOfFiles = 0;

/// Reads the parameters of one port, all of which have to be there.
class Reader {
  public:
    Reader(const AppletHandle& applet, unsigned port) : mApplet(applet), mCatalogue(applet, port) {}

    const Parameter& find(const char* name) const { return mCatalogue.find(name); }
    ParameterValue value(const Parameter& parameter, std::uint32_t element = 0) const {
        const Reading reading = readParameter(mApplet, parameter, element);
        if (!reading.isGood())
            throw Failure(ExitStatus::refused, refusedRead(parameter, reading.code));
        return reading.value;
    }
    double number(const char* name) const { return numberOf(value(find(name))); }
    std::string text(const char* name) const {
        const Parameter& parameter = find(name);
        return plainText(parameter, value(parameter));
    }

  private:
    const AppletHandle& mApplet;
    ParameterCatalogue mCatalogue;
};

/// Writes parameters of one port, all of which have to be there.
class Writer {
  public:
    Writer(const AppletHandle& applet, unsigned port) : mApplet(applet), mCatalogue(applet, port) {}

    /// 0 or the error code.
    int write(const char* name, const ParameterValue& value) const {
        return writeParameter(mApplet, mCatalogue.find(name), value);
    }

  private:
    const AppletHandle& mApplet;
    ParameterCatalogue mCatalogue;
};

/// What the processor gives for an input, before it is rounded.
double processed(const LookupTable& table, double input) {
    const double scaled = (input / LookupTable::largestInput + table.offset) * table.gain;
    const double output = scaled < 0 ? 0 : std::pow(scaled, 1 / table.gamma) * LookupTable::largestOutput;
    const bool isNumber = output <= std::numeric_limits<std::int32_t>::max();
    const double inverted = table.isInverted && isNumber ? LookupTable::largestOutput - output : output;
    return isNumber ? std::clamp<double>(inverted, 0, LookupTable::largestOutput) : 0;
}

std::vector<std::uint32_t> valuesOf(const Reader& reader) {
    const Parameter& field = reader.find("FG_LUT_VALUE");
    std::vector<std::uint32_t> values;
    values.reserve(field.elementCount);
    for (std::uint32_t element = 0; element < field.elementCount; ++element)
        values.push_back(static_cast<std::uint32_t>(numberOf(reader.value(field, element))));
    return values;
}

} // namespace

bool LookupTable::isIdentity() const {
    for (std::size_t input = 0; input < values.size(); ++input)
        if (values[input] != input)
            return false;
    return true;
}

bool LookupTable::followsProcessor() const {
    for (std::size_t input = 0; input < values.size(); ++input)
        if (std::fabs(processed(*this, static_cast<double>(input)) - values[input]) > 1)
            return false;
    return true;
}

std::uint32_t LookupTable::smallest() const {
    return values.empty() ? 0 : *std::min_element(values.begin(), values.end());
}

std::uint32_t LookupTable::largest() const {
    return values.empty() ? 0 : *std::max_element(values.begin(), values.end());
}

LookupTable lookupTableOf(const AppletHandle& applet, unsigned port) {
    const Reader reader(applet, port);
    LookupTable table;
    table.port = port;
    table.isProcessed = reader.number(typeName) == typeOfProcessor;
    table.type = reader.text(typeName);
    table.file = reader.text(fileName);
    table.offset = reader.number("FG_PROCESSING_OFFSET");
    table.gain = reader.number("FG_PROCESSING_GAIN");
    table.gamma = reader.number("FG_PROCESSING_GAMMA");
    table.isInverted = reader.number("FG_PROCESSING_INVERT") == 1;
    table.values = valuesOf(reader);
    return table;
}

void saveLookupTable(const AppletHandle& applet, unsigned port, const std::string& file) {
    const Writer writer(applet, port);
    const int code = writer.write("FG_LUT_SAVE_FILE", file);
    if (code != 0)
        throw Failure(statusOfFileError(code), file + " cannot be saved: " + withCode(code));
}

void loadLookupTable(const AppletHandle& applet, unsigned port, const std::string& file) {
    const Reader reader(applet, port);
    const Writer writer(applet, port);
    const std::string former = reader.text(fileName);
    const bool isFromFile = reader.number(typeName) == typeOfFiles;
    // The applet reads the file as soon as it has both its name and the type that uses it.
    int code = writer.write(fileName, file);
    if (code == 0 && !isFromFile) {
        code = writer.write(typeName, typeOfFiles);
        if (code != 0)
            writer.write(fileName, former);
    }
    if (code != 0)
        throw Failure(statusOfFileError(code), file + " cannot be loaded: " + withCode(code));
}

std::string processingText(const LookupTable& table) {
    return "offset " + textOf(table.offset) + ", gain " + textOf(table.gain) + ", gamma " +
           textOf(table.gamma) + ", invert " + (table.isInverted ? "on" : "off");
}

std::string legendText(const LookupTable& table) {
    const std::string port = portPrefix(table.port);
    if (table.isProcessed)
        return port + processingText(table) + (table.followsProcessor() ? "" : ", entries set by hand");
    return port + (table.file.empty() ? "no file loaded" : "file " + table.file);
}

} // namespace orbctl
