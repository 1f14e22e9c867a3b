#include "console/conformance/FunctionChecks.h"
#include "console/conformance/GuardedBuffer.h"
#include "console/conformance/TrialValues.h"
#include "console/conformance/XmlSearch.h"
#include "console/NumberText.h"
#include "console/ValueText.h"
#include "platform/ErrorCodes.h"

#include <algorithm>
#include <string_view>

namespace orbctl {

namespace error = kavo::error;

namespace {

constexpr const char* functionName = "Fg_getParameterInfoXML";
constexpr const char* untouched = "untouched";
constexpr const char* overwritten = "overwritten";

/// The calls for one port.
class XmlCalls {
  public:
    XmlCalls(const CheckContext& context, unsigned port) : mContext(context), mSubject{port, functionName} {}

    int ask(char* buffer, unsigned& size) const {
        return mContext.functions().parameterXml(mContext.handle(), static_cast<int>(*mSubject.port), buffer,
                                                 &size);
    }

    void run() const {
        unsigned size = 0;
        const int code = ask(nullptr, size);
        mContext.report.expectCode(mSubject, "tells the size of the description", "", error::ok, code);
        mContext.report.expectCode(mSubject, "leaves no error when it tells the size", "", error::ok,
                                   mContext.lastError());
        if (code != error::ok || size == 0)
            return;
        checkText(size, size);
        checkText(size + 100, size);
        for (const unsigned given : {0U, 1U, size - 1})
            checkShort(given);
    }

  private:
    /// \param given  bytes that the buffer has
    /// \param size   bytes that the description takes, its end included
    void checkText(unsigned given, unsigned size) const {
        const std::string detail = textOf(std::uint64_t{given}) + " bytes";
        GuardedBuffer buffer(given);
        unsigned told = given;
        const int code = ask(static_cast<char*>(buffer.data()), told);
        mContext.report.expectCode(mSubject, "gives the description", detail, error::ok, code);
        mContext.report.expectText(mSubject, "tells the bytes of the description", detail,
                                   textOf(std::uint64_t{size}), textOf(std::uint64_t{told}));
        const std::size_t length = strnlen(buffer.text(), buffer.size());
        mContext.report.expectText(mSubject, "ends the description where it says", detail,
                                   textOf(std::uint64_t{size}), textOf(std::uint64_t{length + 1}));
        mContext.report.expect(mSubject, "leaves what stands behind the description alone", detail,
                               buffer.isUntouchedBehind(std::min<std::size_t>(size, given)), untouched,
                               overwritten);
        const bool isXml = std::string_view(buffer.text(), length).rfind("<?xml", 0) == 0;
        mContext.report.expect(mSubject, "begins as XML does", detail, isXml, "<?xml",
                               std::string(buffer.text(), std::min<std::size_t>(length, 20)));
    }

    void checkShort(unsigned given) const {
        const std::string detail = textOf(std::uint64_t{given}) + " bytes";
        GuardedBuffer buffer(given);
        unsigned told = given;
        const int code = ask(static_cast<char*>(buffer.data()), told);
        mContext.report.expectCode(mSubject, "refuses a buffer that is too short", detail,
                                   error::bufferTooSmall, code);
        mContext.report.expectCode(mSubject, "keeps the code of a short buffer as last error", detail,
                                   error::bufferTooSmall, mContext.lastError());
        mContext.report.expectText(mSubject, "leaves the size of a short buffer alone", detail,
                                   textOf(std::uint64_t{given}), textOf(std::uint64_t{told}));
        mContext.report.expect(mSubject, "leaves a short buffer alone", detail, buffer.isUntouched(),
                               untouched, overwritten);
    }

    const CheckContext& mContext;
    CheckSubject mSubject;
};

std::string documentOf(const CheckContext& context, unsigned port) {
    const XmlCalls calls(context, port);
    unsigned size = 0;
    if (calls.ask(nullptr, size) != error::ok)
        return "";
    std::string text(size, '\0');
    if (calls.ask(text.data(), size) != error::ok)
        return "";
    return text.substr(0, text.find('\0'));
}

std::string accessWord(const Parameter& parameter) {
    return std::string(parameter.isReadable() ? "R" : "") + (parameter.isWritable() ? "W" : "") +
           (parameter.isReadable() != parameter.isWritable() ? "O" : "");
}

/// How a kind of parameter stands in the description.
struct Template {
    const char* feature; ///< null where the kind is not described
    const char* node;
    const char* suffix; ///< of the node's name
};

Template templateOf(ValueKind kind) {
    switch (kind) {
    case ValueKind::unsigned32:
    case ValueKind::signed32:
        return {"Integer", "IntReg", "_Reg"};
    case ValueKind::floating64:
        return {"Float", "FloatReg", "_Reg"};
    case ValueKind::enumeration:
        return {"Enumeration", "IntReg", "_Reg"};
    case ValueKind::text:
        return {"StringReg", "StringReg", ""};
    default:
        return {nullptr, nullptr, nullptr};
    }
}

/// One parameter in its port's document.
class FeatureTrial {
  public:
    FeatureTrial(const CheckContext& context, const std::string& document, const Parameter& parameter)
        : mContext(context), mDocument(document), mParameter(parameter) {}

    void run() const {
        const Template form = templateOf(mParameter.kind);
        if (form.feature == nullptr)
            return;
        const auto feature = elementNamed(mDocument, form.feature, mParameter.name);
        const auto node = elementNamed(mDocument, form.node, mParameter.name + form.suffix);
        const bool isThere = mContext.report.expect(subjectOf(mParameter), "stands in the XML description",
                                                    form.feature, feature.has_value() && node.has_value(),
                                                    "a feature and its register", "nothing");
        if (!isThere)
            return;
        checkTextIn(*node, "Address", "has its id as address in the XML description",
                    textOf(std::int64_t{mParameter.id}));
        checkTextIn(*node, "AccessMode", "has its access in the XML description", accessWord(mParameter));
        checkTextIn(*feature, "Description", "has its sentence in the XML description",
                    escaped(mContext.applet.description(mParameter.name, mParameter.port)));
        checkNumbers(*feature);
        for (const EnumerationEntry& entry : mParameter.entries)
            checkEntry(*feature, entry);
        checkCategory();
    }

  private:
    void checkTextIn(const std::string& element, const char* kind, const char* what,
                     const std::string& expected) const {
        mContext.report.expectText(subjectOf(mParameter), what, "", expected,
                                   firstElement(element, kind).value_or(""));
    }

    /// That the category tree names the parameter.
    void checkCategory() const {
        const std::string reference = "<pFeature>" + mParameter.name + "</pFeature>";
        mContext.report.expect(subjectOf(mParameter), "is in a category of the XML description", "",
                               mDocument.find(reference) != std::string::npos, reference, "nothing");
    }

    void checkNumbers(const std::string& feature) const {
        if (!isNumber(mParameter))
            return;
        checkNumber(feature, "Min", "has its minimum in the XML description", mParameter.limits.from);
        checkNumber(feature, "Max", "has its maximum in the XML description", mParameter.limits.to);
        if (!mParameter.isFloating() && numberOf(mParameter.limits.step) != 0)
            checkNumber(feature, "Inc", "has its step in the XML description", mParameter.limits.step);
    }

    void checkNumber(const std::string& feature, const char* kind, const char* what,
                     const ParameterValue& expected) const {
        const std::string text = firstElement(feature, kind).value_or("");
        const auto number = doubleFrom(text);
        mContext.report.expect(subjectOf(mParameter), what, "", number && *number == numberOf(expected),
                               numberText(expected), text);
    }

    void checkEntry(const std::string& feature, const EnumerationEntry& entry) const {
        const std::string name = escaped(entry.symbol.empty() ? entry.displayName : entry.symbol);
        const std::string content = elementNamed(feature, "EnumEntry", name).value_or("");
        mContext.report.expectText(subjectOf(mParameter), "has its entry in the XML description", name,
                                   textOf(entry.value), firstElement(content, "Value").value_or("nothing"));
    }

    const CheckContext& mContext;
    const std::string& mDocument;
    const Parameter& mParameter;
};

} // namespace

void checkXmlCalls(const CheckContext& context) {
    for (unsigned port = 0; port < AppletHandle::numberOfPorts; ++port)
        XmlCalls(context, port).run();
    for (const unsigned port : strangeDmaIndices()) {
        unsigned size = 0;
        const CheckSubject subject{std::nullopt, functionName};
        const std::string detail = textOf(std::uint64_t{port});
        context.report.expectCode(subject, "has no description of a port that is not there", detail,
                                  error::noDescription, XmlCalls(context, port).ask(nullptr, size));
        context.report.expectCode(subject, "keeps the code of a refused port as last error", detail,
                                  error::noDescription, context.lastError());
    }
}

void checkXmlContent(const CheckContext& context, const std::vector<Parameter>& parameters) {
    for (unsigned port = 0; port < AppletHandle::numberOfPorts; ++port) {
        const std::string document = documentOf(context, port);
        for (const Parameter& parameter : parameters)
            if (parameter.port == port && parameter.isDescribed)
                FeatureTrial(context, document, parameter).run();
    }
}

} // namespace orbctl
