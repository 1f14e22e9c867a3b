#include "console/PortChoice.h"

#include "console/AppletHandle.h"
#include "console/Arguments.h"
#include "console/Failure.h"
#include "console/NumberText.h"

namespace orbctl {

void PortChoice::declare(Arguments& arguments) {
    arguments.choice("-p,--port", mText, {"0", "1", "both"}, "camera port");
}

std::vector<unsigned> PortChoice::ports() const {
    std::vector<unsigned> ports;
    for (unsigned port = 0; port < AppletHandle::numberOfPorts; ++port)
        if (mText == "both" || mText == textOf(std::uint64_t{port}))
            ports.push_back(port);
    return ports;
}

unsigned PortChoice::onlyPort(const std::string& reason) const {
    const std::vector<unsigned> chosen = ports();
    if (chosen.size() > 1)
        throw Failure(ExitStatus::usage, reason + "; give --port 0 or --port 1");
    return chosen.front();
}

std::string portPrefix(unsigned port) { return "port " + textOf(std::uint64_t{port}) + ": "; }

std::string portPrefix(const std::vector<unsigned>& ports, unsigned port) {
    return ports.size() < 2 ? "" : portPrefix(port);
}

} // namespace orbctl
