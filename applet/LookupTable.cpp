// The 12-bit lookup table of a port: computed from the processing values, loaded from a file, or set entry by
// entry.

#include "applet/AppletWrapper.h"
#include "applet/ProcessingTable.h"
#include "applet/StandardParameterTable.h"
#include "appletwrappers-baselib/Fg_LutFileParser.h"

#include <algorithm>

namespace error = kavo::error;
using namespace catalogue;

namespace {

constexpr const char* graySection = "[gray]";
constexpr unsigned tableRecordId = 3;

bool isEmpty(const char* path) { return path == nullptr || *path == '\0'; }

} // namespace

int FgQxWrapperImpl::writeLut(int port, const TableEntryValue::Stored& previous) {
    TableEntryValue::Stored& table = cache_FG_LUT_VALUE(port);
    const FieldAccess field{kavo::type::unsigned32, 0, lookupTableSize, table.data()};
    const int code =
        writeDesignTyped(port, design::LookupTable_LookupTable_LUTcontent, &field, kavo::type::wholeField);
    if (code != error::ok) {
        table = previous;
    }
    return code;
}

int FgQxWrapperImpl::updateLutProcessing(int port) {
    if (cache_FG_LUT_TYPE(port) != lookupTableProcessing) {
        return error::ok;
    }
    const TableEntryValue::Stored previous = cache_FG_LUT_VALUE(port);
    const Processing processing{cache_FG_PROCESSING_OFFSET(port), cache_FG_PROCESSING_GAIN(port),
                                cache_FG_PROCESSING_GAMMA(port),
                                cache_FG_PROCESSING_INVERT(port) == switchedOn};
    processing.compute(cache_FG_LUT_VALUE(port));
    return writeLut(port, previous);
}

int FgQxWrapperImpl::loadLutFile(int port, const char* path) {
    if (cache_FG_LUT_TYPE(port) != lookupTableCustom || isEmpty(path)) {
        return error::ok;
    }
    Fg_LutFileParser parser(nullptr);
    if (!parser.checkFileExist(path)) {
        return error::fileNotFound;
    }
    LookupTable_s table;
    if (parser.getLutFromFile(path, table, graySection) != 0) {
        return error::fileAccessFailed;
    }
    const TableEntryValue::Stored previous = cache_FG_LUT_VALUE(port);
    const auto count = std::min<std::size_t>(table.nrOfElements, previous.size());
    std::copy_n(table.lut.get(), count, cache_FG_LUT_VALUE(port).begin());
    return writeLut(port, previous);
}

int FgQxWrapperImpl::saveLutFile(int port, const char* path) {
    if (isEmpty(path)) {
        return error::ok;
    }
    LookupTable_s table;
    table.id = tableRecordId;
    table.nrOfElements = lookupTableSize;
    table.lut = std::make_unique<std::uint32_t[]>(lookupTableSize);
    std::copy_n(cache_FG_LUT_VALUE(port).begin(), lookupTableSize, table.lut.get());
    Fg_LutFileParser parser(nullptr);
    const bool isSaved = parser.saveLutToFile(path, table) == 0 && !parser.hasWriteFailed();
    return isSaved ? error::ok : error::fileAccessFailed;
}

// ---- parameters

int FgQxWrapperImpl::setLutType(int port, unsigned value) {
    if (!enumerations::AcqLutTypes.contains(value)) {
        return error::outOfRange;
    }
    const int code = commit(cache_FG_LUT_TYPE(port), value, [&] {
        return value == lookupTableProcessing ? updateLutProcessing(port)
                                              : loadLutFile(port, cache_FG_LUT_CUSTOM_FILE(port).c_str());
    });
    if (code == error::ok) {
        const auto access = [value](LookupTableType type) {
            return value == type ? accessReadWriteChange : accessReadOnly;
        };
        setAccess(port, FG_LUT_CUSTOM_FILE, access(lookupTableCustom));
        for (const int id :
             {FG_PROCESSING_GAIN, FG_PROCESSING_GAMMA, FG_PROCESSING_OFFSET, FG_PROCESSING_INVERT}) {
            setAccess(port, id, access(lookupTableProcessing));
        }
    }
    return code;
}

int FgQxWrapperImpl::commitProcessing(int port, double& cache, double value, const Limits& limits) {
    if (!limits.contain(value)) {
        return error::outOfRange;
    }
    return commit(cache, value, [&] { return updateLutProcessing(port); });
}

int FgQxWrapperImpl::setProcessingOffset(int port, double value) {
    return commitProcessing(port, cache_FG_PROCESSING_OFFSET(port), value, limitsOf<FG_PROCESSING_OFFSET>());
}

int FgQxWrapperImpl::setProcessingGain(int port, double value) {
    return commitProcessing(port, cache_FG_PROCESSING_GAIN(port), value, limitsOf<FG_PROCESSING_GAIN>());
}

int FgQxWrapperImpl::setProcessingGamma(int port, double value) {
    return commitProcessing(port, cache_FG_PROCESSING_GAMMA(port), value, limitsOf<FG_PROCESSING_GAMMA>());
}

int FgQxWrapperImpl::setProcessingInvert(int port, unsigned value) {
    if (!enumerations::OnOff.contains(value)) {
        return error::outOfRange;
    }
    return commit(cache_FG_PROCESSING_INVERT(port), value, [&] { return updateLutProcessing(port); });
}

int FgQxWrapperImpl::setLutCustomFile(int port, const char* path) {
    if (path == nullptr) {
        return error::outOfRange;
    }
    return commit(cache_FG_LUT_CUSTOM_FILE(port), std::string(path), [&] { return loadLutFile(port, path); });
}

int FgQxWrapperImpl::setLutSaveFile(int port, const char* path) {
    if (path == nullptr) {
        return error::outOfRange;
    }
    return commit(cache_FG_LUT_SAVE_FILE(port), std::string(path), [&] { return saveLutFile(port, path); });
}

int FgQxWrapperImpl::setLutEntry(int port, const FieldParameterInt_s* entry) {
    if (entry == nullptr || entry->index >= lookupTableSize || entry->value > largestPixelValue) {
        return error::outOfRange;
    }
    TableEntryValue::Stored& table = cache_FG_LUT_VALUE(port);
    FieldParameterInt_s previous{0, entry->index};
    getFieldCache(table.data(), &previous);
    setFieldCache(table.data(), entry);
    const int code =
        writeDesignTyped(port, design::LookupTable_LookupTable_LUTcontent, entry, kavo::type::fieldEntry);
    if (code != error::ok) {
        setFieldCache(table.data(), &previous);
    }
    return code;
}

int FgQxWrapperImpl::readLutEntry(int port, FieldParameterInt_s* entry) {
    if (entry->index >= lookupTableSize) {
        return error::invalidParameter;
    }
    getFieldCache(cache_FG_LUT_VALUE(port).data(), entry);
    return error::ok;
}
