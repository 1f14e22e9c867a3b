#include "grabber_basis/parameterInfo.h"

#include "platform/ErrorCodes.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <utility>

namespace {

constexpr bool isPort(int port) { return port >= 0 && port < Fg_ParameterInfo::portCount; }

constexpr std::size_t arrayLength(int nrOfElements) {
    return nrOfElements > 0 ? static_cast<std::size_t>(nrOfElements) : 0;
}

std::size_t bytesOf(const char* text) { return std::strlen(text) + 1; }

/// Null for a null text and without memory.
char* tryToCopyText(const char* text) {
    char* const copy = text == nullptr ? nullptr : new (std::nothrow) char[bytesOf(text)];
    if (copy != nullptr) {
        std::copy_n(text, bytesOf(text), copy);
    }
    return copy;
}

char* copyText(const char* text) {
    char* const copy = tryToCopyText(text);
    if (copy == nullptr && text != nullptr) {
        throw std::bad_alloc();
    }
    return copy;
}

void freeText(char*& text) {
    delete[] text;
    text = nullptr;
}

void freeTexts(char**& texts, int count) {
    for (std::size_t i = 0; texts != nullptr && i < arrayLength(count); ++i) {
        freeText(texts[i]);
    }
    delete[] texts;
    texts = nullptr;
}

void freePayload(RegisterInfo& record) {
    if (record.format == REG_FORMAT_ENUM) {
        EnumReg& entries = record.u.eReg;
        freeTexts(entries.enumNames, entries.nrOfElements);
        freeTexts(entries.enumDefName, entries.nrOfElements);
        delete[] entries.enumValues;
    } else if (record.format == REG_FORMAT_STRING) {
        freeText(record.u.sReg.FileExtension);
    } else if (record.format == REG_FORMAT_GROUP) {
        delete[] record.u.gReg.elements;
    }
}

void freeRecord(RegisterInfo* record) {
    freePayload(*record);
    freeText(record->name);
    freeText(record->parentName);
    freeText(record->parameterName);
    freeText(record->unit);
    delete record;
}

template <class Payload, class Limit>
void setLimits(Payload& payload, Limit from, Limit to, Limit steps) {
    payload.from = from;
    payload.to = to;
    payload.steps = steps;
}

template <class Payload, class Limit>
void setFieldLimits(Payload& payload, int nrOfElements, Limit from, Limit to) {
    payload.from = from;
    payload.to = to;
    payload.nrOfElements = static_cast<decltype(payload.nrOfElements)>(nrOfElements);
}

/// The old elements with one more place behind them.
std::unique_ptr<RegisterInfo* []> copyOneLonger(const GroupReg& group) {
    auto longer = std::make_unique<RegisterInfo*[]>(arrayLength(group.nrOfElements) + 1);
    std::copy_n(group.elements, arrayLength(group.nrOfElements), longer.get());
    return longer;
}

} // namespace

void Fg_ParameterInfo::RecordDeleter::operator()(RegisterInfo* record) const { freeRecord(record); }

Fg_ParameterInfo::Fg_ParameterInfo() {
    for (int port = 0; port < portCount; ++port) {
        init(port);
    }
}

Fg_ParameterInfo::~Fg_ParameterInfo() {
    for (int port = 0; port < portCount; ++port) {
        destroy(port);
    }
}

void Fg_ParameterInfo::init(int port) {
    if (isPort(port)) {
        destroy(port);
        mGlobRegInfo[port] = nullptr;
        allRegFinalized[port] = false;
    }
}

void Fg_ParameterInfo::destroy(int port) {
    if (isPort(port)) {
        std::for_each(allRegInfo[port].begin(), allRegInfo[port].end(), freeRecord);
        allRegInfo[port].clear();
    }
}

void Fg_ParameterInfo::finalize(int port) {
    if (isPort(port)) {
        allRegFinalized[port] = true;
    }
}

RegisterInfo* Fg_ParameterInfo::getRegisterInfo(int port) const {
    return isPort(port) ? mGlobRegInfo[port] : nullptr;
}

RegisterInfo* Fg_ParameterInfo::getNextRegisterInfo(const RegisterInfo* info, int port) const {
    return info == nullptr ? getRegisterInfo(port) : info->next;
}

bool Fg_ParameterInfo::acceptsRecords(int port) const { return isPort(port) && !allRegFinalized[port]; }

Fg_ParameterInfo::OwnedRecord Fg_ParameterInfo::makeRecord(REG_FORMAT format, int port, const char* name) {
    OwnedRecord record(new RegisterInfo());
    record->format = format;
    record->port = port;
    record->name = copyText(name);
    return record;
}

Fg_ParameterInfo::OwnedRecord Fg_ParameterInfo::makeParameter(REG_FORMAT format,
                                                              const Description& description) {
    OwnedRecord record = makeRecord(format, description.port, description.name);
    record->parameterName = copyText(description.parameterName);
    record->unit = copyText(description.unit);
    record->accessFlags = description.access;
    record->rangeFlags = description.range;
    record->visibilityFlags = description.visibility;
    record->id = description.id;
    return record;
}

RegisterInfo* Fg_ParameterInfo::own(OwnedRecord record) {
    allRegInfo[record->port].push_back(record.get());
    return record.release();
}

RegisterInfo* Fg_ParameterInfo::ownUnder(RegisterInfo& parent, OwnedRecord record) {
    GroupReg& group = parent.u.gReg;
    const bool joins = parent.format == REG_FORMAT_GROUP;
    auto elements = joins ? copyOneLonger(group) : nullptr;
    RegisterInfo* const owned = own(std::move(record));
    owned->index = group.autoIndex++;
    if (joins) {
        elements[arrayLength(group.nrOfElements++)] = owned;
        delete[] std::exchange(group.elements, elements.release());
    }
    return owned;
}

RegisterInfo* Fg_ParameterInfo::addTopLevelGroup(OwnedRecord group) {
    RegisterInfo* const owned = own(std::move(group));
    RegisterInfo*& head = mGlobRegInfo[owned->port];
    owned->next = head;
    if (head != nullptr) {
        head->previous = owned;
    }
    head = owned;
    return owned;
}

RegisterInfo* Fg_ParameterInfo::addGroupInfo(int port, RegisterInfo* parent, const char* name) {
    if (!acceptsRecords(port)) {
        return nullptr;
    }
    OwnedRecord group = makeRecord(REG_FORMAT_GROUP, port, name);
    if (parent == nullptr) {
        return addTopLevelGroup(std::move(group));
    }
    if (parent->format != REG_FORMAT_GROUP) {
        ownUnder(*parent, std::move(group));
        return nullptr;
    }
    group->depth = parent->depth + 1;
    group->parentName = copyText(parent->name);
    return ownUnder(*parent, std::move(group));
}

template <class SetPayload>
RegisterInfo* Fg_ParameterInfo::addParameter(REG_FORMAT format, const Description& description,
                                             SetPayload setPayload) {
    if (description.parent == nullptr || !acceptsRecords(description.port)) {
        return nullptr;
    }
    OwnedRecord record = makeParameter(format, description);
    setPayload(record->u);
    return ownUnder(*description.parent, std::move(record));
}

RegisterInfo* Fg_ParameterInfo::addInfoInt(RegisterInfo* parent, const char* name, const char* parameterName,
                                           int from, int to, int steps, int access, int range, int visibility,
                                           const char* unit, int id, int port) {
    return addParameter(REG_FORMAT_INT,
                        {parent, name, parameterName, access, range, visibility, unit, id, port},
                        [&](auto& payload) { setLimits(payload.iReg, from, to, steps); });
}

RegisterInfo* Fg_ParameterInfo::addInfoUInt(RegisterInfo* parent, const char* name, const char* parameterName,
                                            std::uint32_t from, std::uint32_t to, std::uint32_t steps,
                                            int access, int range, int visibility, const char* unit, int id,
                                            int port) {
    return addParameter(REG_FORMAT_UINT,
                        {parent, name, parameterName, access, range, visibility, unit, id, port},
                        [&](auto& payload) { setLimits(payload.uiReg, from, to, steps); });
}

RegisterInfo* Fg_ParameterInfo::addInfoInt64(RegisterInfo* parent, const char* name,
                                             const char* parameterName, std::int64_t from, std::int64_t to,
                                             std::int64_t steps, int access, int range, int visibility,
                                             const char* unit, int id, int port) {
    return addParameter(REG_FORMAT_INT64,
                        {parent, name, parameterName, access, range, visibility, unit, id, port},
                        [&](auto& payload) { setLimits(payload.iReg64, from, to, steps); });
}

RegisterInfo* Fg_ParameterInfo::addInfoUInt64(RegisterInfo* parent, const char* name,
                                              const char* parameterName, std::uint64_t from, std::uint64_t to,
                                              std::uint64_t steps, int access, int range, int visibility,
                                              const char* unit, int id, int port) {
    return addParameter(REG_FORMAT_UINT64,
                        {parent, name, parameterName, access, range, visibility, unit, id, port},
                        [&](auto& payload) {
                            setLimits(payload.iReg64, static_cast<std::int64_t>(from),
                                      static_cast<std::int64_t>(to), static_cast<std::int64_t>(steps));
                        });
}

RegisterInfo* Fg_ParameterInfo::addInfoDouble(RegisterInfo* parent, const char* name,
                                              const char* parameterName, double from, double to, double steps,
                                              int access, int range, int visibility, const char* unit, int id,
                                              int port) {
    return addParameter(REG_FORMAT_DOUBLE,
                        {parent, name, parameterName, access, range, visibility, unit, id, port},
                        [&](auto& payload) { setLimits(payload.dReg, from, to, steps); });
}

RegisterInfo* Fg_ParameterInfo::addInfoIntField(RegisterInfo* parent, const char* name,
                                                const char* parameterName, int nrOfElements, int from, int to,
                                                int /*steps*/, int access, int range, int visibility,
                                                const char* unit, int id, int port) {
    return addParameter(REG_FORMAT_INTFIELD,
                        {parent, name, parameterName, access, range, visibility, unit, id, port},
                        [&](auto& payload) { setFieldLimits(payload.ifReg, nrOfElements, from, to); });
}

RegisterInfo* Fg_ParameterInfo::addInfoUIntField(RegisterInfo* parent, const char* name,
                                                 const char* parameterName, int nrOfElements,
                                                 std::uint32_t from, std::uint32_t to,
                                                 std::uint32_t /*steps*/, int access, int range,
                                                 int visibility, const char* unit, int id, int port) {
    return addParameter(REG_FORMAT_UINTFIELD,
                        {parent, name, parameterName, access, range, visibility, unit, id, port},
                        [&](auto& payload) { setFieldLimits(payload.uifReg, nrOfElements, from, to); });
}

RegisterInfo* Fg_ParameterInfo::addInfoDoubleField(RegisterInfo* parent, const char* name,
                                                   const char* parameterName, int nrOfElements, double from,
                                                   double to, double /*steps*/, int access, int range,
                                                   int visibility, const char* unit, int id, int port) {
    return addParameter(REG_FORMAT_DOUBLEFIELD,
                        {parent, name, parameterName, access, range, visibility, unit, id, port},
                        [&](auto& payload) { setFieldLimits(payload.dfReg, nrOfElements, from, to); });
}

RegisterInfo* Fg_ParameterInfo::addInfoEnum(RegisterInfo* parent, const char* name, const char* parameterName,
                                            int nrOfElements, int access, int range, int visibility,
                                            const char* unit, int id, int port) {
    return addParameter(REG_FORMAT_ENUM,
                        {parent, name, parameterName, access, range, visibility, unit, id, port},
                        [&](auto& payload) {
                            EnumReg& entries = payload.eReg;
                            entries.nrOfElements = nrOfElements;
                            entries.enumNames = new char*[arrayLength(nrOfElements)]();
                            entries.enumValues = new int[arrayLength(nrOfElements)]();
                            entries.enumDefName = new char*[arrayLength(nrOfElements)]();
                        });
}

int Fg_ParameterInfo::addEnumNameValue(RegisterInfo* info, int index, const char* name, int value,
                                       const char* defName) {
    EnumReg& entries = info->u.eReg;
    freeText(entries.enumNames[index]);
    freeText(entries.enumDefName[index]);
    entries.enumNames[index] = tryToCopyText(name);
    if (entries.enumNames[index] == nullptr && name != nullptr) {
        return kavo::error::bufferTooSmall;
    }
    entries.enumValues[index] = value;
    entries.enumDefName[index] = copyText(defName);
    return kavo::error::ok;
}

RegisterInfo* Fg_ParameterInfo::addInfoString(RegisterInfo* parent, const char* name,
                                              const char* parameterName, const char* fileExtension,
                                              int access, int range, int visibility, const char* unit, int id,
                                              int port) {
    return addParameter(REG_FORMAT_STRING,
                        {parent, name, parameterName, access, range, visibility, unit, id, port},
                        [&](auto& payload) { payload.sReg.FileExtension = copyText(fileExtension); });
}
