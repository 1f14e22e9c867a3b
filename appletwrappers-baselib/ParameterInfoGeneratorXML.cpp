#include "appletwrappers-baselib/ParameterInfoGeneratorXML.h"

#include <array>
#include <charconv>

namespace {

constexpr int readable = 1;
constexpr int writable = 2;

/// A document of one port has about 55 kB; one reservation spares the growing.
constexpr std::size_t expectedDocumentSize = 65536;

std::string_view accessMode(int accessFlags) {
    switch (accessFlags & (readable | writable)) {
    case readable | writable:
        return "RW";
    case readable:
        return "RO";
    case writable:
        return "WO";
    default:
        return "";
    }
}

/// The shortest decimal text without exponent that reads back as the same number.
std::string decimal(double value) {
    std::array<char, 400> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed).ptr;
    return {text.data(), end};
}

} // namespace

void ParameterInfoGeneratorXML::openDocument(std::string_view modelName) {
    mText.reserve(expectedDocumentSize);
    mText += "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
             "<RegisterDescription\n"
             "ModelName=\"";
    mText += modelName;
    mText += "\"\n"
             "VendorName=\"Kavotronic\"\n"
             "StandardNameSpace=\"None\"\n"
             "SchemaMajorVersion=\"1\"\n"
             "SchemaMinorVersion=\"0\"\n"
             "SchemaSubMinorVersion=\"1\"\n"
             "MajorVersion=\"1\"\n"
             "MinorVersion=\"0\"\n"
             "SubMinorVersion=\"0\"\n"
             "ProductGuid=\"0\"\n"
             "VersionGuid=\"0\"\n"
             "xmlns=\"http://www.genicam.org/GenApi/Version_1_0\"\n"
             "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"\n"
             "xsi:schemaLocation=\"http://www.genicam.org/GenApi/Version_1_0 "
             "http://www.genicam.org/GenApi/GenApiSchema_Version_1_0.xsd\">\n";
}

void ParameterInfoGeneratorXML::closeDocument() {
    mText += "<Port Name=\"DevicePort\"></Port>\n"
             "</RegisterDescription>\n";
}

void ParameterInfoGeneratorXML::element(std::string_view tag, std::string_view content) {
    mText += '<';
    mText += tag;
    mText += '>';
    mText += content;
    mText += "</";
    mText += tag;
    mText += ">\n";
}

void ParameterInfoGeneratorXML::description(const Node& node) {
    if (!node.description.empty()) {
        element("Description", node.description);
    }
}

void ParameterInfoGeneratorXML::valueReference(const Node& node) { element("pValue", node.name + "_Reg"); }

void ParameterInfoGeneratorXML::registerPart(const RegisterInfo& info, int length) {
    if (info.id != 0) {
        element("Address", std::to_string(info.id));
    }
    element("Length", std::to_string(length));
    element("AccessMode", accessMode(info.accessFlags));
    element("pPort", "DevicePort");
}

void ParameterInfoGeneratorXML::integerRegister(const Node& node, std::string_view sign) {
    mText += "<IntReg Name=\"" + node.name + "_Reg\">";
    registerPart(node.info, sizeof(std::uint32_t));
    element("Sign", sign);
    element("Endianess", "LittleEndian");
    mText += "</IntReg>\n";
}

void ParameterInfoGeneratorXML::integer(const Node& node, const std::string& minimum,
                                        const std::string& maximum, const std::string& increment) {
    integerRegister(node, "Signed");
    mText += "<Integer Name='" + node.name + "'>";
    description(node);
    valueReference(node);
    element("Min", minimum);
    element("Max", maximum);
    if (!increment.empty()) {
        element("Inc", increment);
    }
    mText += "</Integer>\n";
}

void ParameterInfoGeneratorXML::infoGenerate(const Node& node, double minimum, double maximum) {
    mText += "<FloatReg Name=\"" + node.name + "_Reg\">";
    registerPart(node.info, sizeof(double));
    element("Endianess", "LittleEndian");
    mText += "</FloatReg>\n<Float Name=\"" + node.name + "\">";
    description(node);
    valueReference(node);
    element("Min", decimal(minimum));
    element("Max", decimal(maximum));
    mText += "</Float>\n";
}

void ParameterInfoGeneratorXML::infoGenerate(const Node& node, const std::map<int, std::string>& entries) {
    mText += "<Enumeration Name='" + node.name + "'>";
    description(node);
    for (const auto& [value, name] : entries) {
        mText += "<EnumEntry Name=\"" + name + "\">";
        element("Value", std::to_string(value));
        mText += "</EnumEntry>\n";
    }
    valueReference(node);
    mText += "</Enumeration>\n";
    integerRegister(node, "Unsigned");
}

void ParameterInfoGeneratorXML::infoGenerate(const Node& node) {
    constexpr int textCapacity = 4096;
    mText += "<StringReg Name=\"" + node.name + "\">";
    registerPart(node.info, textCapacity);
    description(node);
    mText += "</StringReg>\n";
}

void ParameterInfoGeneratorXML::writeCategory(const Category& category) {
    mText += "<Category Name='" + category.getName() + "' ";
    if (category.getName() == "Root") {
        mText += "NameSpace='Standard'";
    }
    mText += " >";
    for (std::size_t index = 0; index < category.getFeatureCount(); ++index) {
        element("pFeature", category.getFeature(index));
    }
    for (std::size_t index = 0; index < category.getChildCount(); ++index) {
        element("pFeature", category.getChild(index).getName());
    }
    mText += "</Category>\n";
    for (std::size_t index = 0; index < category.getChildCount(); ++index) {
        writeCategory(category.getChild(index));
    }
}
