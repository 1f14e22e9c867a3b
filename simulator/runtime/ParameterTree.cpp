#include "simulator/runtime/ParameterTree.h"

#include "simulator/model/RuntimeParameters.h"

#include <map>
#include <string>

namespace simulator {
namespace {

constexpr int readable = 1;
constexpr int writable = 7;
constexpr int plainRange = 1;
constexpr int visible = 1;

/// Fills the tree of one port.
class PortTree {
  public:
    PortTree(Fg_ParameterInfo& tree, int port) : mTree(tree), mPort(port) {}

    void addDesignParameter(const DesignParameter& parameter, const DesignRegister& reg, int id) {
        RegisterInfo* parent = group(parentPath(parameter.name));
        const char* name = parameter.name.c_str();
        const int access = reg.isStatus ? readable : writable;
        if (parameter.elements > 0) {
            mTree.addInfoUIntField(parent, name, name, static_cast<int>(parameter.elements), 0,
                                   static_cast<std::uint32_t>(highest(parameter.elementBits)), 1, access,
                                   plainRange, visible, nullptr, id, mPort);
        } else if (reg.bits <= 32) {
            mTree.addInfoUInt(parent, name, name, 0, static_cast<std::uint32_t>(highest(reg.bits)), 1, access,
                              plainRange, visible, nullptr, id, mPort);
        } else {
            mTree.addInfoUInt64(parent, name, name, 0, highest(reg.bits), 1, access, plainRange, visible,
                                nullptr, id, mPort);
        }
    }

    void addOwnParameter(const RuntimeParameters::Description& own) {
        mTree.addInfoUInt(group("FrameGrabber"), own.name, own.name, 0, UINT32_MAX, 1,
                          own.isWritable ? writable : readable, plainRange, visible, nullptr, own.id, mPort);
    }

  private:
    static std::uint64_t highest(unsigned bits) {
        return bits >= 64 ? UINT64_MAX : (std::uint64_t{1} << bits) - 1;
    }

    /// Everything before the last part of a name; a name of one part stands in a group of its own name.
    static std::string parentPath(const std::string& name) {
        const std::size_t lastMark = name.find_last_of('_');
        return lastMark == std::string::npos || lastMark == 0 ? name : name.substr(0, lastMark);
    }

    RegisterInfo* group(const std::string& path) {
        const auto found = mGroups.find(path);
        if (found != mGroups.end()) {
            return found->second;
        }
        const std::size_t lastMark = path.find_last_of('_');
        const bool isTop = lastMark == std::string::npos || lastMark == 0;
        RegisterInfo* parent = isTop ? nullptr : group(path.substr(0, lastMark));
        const std::string name = isTop ? path : path.substr(lastMark + 1);
        return mGroups[path] = mTree.addGroupInfo(mPort, parent, name.c_str());
    }

    Fg_ParameterInfo& mTree;
    int mPort;
    std::map<std::string, RegisterInfo*> mGroups;
};

} // namespace

std::unique_ptr<Fg_ParameterInfo> makeParameterTree(const DesignBinding& binding, int firstDesignId) {
    auto tree = std::make_unique<Fg_ParameterInfo>();
    const DesignImage& image = binding.design->image;
    for (int port = 0; port < static_cast<int>(Board::numberOfPorts); ++port) {
        PortTree portTree(*tree, port);
        int id = firstDesignId;
        for (const DesignParameter& parameter : image.parameters) {
            portTree.addDesignParameter(parameter, image.registers[parameter.registerIndex - 1], id++);
        }
        for (const RuntimeParameters::Description& own : RuntimeParameters::descriptions()) {
            portTree.addOwnParameter(own);
        }
        tree->finalize(port);
    }
    return tree;
}

} // namespace simulator
