#include "appletwrappers-baselib/ParameterInfoBuilderXML.h"

#include "appletwrappers-baselib/Category.h"
#include "appletwrappers-baselib/FgQxWrapper.h"
#include "appletwrappers-baselib/ParameterInfoGeneratorXML.h"
#include "appletwrappers-baselib/XmlFilters.h"
#include "grabber_basis/SharedField.h"
#include "platform/ErrorCodes.h"
#include "platform/ParameterIds.h"

#include <array>
#include <cstring>

namespace {

constexpr std::string_view registerCategory = "Direct Register Access";

std::map<int, std::string> enumerationEntries(const EnumReg& enumeration) {
    std::map<int, std::string> entries;
    for (int index = 0; index < enumeration.nrOfElements; ++index) {
        // Display names hold spaces, which the schema refuses in names.
        const char* symbol = enumeration.enumDefName[index];
        const char* name = symbol != nullptr ? symbol : enumeration.enumNames[index];
        entries.emplace(enumeration.enumValues[index], xmlStringFilter(name != nullptr ? name : ""));
    }
    return entries;
}

} // namespace

class ParameterInfoBuilderXMLPrivate {
  public:
    ParameterInfoBuilderXMLPrivate(Fg_ParameterInfo& registry, FgQxWrapper& fgWrapper, int cameraPort)
        : fgParamInfo(registry), wrapper(fgWrapper), port(cameraPort), rootCategory("Root") {}

    std::string build() {
        generator.openDocument(xmlStringFilter(wrapper.getCameraType()));
        const RegisterInfo* entry = fgParamInfo.getRegisterInfo(port);
        for (; entry != nullptr; entry = fgParamInfo.getNextRegisterInfo(entry, port)) {
            processRegisterInfo(*entry, nullptr);
        }
        generator.writeCategory(rootCategory);
        generator.closeDocument();
        return generator.text();
    }

  private:
    void processRegisterInfo(const RegisterInfo& entry, const RegisterInfo* parent) {
        if (entry.format != REG_FORMAT_GROUP) {
            buildParamDescr(entry, parent);
            return;
        }
        for (int index = 0; index < entry.u.gReg.nrOfElements; ++index) {
            processRegisterInfo(*entry.u.gReg.elements[index], &entry);
        }
    }

    void buildParamDescr(const RegisterInfo& entry, const RegisterInfo* parent) {
        if (entry.visibilityFlags == 0 || parent == nullptr || parent->name == registerCategory) {
            return;
        }
        if (!writeNode(entry)) {
            return;
        }
        addFeatureToCategory(parent->name, entry.parameterName);
        generator.endParameter();
    }

    bool writeNode(const RegisterInfo& entry) {
        switch (entry.format) {
        case REG_FORMAT_UINT: {
            const UIntReg& limits = entry.u.uiReg;
            generator.infoGenerate(node(entry), kavo::shared::load(limits.from),
                                   kavo::shared::load(limits.to), limits.steps);
            return true;
        }
        case REG_FORMAT_INT: {
            const IntReg& limits = entry.u.iReg;
            generator.infoGenerate(node(entry), limits.from, limits.to, limits.steps);
            return true;
        }
        case REG_FORMAT_DOUBLE:
            generator.infoGenerate(node(entry), entry.u.dReg.from, entry.u.dReg.to);
            return true;
        case REG_FORMAT_ENUM:
            generator.infoGenerate(node(entry), enumerationEntries(entry.u.eReg));
            return true;
        case REG_FORMAT_STRING:
            generator.infoGenerate(node(entry));
            return true;
        default:
            return false;
        }
    }

    ParameterInfoGeneratorXML::Node node(const RegisterInfo& entry) {
        return {entry, xmlStringFilter(entry.parameterName), descriptionOf(entry.parameterName)};
    }

    /// Good until the next call.
    std::string_view descriptionOf(std::string_view name) {
        if (name.size() >= queryBuffer.size()) {
            return {};
        }
        std::memcpy(queryBuffer.data(), name.data(), name.size());
        queryBuffer[name.size()] = '\0';
        const int code = wrapper.Fg_getParameter(parameterDescriptionQuery, queryBuffer.data(), port);
        return code == kavo::error::ok ? std::string_view(queryBuffer.data()) : std::string_view();
    }

    void addFeatureToCategory(std::string_view categoryName, std::string_view featureName) {
        Category* category = &rootCategory;
        if (!categoryName.empty()) {
            const std::string name = xmlNameFilter(categoryName);
            category = rootCategory.getChild(name);
            if (category == nullptr) {
                category = &rootCategory.addChild(name);
            }
        }
        category->addFeature(xmlNameFilter(featureName));
    }

    Fg_ParameterInfo& fgParamInfo;
    FgQxWrapper& wrapper;
    int port;
    Category rootCategory;
    ParameterInfoGeneratorXML generator;
    /// A parameter's name on the way to the applet, its description on the way back.
    std::array<char, 4096> queryBuffer{};
};

ParameterInfoBuilderXML::ParameterInfoBuilderXML(Fg_ParameterInfo& registry, FgQxWrapper& wrapper, int port)
    : d(std::make_unique<ParameterInfoBuilderXMLPrivate>(registry, wrapper, port)) {}

ParameterInfoBuilderXML::~ParameterInfoBuilderXML() = default;

std::string ParameterInfoBuilderXML::build() { return d->build(); }
