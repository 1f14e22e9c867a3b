// The applet's fixed properties, answered without a handle.

#include "applet/AppletIcon.h"
#include "applet/AppletQel.h"
#include "applet/Enumerations.h"
#include "applet/Identity.h"
#include "appletwrappers-baselib/FgQxWrapper.h"
#include "platform/ErrorCodes.h"
#include "platform/FrameGrabber.h"

#include <map>
#include <string>
#include <string_view>

namespace error = kavo::error;

namespace {

constexpr unsigned portCount = 2;

/// Where an answer's outputs go; outputs that the caller does not want are skipped.
struct Outputs {
    unsigned* value;
    void** data;

    void setValue(unsigned answer) const {
        if (value != nullptr) {
            *value = answer;
        }
    }
    void setData(const void* answer) const {
        if (data != nullptr) {
            *data = const_cast<void*>(answer);
        }
    }
    int text(const char* answer) const {
        setData(answer);
        return 0;
    }
    int block(const void* start, unsigned size) const {
        setValue(size);
        setData(start);
        return 0;
    }
    /// A handle travels in the 32-bit value, as the product's pointers do.
    int handle(const void* answer) const {
        setValue(static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(answer)));
        return 0;
    }
};

int icon(const Outputs& outputs, unsigned index, int subIndex) {
    if (index != 0 || subIndex != 0) {
        outputs.block(nullptr, 0);
    }
    return outputs.block(appletIconData, appletIconSize);
}

int namedConstant(const char* name) {
    static const auto constants = [] {
        std::map<std::string, int, std::less<>> values;
        for (std::size_t table = 0; table < enumerations::allCount; ++table) {
            for (const EnumerationEntry& entry : *enumerations::all[table]) {
                values.emplace(entry.symbol, entry.value);
            }
        }
        return values;
    }();
    const auto found = name != nullptr ? constants.find(std::string_view(name)) : constants.end();
    return found != constants.end() ? found->second : error::invalidParameter;
}

/// Selectors 4624 to 4704: properties of one camera port.
int portProperty(int selector, unsigned index, int subIndex) {
    if (index >= portCount) {
        return error::invalidParameter;
    }
    switch (selector) {
    case 4656:
    case 4672:
        return subIndex == 0 ? static_cast<int>(index) : error::invalidParameter;
    case 4704:
        return index == 0 ? 9 : 8;
    default:
        return 1;
    }
}

} // namespace

extern "C" __attribute__((visibility("default"))) int Info(int selector, unsigned index, int subIndex,
                                                           unsigned* value, void** data) {
    const Outputs outputs{value, data};
    switch (selector) {
    case 848:
    case 1040:
    case 2160:
    case 2192:
    case 2560:
    case 3072:
    case 3328:
        return 0;
    case 1041:
        return icon(outputs, index, subIndex);
    case 1042:
        return outputs.block(rawQelData, rawQelDataSize);
    case 1043:
        return outputs.text(identity::guid);
    case 1044:
        return outputs.text("");
    case 1045:
    case 2816:
        return 1;
    case 1792:
    case 1872:
    case 1888:
    case 4608:
        return 2;
    case 2048:
        return 0x20004;
    case 2176:
        return identity::designType;
    case 2304:
        outputs.setValue(0);
        return 0;
    case 4096:
        return outputs.text(identity::description);
    case 4112:
        return outputs.text("Halvora Advanced:LAG:Area");
    case 4128:
        return outputs.text(
            "class=standard,family=acquisition,type=dual,sensortype=area,color=gray,interface=gige,lag=2");
    case 4144:
        return outputs.handle(FgQxWrapper::accessDeviceHandle(nullptr));
    case 4160:
        return outputs.handle(FgQxWrapper::accessDesignHandle(nullptr));
    case 4176:
        return outputs.text(identity::appletName);
    case 4192:
        return outputs.text("2.4.2.2");
    case 4208:
        return outputs.text("2.4.2.2.20170406.045837");
    case 4352:
        return namedConstant(reinterpret_cast<const char*>(value));
    case 4624:
    case 4640:
    case 4656:
    case 4672:
    case 4688:
    case 4704:
        return portProperty(selector, index, subIndex);
    default:
        return error::notSupported;
    }
}
