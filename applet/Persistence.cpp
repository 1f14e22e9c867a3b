// Default values, and the configuration files that save and restore the settings of both ports.

#include "applet/AppletWrapper.h"
#include "applet/PersistedKeys.h"
#include "grabber_basis/Fg_ConfigFileParser.h"

#include <vector>

namespace error = kavo::error;
using kavo::templates::platform::CriticalSectionGuard;

namespace {

/// Room for a path, which is all the text that a file holds.
constexpr std::size_t textCapacity = 1024;

using StoredValue = std::variant<unsigned, double, std::string>;

/// The value of a key in a port's section, or nothing when the file lacks it.
std::optional<unsigned> find(Fg_ConfigFileParser& parser, int port, const char* key, IntegerValue) {
    int value = 0;
    const bool found = parser.parseIntKeySection(port, key, &value) == 0;
    return found ? std::optional(static_cast<unsigned>(value)) : std::nullopt;
}

std::optional<double> find(Fg_ConfigFileParser& parser, int port, const char* key, RealValue) {
    double value = 0;
    const bool found = parser.parseDoubleKeySection(port, key, &value) == 0;
    return found ? std::optional(value) : std::nullopt;
}

std::optional<std::string> find(Fg_ConfigFileParser& parser, int port, const char* key, TextValue) {
    char value[textCapacity] = {};
    const bool found = parser.parseKeySection(port, key, value) == 0;
    return found ? std::optional<std::string>(value) : std::nullopt;
}

template <class Value>
Value kindOf(const KeyAccess<Value>&) {
    return {};
}

/// Calls the visitor with the kind of a key's value and the access to its parameter.
template <class Visitor>
auto visit(const PersistedKey& key, Visitor visitor) {
    return std::visit([&](const auto& access) { return visitor(kindOf(access), access); }, key.access);
}

/// The same for a key whose value is a number; texts are kept, never applied.
template <class Visitor>
void visitNumber(const PersistedKey& key, Visitor visitor) {
    if (const auto* integer = std::get_if<KeyAccess<IntegerValue>>(&key.access)) {
        visitor(IntegerValue{}, *integer);
    } else if (const auto* real = std::get_if<KeyAccess<RealValue>>(&key.access)) {
        visitor(RealValue{}, *real);
    }
}

void writeKey(Fg_ConfigFileParser& parser, const char* key, unsigned value) {
    parser.writeConfigFileIntKey(key, static_cast<int>(value));
}

void writeKey(Fg_ConfigFileParser& parser, const char* key, double value) {
    parser.writeConfigFileDoubleKey(key, value);
}

/// The keys of one port of an applet, each by its place in the table.
class PortKeys {
  public:
    PortKeys(FgQxWrapperImpl& applet, int port) : mApplet(applet), mPort(port) {}

    void applyDefault(const PersistedKey& key) {
        visitNumber(key, [&](auto, const auto& access) {
            if (access.appliedDefault) {
                // A value that is refused stays refused.
                static_cast<void>((mApplet.*access.write)(mPort, *access.appliedDefault));
            }
        });
    }

    void save(Fg_ConfigFileParser& parser, const PersistedKey& key) {
        visitNumber(key, [&](auto kind, const auto& access) {
            typename decltype(kind)::Stored value{};
            if ((mApplet.*access.read)(mPort, &value) == error::ok) {
                writeKey(parser, key.name, value);
            }
        });
        if (const auto* text = std::get_if<KeyAccess<TextValue>>(&key.access)) {
            parser.writeConfigFile(key.name, (mApplet.*text->cache)(mPort).c_str());
        }
    }

    StoredValue cached(const PersistedKey& key) {
        return visit(key,
                     [&](auto, const auto& access) { return StoredValue((mApplet.*access.cache)(mPort)); });
    }

    /// \param value  a StoredValue, copied or moved from
    template <class Given>
    void cache(const PersistedKey& key, Given&& value) {
        visit(key, [&](auto kind, const auto& access) {
            (mApplet.*access.cache)(mPort) =
                std::get<typename decltype(kind)::Stored>(std::forward<Given>(value));
        });
    }

    /// The value that a file has for a key, or nothing when it lacks it.
    std::optional<StoredValue> inFile(Fg_ConfigFileParser& parser, const PersistedKey& key) const {
        return visit(key, [&](auto kind, const auto&) -> std::optional<StoredValue> {
            auto value = find(parser, mPort, key.name, kind);
            return value ? std::optional(StoredValue(std::move(*value))) : std::nullopt;
        });
    }

    /// Writes a value with all its rules; the code of the write.
    int apply(const PersistedKey& key, const StoredValue& value) {
        int code = error::ok;
        visitNumber(key, [&](auto kind, const auto& access) {
            code = (mApplet.*access.write)(mPort, std::get<typename decltype(kind)::Stored>(value));
        });
        return code;
    }

  private:
    FgQxWrapperImpl& mApplet;
    int mPort;
};

/// The settings of one port as they are before a load. The table's own settings follow the table's type: when
/// the type is not applied, they go back with it. When an exception ends the load, everything goes back that
/// was not applied yet.
class BeforeLoad {
  public:
    explicit BeforeLoad(PortKeys& keys) : mKeys(keys) {
        for (const PersistedKey& key : PersistedKeys::all()) {
            mValues.emplace_back(mKeys.cached(key));
        }
    }
    // NOLINTNEXTLINE(bugprone-exception-escape): nothing but moves of what is there
    ~BeforeLoad() {
        for (std::size_t index = 0; mIsLoading && index < mValues.size(); ++index) {
            restore(index);
        }
    }
    BeforeLoad(const BeforeLoad&) = delete;
    BeforeLoad& operator=(const BeforeLoad&) = delete;

    void restore(std::size_t index) {
        if (mValues[index]) {
            mKeys.cache(PersistedKeys::all()[index], std::move(*mValues[index]));
            mValues[index].reset();
        }
    }

    void settleTableSettings(bool areApplied) {
        for (std::size_t index = 0; index < mValues.size(); ++index) {
            if (PersistedKeys::all()[index].pass == LoadPass::cacheOnly) {
                areApplied ? mValues[index].reset() : restore(index);
            }
        }
    }

    bool endLoad(bool hasAllKeys) {
        mIsLoading = false;
        return hasAllKeys;
    }

  private:
    PortKeys& mKeys;
    std::vector<std::optional<StoredValue>> mValues;
    bool mIsLoading = true;
};

} // namespace

void FgQxWrapperImpl::setDefaultValues() {
    const CriticalSectionGuard guard(&mParameterLock);
    for (const int port : {0, 1}) {
        PortKeys keys(*this, port);
        for (const PersistedKey& key : PersistedKeys::all()) {
            keys.applyDefault(key);
        }
    }
}

void FgQxWrapperImpl::saveConfig(Fg_ConfigFileParser& parser) {
    const CriticalSectionGuard guard(&mParameterLock);
    for (const int port : {0, 1}) {
        parser.writeConfigFileByPort(port);
        PortKeys keys(*this, port);
        for (const PersistedKey& key : PersistedKeys::all()) {
            if (key.pass != LoadPass::none) {
                keys.save(parser, key);
            }
        }
    }
}

bool FgQxWrapperImpl::loadConfig(Fg_ConfigFileParser& parser) {
    const CriticalSectionGuard guard(&mParameterLock);
    return loadPort(parser, 0) && loadPort(parser, 1);
}

bool FgQxWrapperImpl::loadPort(Fg_ConfigFileParser& parser, int port) {
    PortKeys keys(*this, port);
    BeforeLoad before(keys);
    const auto& all = PersistedKeys::all();
    std::vector<std::optional<StoredValue>> values(all.size());
    for (std::size_t index = 0; index < all.size(); ++index) {
        if (all[index].pass == LoadPass::both || all[index].pass == LoadPass::cacheOnly) {
            values[index] = keys.inFile(parser, all[index]);
            if (!values[index]) {
                return before.endLoad(false);
            }
            keys.cache(all[index], *values[index]);
        }
    }
    for (std::size_t index = 0; index < all.size(); ++index) {
        const PersistedKey& key = all[index];
        if (key.pass != LoadPass::both && key.pass != LoadPass::applyOnly) {
            continue;
        }
        if (key.pass == LoadPass::applyOnly) {
            values[index] = keys.inFile(parser, key);
            if (!values[index]) {
                return before.endLoad(false);
            }
        }
        // The setter must see what the hardware has: what it refuses stays, and orders depend on the old value.
        before.restore(index);
        const int code = keys.apply(key, *values[index]);
        if (key.id == FG_LUT_TYPE) {
            before.settleTableSettings(code == error::ok);
        }
    }
    return before.endLoad(true);
}
