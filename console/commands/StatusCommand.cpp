#include "console/commands/Commands.h"

#include "console/Arguments.h"
#include "console/CameraStatus.h"
#include "console/ErrorText.h"
#include "console/NumberText.h"
#include "console/ParameterCatalogue.h"
#include "console/ParameterJson.h"
#include "console/PortChoice.h"
#include "console/Session.h"
#include "console/TextTable.h"
#include "console/ValueText.h"

namespace orbctl {

namespace {

/// A status parameter of one port as it stands.
struct StatusReading {
    Parameter parameter;
    Reading reading;

    std::uint32_t number() const { return static_cast<std::uint32_t>(numberOf(reading.value)); }
};

struct PortStatus {
    PortStatus(const AppletHandle& handle, unsigned portNumber)
        : applet(handle), catalogue(handle, portNumber), port(portNumber) {}

    StatusReading read(const char* name) const {
        const Parameter& parameter = catalogue.find(name);
        return {parameter, readParameter(applet, parameter)};
    }

    const AppletHandle& applet;
    const ParameterCatalogue catalogue;
    const unsigned port;
    const StatusReading fillLevel = read("FG_FILLLEVEL");
    const StatusReading overflow = read("FG_OVERFLOW");
    const StatusReading camera = read("FG_CAMSTATUS");
    const StatusReading extended = read("FG_CAMSTATUS_EXTENDED");
};

class StatusCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        mPort.declare(arguments);
        arguments.flag("--json", mJson, "write JSON");
    }

    ExitStatus run(Session& session) override {
        mJsonText.beginArray();
        for (const unsigned port : mPort.ports()) {
            const PortStatus status(session.applet(), port);
            report(session, status);
            if (mJson)
                addJson(status);
            else
                print(session, status);
        }
        if (mJson)
            session.output() << mJsonText.endArray().text();
        return mStatus;
    }

  private:
    /// Tells what could not be read.
    void report(Session& session, const PortStatus& status) {
        for (const StatusReading* each :
             {&status.fillLevel, &status.overflow, &status.camera, &status.extended}) {
            if (each->reading.isGood())
                continue;
            mStatus = ExitStatus::refused;
            session.messages() << "orbctl: " << portPrefix(mPort.ports(), status.port)
                               << refusedRead(each->parameter, each->reading.code) << '\n';
        }
    }

    void print(Session& session, const PortStatus& status) const {
        const Terminal& terminal = session.outputTerminal();
        session.output() << (status.port == mPort.ports().front() ? "" : "\n")
                         << terminal.bold("Port " + textOf(std::uint64_t{status.port})) << '\n';
        TextTable facts(2);
        facts.addRow(
            {"Fill level", text(status.fillLevel, numberText(status.fillLevel.reading.value) + " %")});
        facts.addRow({"Overflow", text(status.overflow, status.overflow.number() == 0
                                                            ? "no"
                                                            : terminal.error("yes, pictures were lost"))});
        facts.addRow(
            {"Camera", text(status.camera,
                            status.camera.number() != 0 ? "connected" : terminal.warning("not connected"))});
        facts.addRow({"Extended", text(status.extended, hexadecimalText(status.extended.number(), 2))});
        facts.print(session.output());
        if (status.extended.reading.isGood())
            printBits(session, status.extended.number());
    }

    static std::string text(const StatusReading& status, const std::string& good) {
        return status.reading.isGood() ? good : readableText(status.parameter, status.reading);
    }

    static void printBits(Session& session, std::uint32_t status) {
        TextTable bits(4);
        for (const CameraStatusBit& bit : cameraStatusBits())
            bits.addRow({"bit " + textOf(std::uint64_t{bit.bit}), isSet(status, bit) ? "1" : "0", bit.name});
        bits.addRow(
            {"bits 6-7", textOf(std::uint64_t{fillBand(status)}), "fill level " + fillBandText(status)});
        for (const unsigned bit : unnamedBits(status))
            bits.addRow({"bit " + textOf(std::uint64_t{bit}), "1", "without a name"});
        bits.print(session.output());
    }

    void addJson(const PortStatus& status) {
        mJsonText.beginObject().member("port", status.port);
        add("fillLevel", status.fillLevel);
        add("overflow", status.overflow);
        add("camera", status.camera);
        add("extended", status.extended);
        if (status.extended.reading.isGood())
            addBits(status.extended.number());
        mJsonText.endObject();
    }

    void add(const char* name, const StatusReading& status) {
        mJsonText.name(name).beginObject();
        writeReading(mJsonText, status.parameter, status.reading);
        mJsonText.endObject();
    }

    void addBits(std::uint32_t status) {
        mJsonText.name("bits").beginObject();
        for (const CameraStatusBit& bit : cameraStatusBits())
            mJsonText.member(bit.key, isSet(status, bit));
        mJsonText.member("fillBand", fillBand(status)).endObject();
    }

    PortChoice mPort{"both"};
    bool mJson = false;
    JsonWriter mJsonText;
    ExitStatus mStatus = ExitStatus::done;
};

} // namespace

std::unique_ptr<Command> makeStatusCommand() { return std::make_unique<StatusCommand>(); }

} // namespace orbctl
