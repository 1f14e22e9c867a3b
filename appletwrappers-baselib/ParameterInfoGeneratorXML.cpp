#include "appletwrappers-baselib/ParameterInfoGeneratorXML.h"

#include "appletwrappers-baselib/XmlFilters.h"
#include "grabber_basis/SharedField.h"

namespace {

constexpr int readable = 1;
constexpr int writable = 2;

/// A document of one port has about 45 kB.
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

} // namespace

ParameterInfoGeneratorXML::ParameterInfoGeneratorXML() : mText(expectedDocumentSize) {}

void ParameterInfoGeneratorXML::openDocument(std::string_view modelName) {
    mText << "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
             "<RegisterDescription\n"
             "ModelName=\""
          << modelName
          << "\"\n"
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
    mText << "<Port Name=\"DevicePort\"></Port>\n"
             "</RegisterDescription>\n";
}

// ---- pieces of a node

void ParameterInfoGeneratorXML::description(const Node& node) {
    if (!node.description.empty()) {
        mText << "<Description>";
        appendXmlFiltered(mText, node.description);
        mText << "</Description>\n";
    }
}

void ParameterInfoGeneratorXML::descriptionAndValue(const Node& node) {
    description(node);
    mText << "<pValue>" << node.name << "_Reg</pValue>\n";
}

void ParameterInfoGeneratorXML::registerPart(const RegisterInfo& info, std::size_t length) {
    if (info.id != 0) {
        mText << "<Address>" << info.id << "</Address>\n";
    }
    mText << "<Length>" << length << "</Length>\n"
          << "<AccessMode>" << accessMode(kavo::shared::load(info.accessFlags)) << "</AccessMode>\n"
          << "<pPort>DevicePort</pPort>\n";
}

void ParameterInfoGeneratorXML::integerRegister(const Node& node, std::string_view sign) {
    mText << "<IntReg Name=\"" << node.name << "_Reg\">";
    registerPart(node.info, sizeof(std::uint32_t));
    mText << "<Sign>" << sign << "</Sign>\n<Endianess>LittleEndian</Endianess>\n</IntReg>\n";
}

// ---- nodes

template <class Limit>
void ParameterInfoGeneratorXML::integer(const Node& node, Limit minimum, Limit maximum, Limit increment) {
    integerRegister(node, "Signed");
    mText << "<Integer Name='" << node.name << "'>";
    descriptionAndValue(node);
    mText << "<Min>" << minimum << "</Min>\n<Max>" << maximum << "</Max>\n";
    if (increment != 0) {
        mText << "<Inc>" << increment << "</Inc>\n";
    }
    mText << "</Integer>\n";
}

void ParameterInfoGeneratorXML::infoGenerate(const Node& node, std::uint32_t minimum, std::uint32_t maximum,
                                             std::uint32_t increment) {
    integer(node, minimum, maximum, increment);
}

void ParameterInfoGeneratorXML::infoGenerate(const Node& node, int minimum, int maximum, int increment) {
    integer(node, minimum, maximum, increment);
}

void ParameterInfoGeneratorXML::infoGenerate(const Node& node, double minimum, double maximum) {
    mText << "<FloatReg Name=\"" << node.name << "_Reg\">";
    registerPart(node.info, sizeof(double));
    mText << "<Endianess>LittleEndian</Endianess>\n</FloatReg>\n<Float Name=\"" << node.name << "\">";
    descriptionAndValue(node);
    mText << "<Min>" << minimum << "</Min>\n<Max>" << maximum << "</Max>\n</Float>\n";
}

void ParameterInfoGeneratorXML::infoGenerate(const Node& node, const std::map<int, std::string>& entries) {
    mText << "<Enumeration Name='" << node.name << "'>";
    description(node);
    for (const auto& [value, name] : entries) {
        mText << "<EnumEntry Name=\"" << name << "\"><Value>" << value << "</Value>\n</EnumEntry>\n";
    }
    mText << "<pValue>" << node.name << "_Reg</pValue>\n</Enumeration>\n";
    integerRegister(node, "Unsigned");
}

void ParameterInfoGeneratorXML::infoGenerate(const Node& node) {
    constexpr std::size_t textCapacity = 4096;
    mText << "<StringReg Name=\"" << node.name << "\">";
    registerPart(node.info, textCapacity);
    description(node);
    mText << "</StringReg>\n";
}

void ParameterInfoGeneratorXML::writeCategory(const Category& category) {
    mText << "<Category Name='" << category.getName() << "' ";
    if (category.getName() == "Root") {
        mText << "NameSpace='Standard'";
    }
    mText << " >";
    for (std::size_t index = 0; index < category.getFeatureCount(); ++index) {
        mText << "<pFeature>" << category.getFeature(index) << "</pFeature>\n";
    }
    for (std::size_t index = 0; index < category.getChildCount(); ++index) {
        mText << "<pFeature>" << category.getChild(index).getName() << "</pFeature>\n";
    }
    mText << "</Category>\n";
    for (std::size_t index = 0; index < category.getChildCount(); ++index) {
        writeCategory(category.getChild(index));
    }
}
