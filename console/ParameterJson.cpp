#include "console/ParameterJson.h"

#include "console/ErrorText.h"
#include "console/ValueText.h"

namespace orbctl {

namespace {

void writeNumber(JsonWriter& json, std::string_view name, const ParameterValue& value) {
    json.name(name);
    std::visit([&](const auto& held) { json.value(held); }, value);
}

void writeCategory(JsonWriter& json, const Parameter& parameter) {
    json.name("category").beginArray();
    for (const std::string& group : parameter.category)
        json.value(group);
    json.endArray();
}

void writeEntries(JsonWriter& json, const Parameter& parameter) {
    json.name("entries").beginArray();
    for (const EnumerationEntry& entry : parameter.entries)
        json.beginObject()
            .member("symbol", entry.symbol)
            .member("displayName", entry.displayName)
            .member("value", entry.value)
            .endObject();
    json.endArray();
}

void writeLimits(JsonWriter& json, const Parameter& parameter) {
    writeNumber(json, "from", parameter.limits.from);
    writeNumber(json, "to", parameter.limits.to);
    if (hasStep(parameter))
        writeNumber(json, "step", parameter.limits.step);
}

} // namespace

void writeReading(JsonWriter& json, const Parameter& parameter, const Reading& reading) {
    if (!reading.isGood()) {
        json.name("error").beginObject();
        json.member("code", reading.code).member("text", meaningOf(reading.code)).endObject();
        return;
    }
    writeNumber(json, "value", reading.value);
    if (parameter.kind == ValueKind::enumeration)
        json.member("symbol", plainText(parameter, reading.value));
}

void writeIdentity(JsonWriter& json, const Parameter& parameter) {
    json.member("name", parameter.name).member("id", parameter.id).member("port", parameter.port);
}

void writeDescription(JsonWriter& json, const Parameter& parameter) {
    writeIdentity(json, parameter);
    if (!parameter.isDescribed)
        return;
    json.member("displayName", parameter.displayName);
    writeCategory(json, parameter);
    json.member("kind", kindText(parameter.kind));
    json.member("readable", parameter.isReadable()).member("writable", parameter.isWritable());
    json.member("changeable", (parameter.accessFlags & 4) != 0);
    if (!parameter.unit.empty())
        json.member("unit", parameter.unit);
    if (!parameter.fileFilter.empty())
        json.member("fileFilter", parameter.fileFilter);
    if (parameter.isField())
        json.member("elements", parameter.elementCount);
    if (parameter.hasLimits)
        writeLimits(json, parameter);
    if (parameter.kind == ValueKind::enumeration)
        writeEntries(json, parameter);
}

} // namespace orbctl
