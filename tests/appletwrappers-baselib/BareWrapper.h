#pragma once

#include "appletwrappers-baselib/FgQxWrapper.h"
#include "grabber_basis/Fg_ConfigFileParser.h"
#include "platform/DesignRuntime.h"
#include "simulator/Board.h"
#include "simulator/design/DesignImage.h"

#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace kavo::test {

template <class... Arguments>
std::string callText(const std::string& operation, const Arguments&... arguments) {
    std::ostringstream text;
    text << operation << '(';
    [[maybe_unused]] const char* separator = "";
    ((text << std::exchange(separator, ", ") << arguments), ...);
    text << ')';
    return text.str();
}

/// A wrapper with the operations that every applet has to supply, which only note their calls. What an applet
/// inherits is inherited.
class BareWrapper : public FgQxWrapper {
  public:
    explicit BareWrapper(bool* destroyed = nullptr) : mDestroyed(destroyed) {}
    ~BareWrapper() noexcept override {
        if (mDestroyed != nullptr) {
            *mDestroyed = true;
        }
    }

    std::vector<std::string> calls;
    /// What every operation with an int result answers.
    int answer = 0;
    std::function<bool(Fg_ConfigFileParser&)> onLoad = [](Fg_ConfigFileParser&) { return true; };
    std::function<void(Fg_ConfigFileParser&)> onSave = [](Fg_ConfigFileParser&) {};

    bool loadConfig(Fg_ConfigFileParser& parser) override {
        note("loadConfig");
        return onLoad(parser);
    }
    void saveConfig(Fg_ConfigFileParser& parser) override {
        note("saveConfig");
        onSave(parser);
    }
    int processChannelToDma(int process, int channel) override {
        return note("processChannelToDma", process, channel);
    }
    int mapDmaToFormat(int dmaIndex) override { return note("mapDmaToFormat", dmaIndex); }
    int setDmaAlignment(int dmaIndex, int alignment) override {
        return note("setDmaAlignment", dmaIndex, alignment);
    }
    int getDmaAlignment(int dmaIndex) override { return note("getDmaAlignment", dmaIndex); }
    void createUserParameters() override { note("createUserParameters"); }
    int Fg_setParameter(int id, const void* value, int port) override {
        return note("Fg_setParameter", id, value, port);
    }
    int Fg_getParameter(int id, void* value, int port) override {
        return note("Fg_getParameter", id, value, port);
    }
    int Fg_getParameterIdByName(const char* name) override { return note("Fg_getParameterIdByName", name); }
    const char* Fg_getParameterName(int index) override {
        note("Fg_getParameterName", index);
        return "a name";
    }
    int Fg_getParameterId(int index) override { return note("Fg_getParameterId", index); }
    int Fg_getParameterCount() override { return note("Fg_getParameterCount"); }
    const char* getManufacturer() override {
        note("getManufacturer");
        return "A Manufacturer";
    }
    const char* getCameraType() override {
        note("getCameraType");
        return "A Type";
    }
    const char* getCameraVersion() override {
        note("getCameraVersion");
        return "7.8";
    }
    int getAppletID() override {
        note("getAppletID");
        return 42;
    }

  protected:
    template <class... Arguments>
    int note(const char* operation, const Arguments&... arguments) {
        calls.push_back(callText(operation, arguments...));
        return answer;
    }

  private:
    bool* mDestroyed;
};

/// The same, with the inherited operations noting their calls too.
class RecordingWrapper : public BareWrapper {
  public:
    using BareWrapper::BareWrapper;

    ShadingMaster* shading = nullptr;

    int Fg_saveConfig(Fg_Struct* handle, const char* file) override {
        return note("Fg_saveConfig", handle, file);
    }
    int Fg_loadConfig(Fg_Struct* handle, const char* file) override {
        return note("Fg_loadConfig", handle, file);
    }
    int Fg_getParameterInfoXML(Fg_Struct* handle, int port, char* buffer, unsigned* size) override {
        return note("Fg_getParameterInfoXML", handle, port, static_cast<void*>(buffer), size);
    }
    ShadingMaster* Fg_AllocShading(int first, int second) override {
        note("Fg_AllocShading", first, second);
        return shading;
    }
    int Fg_FreeShading(ShadingMaster* object) override { return note("Fg_FreeShading", object); }
    int Shad_SetSubValueLine(ShadingMaster* object, int first, int second, float value) override {
        return note("Shad_SetSubValueLine", object, first, second, value);
    }
    int Shad_SetMultValueLine(ShadingMaster* object, int first, int second, float value) override {
        return note("Shad_SetMultValueLine", object, first, second, value);
    }
    int Shad_SetFixedPatternNoiseLine(ShadingMaster* object, int first, int second, int value) override {
        return note("Shad_SetFixedPatternNoiseLine", object, first, second, value);
    }
    int Shad_GetMaxLine(ShadingMaster* object) override { return note("Shad_GetMaxLine", object); }
    int Shad_GetAccess(ShadingMaster* object) override { return note("Shad_GetAccess", object); }
    int Shad_FreeAccess(ShadingMaster* object) override { return note("Shad_FreeAccess", object); }
    int Shad_WriteActLine(ShadingMaster* object, int line) override {
        return note("Shad_WriteActLine", object, line);
    }
    std::uint64_t Fg_getEventMask(const char* name) override {
        note("Fg_getEventMask", name);
        return std::uint64_t{1} << 40;
    }
    const char* Fg_getEventName(std::uint64_t mask) override {
        note("Fg_getEventName", mask);
        return "an event";
    }
};

/// Loads a design that holds little more than events.
inline fpga_design* loadSmallDesign(std::vector<std::string> events = {}) {
    simulator::DesignImage image;
    image.applet = "Small";
    image.type = 1;
    image.events = std::move(events);
    const std::string bytes = image.encode();
    return QelLoadDesignFromBuffer(bytes.data(), static_cast<unsigned>(bytes.size()), 1);
}

/// Binds a wrapper to the runtime and opens its inner handle on board 0.
inline void bindToBoard(FgQxWrapper& wrapper, std::vector<std::string> events = {}) {
    QXdevice* device = simulator::Board::at(0).device();
    fpga_design* design = loadSmallDesign(std::move(events));
    wrapper.initializeDllFunctions("libgrabcore5.so");
    wrapper.runFgInit("test", device, design, false);
    wrapper.initHandles(device, design);
}

} // namespace kavo::test
