#include "console/AppletHandle.h"

#include "console/ErrorText.h"
#include "console/NumberText.h"
#include "platform/ErrorCodes.h"
#include "platform/ParameterIds.h"

#include <vector>

namespace orbctl {

namespace {

/// Opens the library once more, so that the loader tells what is wrong with it.
void throwLoaderReason(const std::string& applet) { HostLibrary::open(applet, "applet"); }

/// Descriptions and file names stay far below this; the applet writes them without knowing the size.
constexpr std::size_t textBufferBytes = 16384;

Failure openingFailure(unsigned board, int code) {
    const bool isRefusal = code == kavo::error::initialisationFailed;
    return {isRefusal ? ExitStatus::refused : ExitStatus::notFound,
            "board " + textOf(std::uint64_t{board}) + " cannot be opened: " + withCode(code)};
}

} // namespace

AppletHandle::AppletHandle(const HostLibrary& runtime, const std::string& applet, unsigned board, bool slave)
    : mRuntime(runtime) {
    mFunctions.bind(mRuntime);
    int code = 0;
    mHandle = mFunctions.openBoard(applet.c_str(), board, slave ? 1 : 0, &code);
    if (mHandle == nullptr) {
        throwLoaderReason(applet);
        throw openingFailure(board, code);
    }
    if (mFunctions.appletLibrary.isBound())
        mFunctions.bind(HostLibrary::borrow(mFunctions.appletLibrary(mHandle), applet));
}

AppletHandle::~AppletHandle() {
    if (mFunctions.freeGrabber.isBound())
        mFunctions.freeGrabber(mHandle);
}

int AppletHandle::set(int id, const void* value, unsigned port, int type) const {
    return mFunctions.setParameter(mHandle, id, value, port, type);
}

int AppletHandle::get(int id, void* value, unsigned port, int type) const {
    return mFunctions.getParameter(mHandle, id, value, port, type);
}

std::string AppletHandle::description(const std::string& parameterName, unsigned port) const {
    std::vector<char> text(textBufferBytes);
    if (parameterName.size() >= text.size())
        return "";
    parameterName.copy(text.data(), parameterName.size());
    const int code = get(parameterDescriptionQuery, text.data(), port, 0);
    return code == kavo::error::ok ? std::string(text.data()) : "";
}

} // namespace orbctl
