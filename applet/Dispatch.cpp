// Every read and write of a parameter enters here: under the lock, split by the family of its id, standard
// ids by port.

#include "applet/AppletWrapper.h"
#include "applet/ParameterFamilies.h"
#include "platform/DesignRuntime.h"
#include "platform/RegisterAccess.h"

#include <cstring>
#include <stdexcept>

namespace error = kavo::error;
using kavo::templates::platform::CriticalSectionGuard;

namespace {

constexpr int wordBits = 32;

/// The value that an untyped buffer holds, by the kind of the parameter.
template <class Value>
typename Value::Argument valueIn(const void* buffer) {
    using Argument = typename Value::Argument;
    if constexpr (std::is_pointer_v<Argument>) {
        return static_cast<Argument>(buffer);
    } else {
        Argument value;
        std::memcpy(&value, buffer, sizeof value);
        return value;
    }
}

} // namespace

int FgQxWrapperImpl::Fg_setParameter(int id, const void* value, int port) {
    if (value == nullptr) {
        return setError(error::invalidParameter);
    }
    const CriticalSectionGuard guard(&mParameterLock);
    return setError(isStandard(id) ? setStandardParameter(id, value, port)
                                   : setOfferedParameter(id, value, port));
}

int FgQxWrapperImpl::Fg_getParameter(int id, void* value, int port) {
    if (value == nullptr) {
        return setError(error::invalidParameter);
    }
    const CriticalSectionGuard guard(&mParameterLock);
    return setError(isStandard(id) ? getStandardParameter(id, value, port)
                                   : getOfferedParameter(id, value, port));
}

bool FgQxWrapperImpl::isStandard(int id) const {
    return id <= family::registerIdBase || (id <= family::inspectedIdBase && !draEnabled);
}

int FgQxWrapperImpl::setOfferedParameter(int id, const void* value, int dmaIndex) {
    return id > family::inspectedIdBase ? setUnwrappedParameter(id - family::inspectedIdBase, value, dmaIndex)
                                        : writeRegister(id - family::registerIdBase, value);
}

int FgQxWrapperImpl::getOfferedParameter(int id, void* value, int dmaIndex) {
    return id > family::inspectedIdBase ? getUnwrappedParameter(id - family::inspectedIdBase, value, dmaIndex)
                                        : readRegister(id - family::registerIdBase, value);
}

void FgQxWrapperImpl::setParameter(int id, const void* value, int dmaIndex) {
    fail(setStandardParameter(id, value, dmaIndex), true);
}

void FgQxWrapperImpl::getParameter(int id, void* value, int dmaIndex) {
    fail(getStandardParameter(id, value, dmaIndex), true);
}

std::optional<int> FgQxWrapperImpl::processOf(int dmaIndex) const {
    for (const auto& [index, process] : map_dma_process) {
        if (index == dmaIndex) {
            return process;
        }
    }
    return std::nullopt;
}

int FgQxWrapperImpl::mapDmaToProcess(int dmaIndex) const {
    const std::optional<int> process = processOf(dmaIndex);
    if (!process) {
        throw error::invalidParameter;
    }
    return *process;
}

int FgQxWrapperImpl::setStandardParameter(int id, const void* value, int dmaIndex) {
    const std::optional<int> process = processOf(dmaIndex);
    if (!process) {
        return error::invalidParameter;
    }
    const int port = *process;
    switch (id) {
#define X(name, Value, initial, write, read)                                                                 \
    case name:                                                                                               \
        return write_##name(port, valueIn<Value>(value));
        ORBELLINE_WRITABLE_PARAMETERS(X)
#undef X
#define X(name, Value, read) case name:
        ORBELLINE_READ_ONLY_PARAMETERS(X)
#undef X
    case parameterDescriptionQuery:
        return error::notAvailable;
    default:
        return error::invalidParameter;
    }
}

int FgQxWrapperImpl::getStandardParameter(int id, void* value, int dmaIndex) {
    const std::optional<int> process = processOf(dmaIndex);
    if (!process) {
        return error::invalidParameter;
    }
    const int port = *process;
    switch (id) {
#define X(name, Value, ...)                                                                                  \
    case name:                                                                                               \
        return readChecked_##name(port, static_cast<Value::Result>(value));
        ORBELLINE_WRITABLE_PARAMETERS(X)
        ORBELLINE_READ_ONLY_PARAMETERS(X)
#undef X
    case parameterDescriptionQuery:
        return readDescription(port, static_cast<char*>(value));
    default:
        return error::invalidParameter;
    }
}

int FgQxWrapperImpl::readDescription(int port, char* name) {
    if (name == nullptr) {
        return error::invalidParameter;
    }
    const StringToStringMap& descriptions =
        map_parameter_name_parameter_description[static_cast<unsigned>(port)];
    const auto found = descriptions.find(std::string_view(name));
    return found != descriptions.end() ? readCache(found->second, name) : error::invalidParameter;
}

// ---- registers of the design

int FgQxWrapperImpl::writeRegister(int index, const void* value) {
    const bool isWide = QelGetRegisterBitRange(designHandle(), index) > wordBits;
    std::uint64_t word = 0;
    std::memcpy(&word, value, isWide ? sizeof(std::uint64_t) : sizeof(std::uint32_t));
    return KavoRegisterWrite(boardHandle(), index, static_cast<unsigned>(word),
                             static_cast<unsigned>(word >> wordBits));
}

int FgQxWrapperImpl::readRegister(int index, void* value) {
    const bool isWide = QelGetRegisterBitRange(designHandle(), index) > wordBits;
    std::uint64_t word = 0;
    const int code = KavoRegisterRead(boardHandle(), index, &word);
    if (code == error::ok) {
        std::memcpy(value, &word, isWide ? sizeof(std::uint64_t) : sizeof(std::uint32_t));
    }
    return code;
}

// ---- operations that this applet does not have

int FgQxWrapperImpl::processChannelToDma(int, int) {
    throw std::runtime_error("processChannelToDma() is not implemented.");
}

int FgQxWrapperImpl::mapDmaToFormat(int) { throw std::runtime_error("mapDmaToFormat() is not implemented."); }

int FgQxWrapperImpl::setDmaAlignment(int, int) {
    throw std::runtime_error("setDmaAlignment() is not implemented.");
}

int FgQxWrapperImpl::getDmaAlignment(int) {
    throw std::runtime_error("getDmaAlignment() is not implemented.");
}
