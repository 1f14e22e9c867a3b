#include "console/commands/Commands.h"

#include "console/Arguments.h"
#include "console/ErrorText.h"
#include "console/NumberText.h"
#include "console/ParameterAccess.h"
#include "console/ParameterCatalogue.h"
#include "console/Session.h"
#include "console/Setting.h"
#include "console/TextTable.h"
#include "console/ValueText.h"

namespace orbctl {

namespace {

const std::string registerPrefix = "DRA_";

bool isRegister(const Parameter& parameter) { return parameter.name.rfind(registerPrefix, 0) == 0; }

int bitsOf(const Parameter& parameter) {
    const auto* largest = std::get_if<std::uint64_t>(&parameter.limits.to);
    int bits = 0;
    for (std::uint64_t rest = largest == nullptr ? 0 : *largest; rest != 0; rest >>= 1)
        ++bits;
    return bits;
}

std::string valueText(const Parameter& parameter, const Reading& reading) {
    if (!reading.isGood())
        return readableText(parameter, reading);
    const auto value = std::get<std::uint64_t>(reading.value);
    return hexadecimalText(value, (bitsOf(parameter) + 3) / 4) + " (" + textOf(value) + ")";
}

std::vector<Parameter> matchingRegisters(const ParameterCatalogue& catalogue, const std::string& pattern) {
    std::vector<Parameter> found;
    for (const Parameter& parameter : catalogue.parameters())
        if (isRegister(parameter) && parameter.name.find(pattern) != std::string::npos)
            found.push_back(parameter);
    return found;
}

/// Registers know no ports: every one of them is reached through the first.
ParameterCatalogue registersOf(Session& session) {
    Session::offerRegisters();
    return ParameterCatalogue(session.applet(), 0);
}

/// By its own name or the parameter's name.
const Parameter& findRegister(const ParameterCatalogue& catalogue, const std::string& name) {
    const bool hasPrefix = name.rfind(registerPrefix, 0) == 0;
    return catalogue.find(hasPrefix ? name : registerPrefix + name);
}

std::string ownName(const Parameter& parameter) { return parameter.name.substr(registerPrefix.size()); }

/// Lists the registers with their values.
class RegistersCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        arguments.text("PART", mPart, "only registers whose name contains this");
    }

    ExitStatus run(Session& session) override {
        const ParameterCatalogue catalogue = registersOf(session);
        const std::vector<Parameter> found = matchingRegisters(catalogue, mPart);
        if (found.empty())
            throw Failure(ExitStatus::notFound, mPart.empty()
                                                    ? "the applet offers no registers"
                                                    : "there is no register with " + mPart + " in its name");
        TextTable table;
        for (const Parameter& parameter : found)
            table.addRow({ownName(parameter), textOf(std::int64_t{bitsOf(parameter)}) + " bit",
                          valueText(parameter, readParameter(session.applet(), parameter))});
        table.print(session.output());
        return ExitStatus::done;
    }

  private:
    std::string mPart;
};

class RegistersReadCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        arguments.texts("REGISTER", mNames, 1, "names of registers, with or without DRA_");
    }

    ExitStatus run(Session& session) override {
        const ParameterCatalogue catalogue = registersOf(session);
        std::vector<Parameter> registers;
        for (const std::string& name : mNames)
            registers.push_back(findRegister(catalogue, name));
        for (const Parameter& parameter : registers) {
            const Reading reading = readParameter(session.applet(), parameter);
            if (!reading.isGood())
                throw Failure(ExitStatus::refused, refusedRead(parameter, reading.code));
            session.output() << ownName(parameter) << " = " << valueText(parameter, reading) << '\n';
        }
        return ExitStatus::done;
    }

  private:
    std::vector<std::string> mNames;
};

class RegistersWriteCommand : public Command {
  public:
    void declareArguments(Arguments& arguments) override {
        arguments.texts("REGISTER=VALUE", mWords, 1, "registers with their new values, decimal or 0x...");
    }

    ExitStatus run(Session& session) override {
        const ParameterCatalogue catalogue = registersOf(session);
        std::vector<Setting> settings;
        for (const std::string& word : mWords) {
            const Setting setting = settingFrom(word);
            settings.push_back({findRegister(catalogue, setting.target).name, setting.value});
        }
        applySettings(session.applet(), {0}, settings);
        return ExitStatus::done;
    }

  private:
    std::vector<std::string> mWords;
};

} // namespace

std::unique_ptr<Command> makeRegistersCommand() { return std::make_unique<RegistersCommand>(); }

std::unique_ptr<Command> makeRegistersReadCommand() { return std::make_unique<RegistersReadCommand>(); }

std::unique_ptr<Command> makeRegistersWriteCommand() { return std::make_unique<RegistersWriteCommand>(); }

} // namespace orbctl
