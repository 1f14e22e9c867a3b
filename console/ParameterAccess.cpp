#include "console/ParameterAccess.h"

#include "console/AppletHandle.h"
#include "platform/ErrorCodes.h"
#include "platform/ParameterValues.h"

#include <vector>

namespace orbctl {

namespace {

/// The host has type codes for whole numbers only; other kinds are told by the parameter's id.
constexpr int untyped = 0;
constexpr std::size_t textBufferBytes = 16384;

/// One parameter of one applet, so that the accesses below stay short.
class Access {
  public:
    Access(const AppletHandle& applet, const Parameter& parameter) : mApplet(applet), mParameter(parameter) {}

    template <typename Stored, typename Wide>
    Reading read(int type) const {
        alignas(8) Stored buffer[8 / sizeof(Stored)] = {};
        const int code = mApplet.get(mParameter.id, buffer, mParameter.port, type);
        return {code, static_cast<Wide>(buffer[0])};
    }

    template <typename Record, typename Wide>
    Reading readElement(std::uint32_t element) const {
        Record record{};
        record.index = element;
        const int code = mApplet.get(mParameter.id, &record, mParameter.port, untyped);
        return {code, static_cast<Wide>(record.value)};
    }

    Reading readText() const {
        std::vector<char> text(textBufferBytes);
        const int code = mApplet.get(mParameter.id, text.data(), mParameter.port, untyped);
        return {code, std::string(text.data())};
    }

    template <typename Stored, typename Wide>
    int write(const ParameterValue& value, int type) const {
        alignas(8) const Stored buffer[8 / sizeof(Stored)] = {static_cast<Stored>(std::get<Wide>(value))};
        return mApplet.set(mParameter.id, buffer, mParameter.port, type);
    }

    template <typename Record, typename Stored, typename Wide>
    int writeElement(const ParameterValue& value, std::uint32_t element) const {
        Record record{};
        record.index = element;
        record.value = static_cast<Stored>(std::get<Wide>(value));
        return mApplet.set(mParameter.id, &record, mParameter.port, kavo::type::fieldEntry);
    }

    int writeText(const ParameterValue& value) const {
        return mApplet.set(mParameter.id, std::get<std::string>(value).c_str(), mParameter.port, untyped);
    }

  private:
    const AppletHandle& mApplet;
    const Parameter& mParameter;
};

} // namespace

Reading readParameter(const AppletHandle& applet, const Parameter& parameter, std::uint32_t element) {
    const Access access(applet, parameter);
    switch (parameter.kind) {
    case ValueKind::unsigned32:
        return access.read<std::uint32_t, std::uint64_t>(kavo::type::unsigned32);
    case ValueKind::signed32:
    case ValueKind::enumeration:
        return access.read<std::int32_t, std::int64_t>(kavo::type::unsigned32);
    case ValueKind::unsigned64:
        return access.read<std::uint64_t, std::uint64_t>(kavo::type::unsigned64);
    case ValueKind::signed64:
        return access.read<std::int64_t, std::int64_t>(kavo::type::signed64);
    case ValueKind::floating32:
        return access.read<float, double>(untyped);
    case ValueKind::floating64:
        return access.read<double, double>(untyped);
    case ValueKind::text:
        return access.readText();
    case ValueKind::unsignedField:
        return access.readElement<FieldParameterInt_s, std::uint64_t>(element);
    case ValueKind::signedField: {
        Reading reading = access.readElement<FieldParameterInt_s, std::uint64_t>(element);
        reading.value = std::int64_t{static_cast<std::int32_t>(std::get<std::uint64_t>(reading.value))};
        return reading;
    }
    case ValueKind::floatingField:
        return access.readElement<FieldParameterDouble_s, double>(element);
    case ValueKind::unsupported:
        break;
    }
    return {kavo::error::notSupported, {}};
}

int writeParameter(const AppletHandle& applet, const Parameter& parameter, const ParameterValue& value,
                   std::uint32_t element) {
    const Access access(applet, parameter);
    switch (parameter.kind) {
    case ValueKind::unsigned32:
        return access.write<std::uint32_t, std::uint64_t>(value, kavo::type::unsigned32);
    case ValueKind::signed32:
    case ValueKind::enumeration:
        return access.write<std::int32_t, std::int64_t>(value, kavo::type::unsigned32);
    case ValueKind::unsigned64:
        return access.write<std::uint64_t, std::uint64_t>(value, kavo::type::unsigned64);
    case ValueKind::signed64:
        return access.write<std::int64_t, std::int64_t>(value, kavo::type::signed64);
    case ValueKind::floating32:
        return access.write<float, double>(value, untyped);
    case ValueKind::floating64:
        return access.write<double, double>(value, untyped);
    case ValueKind::text:
        return access.writeText(value);
    case ValueKind::unsignedField:
        return access.writeElement<FieldParameterInt_s, std::uint32_t, std::uint64_t>(value, element);
    case ValueKind::signedField:
        return access.writeElement<FieldParameterInt_s, std::uint32_t, std::int64_t>(value, element);
    case ValueKind::floatingField:
        return access.writeElement<FieldParameterDouble_s, double, double>(value, element);
    case ValueKind::unsupported:
        break;
    }
    return kavo::error::notSupported;
}

} // namespace orbctl
