#include "console/conformance/GuardedBuffer.h"
#include "console/conformance/ParameterChecks.h"
#include "console/conformance/TrialValues.h"
#include "console/conformance/ValueBytes.h"
#include "console/NumberText.h"
#include "console/ValueText.h"
#include "platform/ErrorCodes.h"
#include "platform/ParameterValues.h"

#include <limits>

namespace orbctl {

namespace error = kavo::error;

namespace {

constexpr std::size_t wideBytes = sizeof(std::uint64_t);
constexpr const char* yes = "untouched";
constexpr const char* no = "overwritten";

bool clearsWideValue(int type) { return type == kavo::type::signed64 || type == kavo::type::unsigned64; }

class ReadingTrial {
  public:
    ReadingTrial(const CheckContext& context, const Parameter& parameter)
        : mContext(context), mParameter(parameter), mSubject(subjectOf(parameter)) {}

    void run() {
        if (!mParameter.isReadable())
            return checkUnreadable();
        mPlain = readParameter(mContext.applet, mParameter);
        if (mParameter.isDescribed)
            checkPlain();
        for (const int type : typeCodes())
            checkType(type);
        checkNull();
        for (const unsigned dmaIndex : strangeDmaIndices())
            checkDmaIndex(dmaIndex);
        if (mParameter.isField())
            checkElements();
    }

  private:
    CheckReport& report() const { return mContext.report; }
    int get(GuardedBuffer& buffer, unsigned dmaIndex, int type) const {
        return mContext.functions().getParameter(mContext.handle(), mParameter.id, buffer.data(), dmaIndex,
                                                 type);
    }

    void checkUnreadable() const {
        const Reading reading = readParameter(mContext.applet, mParameter);
        report().expect(mSubject, "refuses to be read", "", !reading.isGood(), "an error code",
                        textOf(std::int64_t{reading.code}));
    }

    void checkPlain() const {
        report().expectCode(mSubject, "can be read", "", error::ok, mPlain.code);
        report().expectCode(mSubject, "leaves no error when it is read", "", error::ok, mContext.lastError());
        const bool isBound = isNumber(mParameter) || mParameter.kind == ValueKind::enumeration;
        if (mPlain.isGood() && isBound && !hasOpenLimits(mParameter))
            report().expect(mSubject, "has a value that its description lets it have", "",
                            isDescribedValue(mParameter, mPlain.value), rangeText(mParameter),
                            readableText(mParameter, mPlain));
    }

    /// The applet goes by the id; a type code says at most that 64 bits are to be cleared first.
    void checkType(int type) const {
        if (clearsWideValue(type) && mParameter.isField())
            return; // the clearing would take the element's index with it
        const std::string detail = "type code " + textOf(std::int64_t{type});
        GuardedBuffer buffer(std::max(valueBytes(mParameter), wideBytes));
        prepareElement(buffer, mParameter, 0);
        const int code = get(buffer, mParameter.port, type);
        report().expectCode(mSubject, "answers every type code", detail, mPlain.code, code);
        const std::size_t used =
            std::max(usedBytes(mParameter, buffer), clearsWideValue(type) ? wideBytes : std::size_t{0});
        report().expect(mSubject, "leaves what stands around the value alone", detail,
                        buffer.isUntouchedBehind(used), yes, no);
        if (mContext.settings.contains(mParameter))
            report().expectText(mSubject, "gives the same value for every type code", detail,
                                readableText(mParameter, mPlain),
                                readableText(mParameter, {code, decoded(mParameter, buffer)}));
        if (clearsWideValue(type) && valueBytes(mParameter) == sizeof(std::uint32_t))
            report().expectText(mSubject, "has a clean upper word where 64 bits are read", detail, "0",
                                textOf(std::uint64_t{buffer.load<std::uint32_t>(sizeof(std::uint32_t))}));
    }

    void checkNull() const {
        for (const int type : typeCodes()) {
            const std::string detail = "type code " + textOf(std::int64_t{type});
            const int code = mContext.functions().getParameter(mContext.handle(), mParameter.id, nullptr,
                                                               mParameter.port, type);
            report().expectCode(mSubject, "refuses to be read into nothing", detail, error::invalidParameter,
                                code);
        }
        report().expectCode(mSubject, "keeps the code of a refused read as last error", "",
                            error::invalidParameter, mContext.lastError());
    }

    void checkDmaIndex(unsigned dmaIndex) const {
        const std::string detail = "DMA index " + textOf(std::uint64_t{dmaIndex});
        GuardedBuffer buffer(std::max(valueBytes(mParameter), wideBytes));
        report().expectCode(mSubject, "cannot be read on a port that is not there", detail,
                            error::invalidParameter, get(buffer, dmaIndex, untypedValue));
        report().expect(mSubject, "leaves the buffer of a refused read alone", detail, buffer.isUntouched(),
                        yes, no);
    }

    void checkElements() const {
        const std::uint32_t count = mParameter.elementCount;
        for (const std::uint32_t element : {std::uint32_t{0}, count / 2, count - 1})
            checkElement(element);
        for (const std::uint32_t element : {count, count + 1, std::numeric_limits<std::uint32_t>::max()})
            report().expectCode(mSubject, "has no element behind its last",
                                "element " + textOf(std::uint64_t{element}), error::invalidParameter,
                                readParameter(mContext.applet, mParameter, element).code);
    }

    void checkElement(std::uint32_t element) const {
        const std::string detail = "element " + textOf(std::uint64_t{element});
        GuardedBuffer buffer(valueBytes(mParameter));
        prepareElement(buffer, mParameter, element);
        report().expectCode(mSubject, "gives an element", detail, error::ok,
                            get(buffer, mParameter.port, untypedValue));
        report().expect(mSubject, "has an element that its description lets it have", detail,
                        isDescribedValue(mParameter, decoded(mParameter, buffer)), rangeText(mParameter),
                        numberText(decoded(mParameter, buffer)));
        report().expectText(mSubject, "leaves the index of an element alone", detail,
                            textOf(std::uint64_t{element}),
                            textOf(std::uint64_t{elementIndex(mParameter, buffer)}));
    }

    const CheckContext& mContext;
    const Parameter& mParameter;
    CheckSubject mSubject;
    Reading mPlain;
};

} // namespace

void checkReading(const CheckContext& context, const Parameter& parameter) {
    if (parameter.kind == ValueKind::unsupported)
        return context.report.skip(subjectOf(parameter), "can be read", "its kind is not known here");
    ReadingTrial(context, parameter).run();
}

} // namespace orbctl
