#include "appletwrappers-baselib/ParameterInfoBuilderXML.h"
#include "appletwrappers-baselib/XmlFilters.h"
#include "fuzz/FuzzInput.h"
#include "fuzz/FuzzTarget.h"
#include "fuzz/XmlScan.h"
#include "platform/ErrorCodes.h"
#include "platform/ParameterIds.h"
#include "tests/appletwrappers-baselib/BareWrapper.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <map>

// An input is pieces between zero bytes: a port and a number of bytes, the model's name, then descriptions of
// groups and parameters. Each begins with a piece of a letter, which tells its kind, and of numbers; a group's
// name follows, or a parameter's name and description and, for an enumeration, the names of its entries.

namespace {

namespace error = kavo::error;
using kavo::fuzz::require;
using kavo::fuzz::XmlElement;

constexpr std::size_t mostRecords = 60;
constexpr std::size_t mostEntries = 4;
constexpr std::size_t sentinelBytes = 32;
constexpr char sentinel = '\x5A';
constexpr const char* hiddenGroup = "Direct Register Access";

/// The pieces of an input; behind the last one they are empty.
class Pieces {
  public:
    Pieces(const std::uint8_t* data, std::size_t size) : mRest(reinterpret_cast<const char*>(data), size) {}

    bool isEmpty() const { return mRest.empty(); }
    std::string take() {
        const std::string_view piece = mRest.substr(0, mRest.find('\0'));
        mRest.remove_prefix(std::min(piece.size() + 1, mRest.size()));
        return std::string(piece);
    }

  private:
    std::string_view mRest;
};

/// The numbers of a piece, one after another; 0 where there is none.
class Numbers {
  public:
    explicit Numbers(const char* text) : mText(text) {}

    double take() {
        char* end = nullptr;
        const double number = std::strtod(mText, &end);
        mText = end;
        return std::isnan(number) ? 0 : number;
    }
    int takeInteger() { return static_cast<int>(takeUnsigned()); }
    std::uint32_t takeUnsigned() {
        constexpr double most = 4294967296.0;
        const double number = take();
        return std::isfinite(number) ? static_cast<std::uint32_t>(std::abs(std::fmod(number, most))) : 0;
    }

  private:
    const char* mText;
};

/// A wrapper whose registry comes from an input.
class DescribedWrapper : public kavo::test::BareWrapper {
  public:
    explicit DescribedWrapper(Pieces pieces) {
        const std::string head = pieces.take();
        Numbers numbers(head.c_str());
        port = numbers.takeInteger() & (Fg_ParameterInfo::portCount - 1);
        tryBytes = numbers.takeUnsigned();
        mModel = pieces.take();
        addGroup(nullptr, "First");
        for (std::size_t count = 0; count < mostRecords && !pieces.isEmpty(); ++count) {
            addRecord(pieces);
        }
    }

    const char* getCameraType() override { return mModel.c_str(); }
    int Fg_getParameter(int id, void* value, int) override {
        require(id == parameterDescriptionQuery, "only descriptions are asked for");
        auto* text = static_cast<char*>(value);
        const auto found = mDescriptions.find(text);
        if (found == mDescriptions.end()) {
            return error::invalidParameter;
        }
        std::copy_n(found->second.c_str(), found->second.size() + 1, text);
        return error::ok;
    }

    std::string description(const std::string& name) const {
        const auto found = mDescriptions.find(name);
        return found != mDescriptions.end() ? found->second : std::string();
    }

    int port = 0;
    std::size_t tryBytes = 0; ///< a buffer's size that is tried beside those around the document's
    std::vector<RegisterInfo*> parameters;

  private:
    void addGroup(RegisterInfo* parent, const std::string& name) {
        mGroups.push_back(parameterInfo().addGroupInfo(port, parent, name.c_str()));
    }

    void addRecord(Pieces& pieces) {
        const std::string head = pieces.take();
        Numbers numbers(head.empty() ? "" : head.c_str() + 1);
        RegisterInfo* group = mGroups[numbers.takeUnsigned() % mGroups.size()];
        const std::string name = pieces.take();
        if (head[0] == 'g') {
            addGroup(numbers.takeInteger() != 0 ? nullptr : group, name);
            return;
        }
        constexpr std::size_t longestDescription = 4095;
        mDescriptions.emplace(name, pieces.take().substr(0, longestDescription));
        if (RegisterInfo* added = addParameter(head[0], numbers, group, name.c_str(), pieces)) {
            parameters.push_back(added);
        }
    }

    RegisterInfo* addParameter(char kind, Numbers& numbers, RegisterInfo* group, const char* name,
                               Pieces& pieces) {
        Fg_ParameterInfo& registry = parameterInfo();
        const int visibility = numbers.takeInteger() & 1;
        const int access = numbers.takeInteger();
        const int id = numbers.takeInteger();
        switch (kind) {
        case 'u': {
            const auto from = numbers.takeUnsigned();
            const auto to = numbers.takeUnsigned();
            return registry.addInfoUInt(group, name, name, from, to, numbers.takeUnsigned(), access, 0,
                                        visibility, nullptr, id, port);
        }
        case 'd': {
            const double from = numbers.take();
            return registry.addInfoDouble(group, name, name, from, numbers.take(), 0, access, 0, visibility,
                                          nullptr, id, port);
        }
        case 'e': {
            const std::size_t count = numbers.takeUnsigned() % (mostEntries + 1);
            RegisterInfo* added = registry.addInfoEnum(group, name, name, static_cast<int>(count), access, 0,
                                                       visibility, nullptr, id, port);
            for (int entry = 0; added != nullptr && entry < static_cast<int>(count); ++entry) {
                const std::string symbol = pieces.take();
                registry.addEnumNameValue(added, entry, name, numbers.takeInteger(),
                                          symbol.empty() ? nullptr : symbol.c_str());
            }
            return added;
        }
        case 's':
            return registry.addInfoString(group, name, name, "*.*", access, 0, visibility, nullptr, id, port);
        case 'q':
            return registry.addInfoInt64(group, name, name, 0, 1, 1, access, 0, visibility, nullptr, id,
                                         port);
        case 'f':
            return registry.addInfoUIntField(group, name, name, 4, 0, 1, 1, access, 0, visibility, nullptr,
                                             id, port);
        default: {
            const int from = numbers.takeInteger();
            const int to = numbers.takeInteger();
            return registry.addInfoInt(group, name, name, from, to, numbers.takeInteger(), access, 0,
                                       visibility, nullptr, id, port);
        }
        }
    }

    std::string mModel;
    std::vector<RegisterInfo*> mGroups;
    std::map<std::string, std::string> mDescriptions;
};

// ---- the filters

void tryFilters(std::string_view text) {
    const std::string filtered = xmlStringFilter(text);
    require(kavo::fuzz::withoutEntities(filtered) == text, "a filtered text says what the text says");
    std::string letters;
    std::copy_if(text.begin(), text.end(), std::back_inserter(letters), [](unsigned char character) {
        return character < 128 && (std::isalnum(character) != 0 || character == '_');
    });
    require(xmlNameFilter(text) == letters, "a filtered name holds letters, digits and underscores");
}

// ---- the document

struct FeatureNode {
    std::string name, description;
    bool operator==(const FeatureNode& other) const {
        return name == other.name && description == other.description;
    }
};

bool hasNode(const RegisterInfo& record) {
    switch (record.format) {
    case REG_FORMAT_UINT:
    case REG_FORMAT_INT:
    case REG_FORMAT_DOUBLE:
    case REG_FORMAT_ENUM:
    case REG_FORMAT_STRING:
        return record.visibilityFlags != 0;
    default:
        return false;
    }
}

void expectBelow(const DescribedWrapper& wrapper, const RegisterInfo& group,
                 std::vector<FeatureNode>& nodes) {
    for (int index = 0; index < group.u.gReg.nrOfElements; ++index) {
        const RegisterInfo& record = *group.u.gReg.elements[index];
        if (record.format == REG_FORMAT_GROUP) {
            expectBelow(wrapper, record, nodes);
        } else if (hasNode(record) && std::strcmp(group.name, hiddenGroup) != 0) {
            nodes.push_back({record.parameterName, wrapper.description(record.parameterName)});
        }
    }
}

std::vector<FeatureNode> expectedNodes(DescribedWrapper& wrapper) {
    std::vector<FeatureNode> nodes;
    Fg_ParameterInfo& registry = wrapper.parameterInfo();
    const RegisterInfo* group = registry.getRegisterInfo(wrapper.port);
    for (; group != nullptr; group = registry.getNextRegisterInfo(group, wrapper.port)) {
        expectBelow(wrapper, *group, nodes);
    }
    return nodes;
}

std::vector<FeatureNode> featuresOf(const std::vector<XmlElement>& elements) {
    std::vector<FeatureNode> nodes;
    for (const XmlElement& element : elements) {
        const bool isFeature = element.tag == "Integer" || element.tag == "Float" ||
                               element.tag == "Enumeration" || element.tag == "StringReg";
        if (isFeature) {
            nodes.push_back({element.attribute("Name"), ""});
        } else if (element.tag == "Description") {
            require(!nodes.empty(), "a description belongs to a feature");
            nodes.back().description = element.text;
        }
    }
    return nodes;
}

void requireCategories(const std::vector<XmlElement>& elements, const std::vector<FeatureNode>& nodes) {
    std::vector<std::string> expected;
    std::vector<std::string> listed;
    std::vector<std::string> categories;
    std::transform(nodes.begin(), nodes.end(), std::back_inserter(expected),
                   [](const FeatureNode& node) { return xmlNameFilter(node.name); });
    for (const XmlElement& element : elements) {
        if (element.tag == "pFeature") {
            listed.push_back(element.text);
        } else if (element.tag == "Category" && &element != &elements.front()) {
            categories.push_back(element.attribute("Name"));
        }
    }
    require(!categories.empty() && categories.front() == "Root", "the first category is the root");
    expected.insert(expected.end(), categories.begin() + 1, categories.end());
    std::sort(expected.begin(), expected.end());
    std::sort(listed.begin(), listed.end());
    require(expected == listed, "every feature and every category is listed once");
    std::sort(categories.begin() + 1, categories.end());
    require(std::adjacent_find(categories.begin() + 1, categories.end()) == categories.end(),
            "a category stands once");
}

std::string build(DescribedWrapper& wrapper) {
    return ParameterInfoBuilderXML(wrapper.parameterInfo(), wrapper, wrapper.port).build();
}

std::vector<XmlElement> tryDocument(DescribedWrapper& wrapper, const std::string& document) {
    std::vector<XmlElement> elements = kavo::fuzz::scanXml(document);
    const std::vector<FeatureNode> nodes = featuresOf(elements);
    require(nodes == expectedNodes(wrapper), "every visible parameter is a node that says what it is");
    require(elements.front().tag == "RegisterDescription" &&
                elements.front().attribute("ModelName") == wrapper.getCameraType(),
            "the root names the model");
    requireCategories(elements, nodes);
    return elements;
}

void tryHiding(DescribedWrapper& wrapper, std::vector<XmlElement> whole) {
    for (std::size_t index = 0; index < wrapper.parameters.size(); index += 2) {
        wrapper.parameters[index]->visibilityFlags = 0;
    }
    std::vector<XmlElement> part = tryDocument(wrapper, build(wrapper));
    std::sort(whole.begin(), whole.end());
    std::sort(part.begin(), part.end());
    require(std::includes(whole.begin(), whole.end(), part.begin(), part.end()),
            "with parameters hidden nothing new is said");
}

// ---- the way to the caller

/// Asks with a buffer of some bytes, behind which nothing is to be touched.
void tryBuffer(DescribedWrapper& wrapper, const std::string& document, std::size_t bytes) {
    std::vector<char> buffer(bytes + sentinelBytes, sentinel);
    auto size = static_cast<unsigned>(bytes);
    const int result = wrapper.Fg_getParameterInfoXML(nullptr, wrapper.port, buffer.data(), &size);
    require(wrapper.Fg_getLastErrorNumber() == result, "the result is the last error");
    const bool fits = bytes > document.size();
    require(result == (fits ? error::ok : error::bufferTooSmall), "the text fits or is refused");
    require(size == (fits ? document.size() + 1 : bytes), "the size is the one that was written");
    const std::size_t written = fits ? document.size() + 1 : 0;
    require(!fits || std::memcmp(buffer.data(), document.c_str(), written) == 0, "the buffer has the text");
    require(std::all_of(buffer.begin() + static_cast<std::ptrdiff_t>(written), buffer.end(),
                        [](char character) { return character == sentinel; }),
            "nothing behind the text is touched");
}

void tryBuffers(DescribedWrapper& wrapper, const std::string& document) {
    unsigned size = 0;
    require(wrapper.Fg_getParameterInfoXML(nullptr, wrapper.port, nullptr, &size) == error::ok &&
                size == document.size() + 1,
            "the size that is told is the one that is needed");
    tryBuffer(wrapper, document, document.size());
    tryBuffer(wrapper, document, document.size() + 1);
    tryBuffer(wrapper, document, wrapper.tryBytes % (2 * document.size()));
    const int otherPort = (wrapper.port + 1) % Fg_ParameterInfo::portCount;
    require(wrapper.Fg_getParameterInfoXML(nullptr, otherPort, nullptr, &size) == error::noDescription &&
                size == document.size() + 1,
            "another port has no description");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tryFilters({reinterpret_cast<const char*>(data), size});
    DescribedWrapper wrapper(Pieces(data, size));
    const std::string document = build(wrapper);
    require(build(wrapper) == document, "the same registry gives the same document");
    std::vector<XmlElement> elements = tryDocument(wrapper, document);
    tryBuffers(wrapper, document);
    tryHiding(wrapper, std::move(elements));
    return 0;
}
