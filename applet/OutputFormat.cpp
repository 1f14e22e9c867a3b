// How processed pixels are packed into the host's buffers.

#include "applet/AppletWrapper.h"

namespace error = kavo::error;

int FgQxWrapperImpl::setFormat(int port, unsigned value) {
    if (!enumerations::FormatGray.contains(value)) {
        return error::outOfRange;
    }
    return commit(cache_FG_FORMAT(port), value, [&] {
        return writeDesign(port, design::OutputFormat_FG_FORMAT_SelectSource, value == formatGray8 ? 1 : 0);
    });
}

int FgQxWrapperImpl::setBitAlignment(int port, unsigned value) {
    return commitEnumerated(port, cache_FG_BITALIGNMENT(port), value, enumerations::AlignmentModesBoth,
                            design::OutputFormat_FG_BITALIGNMENT_Value);
}
