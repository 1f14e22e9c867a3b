#include "console/conformance/ValueBytes.h"

#include "platform/ParameterValues.h"

#include <algorithm>
#include <cstring>
#include <string>

namespace orbctl {

namespace {

constexpr std::size_t longestText = 16384;
constexpr int nobodysType = 77;

template <typename Record>
void prepare(GuardedBuffer& buffer, std::uint32_t element) {
    Record record{};
    record.index = element;
    buffer.store(record);
}

GuardedBuffer encodedText(const std::string& text) {
    GuardedBuffer buffer(text.size() + 1);
    std::memcpy(buffer.data(), text.c_str(), text.size() + 1);
    return buffer;
}

template <typename Stored, typename Value>
GuardedBuffer encodedAs(Value value) {
    GuardedBuffer buffer(sizeof(Stored));
    buffer.store(static_cast<Stored>(value));
    return buffer;
}

template <typename Record, typename Value>
GuardedBuffer encodedElement(Value value) {
    Record record{};
    record.value = value;
    GuardedBuffer buffer(sizeof record);
    buffer.store(record);
    return buffer;
}

std::string textIn(const GuardedBuffer& buffer) {
    return std::string(buffer.text(), strnlen(buffer.text(), buffer.size()));
}

} // namespace

const std::vector<int>& typeCodes() {
    static const std::vector<int> codes = {untypedValue, kavo::type::unsigned32, kavo::type::signed64,
                                           kavo::type::unsigned64, nobodysType};
    return codes;
}

std::size_t valueBytes(const Parameter& parameter) {
    switch (parameter.kind) {
    case ValueKind::unsigned64:
    case ValueKind::signed64:
        return sizeof(std::uint64_t);
    case ValueKind::floating64:
        return sizeof(double);
    case ValueKind::text:
        return longestText;
    case ValueKind::unsignedField:
    case ValueKind::signedField:
        return sizeof(FieldParameterInt_s);
    case ValueKind::floatingField:
        return sizeof(FieldParameterDouble_s);
    default:
        return sizeof(std::uint32_t);
    }
}

std::size_t usedBytes(const Parameter& parameter, const GuardedBuffer& buffer) {
    return parameter.kind == ValueKind::text ? std::min(textIn(buffer).size() + 1, buffer.size())
                                             : valueBytes(parameter);
}

void prepareElement(GuardedBuffer& buffer, const Parameter& parameter, std::uint32_t element) {
    if (parameter.kind == ValueKind::floatingField)
        prepare<FieldParameterDouble_s>(buffer, element);
    else if (parameter.isField())
        prepare<FieldParameterInt_s>(buffer, element);
}

std::uint32_t elementIndex(const Parameter& parameter, const GuardedBuffer& buffer) {
    return parameter.kind == ValueKind::floatingField ? buffer.load<FieldParameterDouble_s>().index
                                                      : buffer.load<FieldParameterInt_s>().index;
}

ParameterValue decoded(const Parameter& parameter, const GuardedBuffer& buffer) {
    switch (parameter.kind) {
    case ValueKind::signed32:
    case ValueKind::signedField:
    case ValueKind::enumeration:
        return std::int64_t{buffer.load<std::int32_t>()};
    case ValueKind::unsigned64:
        return buffer.load<std::uint64_t>();
    case ValueKind::signed64:
        return buffer.load<std::int64_t>();
    case ValueKind::floating32:
        return static_cast<double>(buffer.load<float>());
    case ValueKind::floating64:
    case ValueKind::floatingField:
        return buffer.load<double>();
    case ValueKind::text:
        return textIn(buffer);
    default:
        return std::uint64_t{buffer.load<std::uint32_t>()};
    }
}

GuardedBuffer encoded(const Parameter& parameter, const ParameterValue& value) {
    switch (parameter.kind) {
    case ValueKind::signed32:
    case ValueKind::enumeration:
        return encodedAs<std::int32_t>(std::get<std::int64_t>(value));
    case ValueKind::unsigned64:
        return encodedAs<std::uint64_t>(std::get<std::uint64_t>(value));
    case ValueKind::signed64:
        return encodedAs<std::int64_t>(std::get<std::int64_t>(value));
    case ValueKind::floating32:
        return encodedAs<float>(std::get<double>(value));
    case ValueKind::floating64:
        return encodedAs<double>(std::get<double>(value));
    case ValueKind::text:
        return encodedText(std::get<std::string>(value));
    case ValueKind::floatingField:
        return encodedElement<FieldParameterDouble_s>(std::get<double>(value));
    case ValueKind::unsignedField:
        return encodedElement<FieldParameterInt_s>(
            static_cast<std::uint32_t>(std::get<std::uint64_t>(value)));
    case ValueKind::signedField:
        return encodedElement<FieldParameterInt_s>(static_cast<std::uint32_t>(std::get<std::int64_t>(value)));
    default:
        return encodedAs<std::uint32_t>(std::get<std::uint64_t>(value));
    }
}

GuardedBuffer widened(const Parameter& parameter, const ParameterValue& value) {
    const std::vector<unsigned char> bytes = encoded(parameter, value).bytes();
    GuardedBuffer buffer(std::max(bytes.size(), sizeof(std::uint64_t)));
    std::memset(buffer.data(), 0, buffer.size());
    std::memcpy(buffer.data(), bytes.data(), bytes.size());
    return buffer;
}

} // namespace orbctl
