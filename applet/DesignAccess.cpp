// What the handlers have in common: access to design parameters through the runtime, caches, registry limits.

#include "applet/AppletWrapper.h"
#include "grabber_basis/SharedField.h"

#include <cstring>

namespace error = kavo::error;

int FgQxWrapperImpl::setDesignParameter(int id, const void* value, int dmaIndex, int type) {
    if (value == nullptr) {
        return error::invalidParameter;
    }
    const auto function = wrapperFg().DLL_Fg_setParameterWithType;
    return function != nullptr && grabcoreFg() != nullptr
               ? function(grabcoreFg(), id, value, static_cast<unsigned>(dmaIndex), type)
               : error::notAvailable;
}

int FgQxWrapperImpl::getDesignParameter(int id, void* value, int dmaIndex, int type) {
    if (value == nullptr) {
        return error::invalidParameter;
    }
    const auto function = wrapperFg().DLL_Fg_getParameterWithType;
    return function != nullptr && grabcoreFg() != nullptr
               ? function(grabcoreFg(), id, value, static_cast<unsigned>(dmaIndex), type)
               : error::notAvailable;
}

int FgQxWrapperImpl::writeDesignTyped(int port, const DesignParameter& parameter, const void* value,
                                      int type) {
    return setDesignParameter(this->*parameter.id[static_cast<unsigned>(port)], value, port, type);
}

int FgQxWrapperImpl::writeDesign(int port, const DesignParameter& parameter, std::uint64_t value) {
    return writeDesignTyped(port, parameter, &value, kavo::type::unsigned32);
}

int FgQxWrapperImpl::writeLevel(int port, const DesignParameter& parameter, bool level) {
    return writeDesignTyped(port, parameter, level ? &constOne : &constZero, kavo::type::unsigned32);
}

int FgQxWrapperImpl::writeDesignInOrder(int port, std::initializer_list<DesignWrite> writes) {
    for (const auto& [parameter, value] : writes) {
        if (const int code = writeDesign(port, parameter, value); code != error::ok) {
            return code;
        }
    }
    return error::ok;
}

int FgQxWrapperImpl::readDesignTyped(int port, const DesignParameter& parameter, void* value, int type) {
    return getDesignParameter(this->*parameter.id[static_cast<unsigned>(port)], value, port, type);
}

int FgQxWrapperImpl::readDesign(int port, const DesignParameter& parameter, unsigned* out) {
    // The runtime may fill 64 bits.
    std::uint64_t word = 0;
    const int code = readDesignTyped(port, parameter, &word, kavo::type::unsigned32);
    if (code == error::ok) {
        *out = static_cast<unsigned>(word);
    }
    return code;
}

int FgQxWrapperImpl::readConstant(unsigned value, unsigned* out) { return readCache(value, out); }

int FgQxWrapperImpl::readCache(unsigned value, unsigned* out) {
    std::memcpy(out, &value, sizeof value);
    return error::ok;
}

int FgQxWrapperImpl::readCache(double value, double* out) {
    std::memcpy(out, &value, sizeof value);
    return error::ok;
}

int FgQxWrapperImpl::readCache(const std::string& value, char* out) {
    std::memcpy(out, value.c_str(), value.size() + 1);
    return error::ok;
}

int FgQxWrapperImpl::commitPlain(int port, unsigned& cache, unsigned value,
                                 const DesignParameter& parameter) {
    return commit(cache, value, [&] { return writeDesign(port, parameter, value); });
}

int FgQxWrapperImpl::commitEnumerated(int port, unsigned& cache, unsigned value, const Enumeration& allowed,
                                      const DesignParameter& parameter) {
    return allowed.contains(value) ? commitPlain(port, cache, value, parameter) : error::outOfRange;
}

// ---- the registry

RegisterInfo* FgQxWrapperImpl::description(int port, int id) const {
    const auto records = register_info_map.find(port);
    if (records == register_info_map.end()) {
        return nullptr;
    }
    const auto record = records->second.find(id);
    return record != records->second.end() ? record->second : nullptr;
}

void FgQxWrapperImpl::setLowerLimit(int port, int id, unsigned from) {
    if (RegisterInfo* record = description(port, id); record != nullptr) {
        kavo::shared::store(record->u.uiReg.from, from);
    }
}

void FgQxWrapperImpl::setUpperLimit(int port, int id, unsigned to) {
    if (RegisterInfo* record = description(port, id); record != nullptr) {
        kavo::shared::store(record->u.uiReg.to, to);
    }
}

void FgQxWrapperImpl::setAccess(int port, int id, int flags) {
    if (RegisterInfo* record = description(port, id); record != nullptr) {
        kavo::shared::store(record->accessFlags, flags);
    }
}
